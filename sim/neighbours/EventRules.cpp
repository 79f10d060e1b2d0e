#include "EventRules.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

#include "Words.h"
#include "sim/common/Journal.h"

namespace sim {

namespace {

constexpr std::array<std::string_view, 7> dayNames{"sunday",   "monday", "tuesday", "wednesday",
                                                   "thursday", "friday", "saturday"};

std::uint32_t eventId(int number, std::uint32_t item) { return static_cast<std::uint32_t>(number) << 12 | item; }

}  // namespace

std::optional<WeekTime> parseWeekTime(const std::string& text) {
  const std::size_t dash = text.find('-');
  const auto* day = std::ranges::find(dayNames, text.substr(0, dash));
  if (dash == std::string::npos || day == dayNames.end()) return std::nullopt;
  const auto clock = numberFrom<int>(text.substr(dash + 1));
  if (text.size() != dash + 7 || !clock || *clock < 0) return std::nullopt;
  const int hours = *clock / 10000;
  const int minutes = *clock / 100 % 100;
  const int seconds = *clock % 100;
  if (hours > 23 || minutes > 59 || seconds > 59) return std::nullopt;
  return WeekTime{static_cast<int>(day - dayNames.begin()), hours * 3600 + minutes * 60 + seconds};
}

EventRules::EventRules(const RecorderValues& values, std::string clockFile)
    : m_values(values), m_clockFile(std::move(clockFile)) {}

void EventRules::restart(int number) {
  Rule rule{m_values.text(eventId(number, 0x210200)), m_values.text(eventId(number, 0x210300)), {}};
  for (std::uint32_t day = 0; day < rule.filters.size(); ++day) {
    const auto value = [&](std::uint32_t item) {
      return m_values.number(eventId(number, 0x210400 | item | (day + 1) << 4));
    };
    rule.filters.at(day) = {value(1) == 1, value(2) != 2, value(3), value(4)};
  }
  m_rules[number] = rule;
}

void EventRules::happened(const std::string& word) const {
  for (const auto& [number, rule] : m_rules) {
    const bool isOn = m_values.number(eventId(number, 0x210100)) == 1;
    if (isOn && rule.trigger == word && isOpen(rule, now())) fire(number, rule);
  }
}

WeekTime EventRules::now() const {
  if (m_now) return *m_now;
  std::int64_t ahead = 0;
  std::ifstream(m_clockFile) >> ahead;
  const std::time_t time = std::time(nullptr) + ahead;
  std::tm local{};
  localtime_r(&time, &local);
  return {local.tm_wday, local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec};
}

/** A filter closes the rule between its times, or outside of them when it unmasks; a day without one is open. */
bool EventRules::isOpen(const Rule& rule, const WeekTime& moment) {
  const Filter& filter = rule.filters.at(static_cast<std::size_t>(moment.day));
  const bool inside = moment.second >= filter.start && moment.second < filter.end;
  return !filter.on || inside != filter.masks;
}

void EventRules::fire(int number, const Rule& rule) const {
  Journal("recorder", "event").number("rule", number).text("trigger", rule.trigger).text("action", rule.action).write();
  std::istringstream actions(rule.action);
  for (std::string action; std::getline(actions, action, '&');) {
    const std::string inside = action.starts_with("record(") && action.ends_with(')') ? action.substr(7) : "";
    const auto object = numberFrom<std::uint32_t>(inside.substr(0, inside.empty() ? 0 : inside.size() - 1));
    if (object && *object >= 1 && *object <= 10) record(*object);
  }
}

void EventRules::record(std::uint32_t object) const {
  const auto id = [object](std::uint32_t item) { return 0x250000 | object << 12 | item; };
  Journal("recorder", "record")
      .number("object", object)
      .number("encoder", m_values.number(id(0x100)))
      .text("framerate", m_values.text(id(0x500)))
      .number("prerec", m_values.number(id(0x200)))
      .number("postrec", m_values.number(id(0x300)))
      .text("overwrite", m_values.number(id(0x610)) == 1 ? "on" : "off")
      .write();
}

}  // namespace sim
