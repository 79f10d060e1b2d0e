#include "application/Event.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string_view>

#include "service/Numbers.h"
#include "service/ParamPitcher.h"

namespace Application {
namespace {

constexpr int32_t kDay = 24 * 60 * 60;  // seconds

/** From here on the recorder's ids of a filter's two times. */
constexpr uint32_t kFilterStart = 0x210403;
constexpr uint32_t kFilterEnd = 0x210404;

int32_t eventOf(const Selectors& selectors) { return selectorNumber(selectors, CEvent::kLayer, 1); }

/** 1 for sunday to 7; the selector's rule has seen to the rest. */
int32_t dayOf(const Selectors& selectors) {
  std::string day = selectors.at(CEvent::CFilter::kLayer);
  std::ranges::transform(day, day.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return CEvent::CFilter::days.find(day).value_or(1);
}

/** The second of the day that "HHMMSS" stands for, also the one behind its last. */
std::optional<int32_t> secondOf(std::string_view time) {
  const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
  if (time.size() != 6 || !std::ranges::all_of(time, isDigit)) return std::nullopt;
  const auto two = [time](size_t at) { return (time[at] - '0') * 10 + time[at + 1] - '0'; };
  if (two(0) > 24 || two(2) > 59 || two(4) > 59) return std::nullopt;
  return two(0) * 3600 + two(2) * 60 + two(4);
}

struct Span {
  int32_t start;
  int32_t end;
};

std::optional<Span> spanOf(std::string_view text) {
  const size_t dash = text.find('-');
  if (dash == std::string_view::npos) return std::nullopt;
  const auto start = secondOf(text.substr(0, dash));
  const auto end = secondOf(text.substr(dash + 1));
  if (!start || !end || *end > kDay || *start >= *end) return std::nullopt;
  return Span{*start, *end};
}

}  // namespace

uint32_t ofEvent(const Selectors& selectors) { return static_cast<uint32_t>(eventOf(selectors)) << 12; }

uint32_t ofDay(const Selectors& selectors) { return ofEvent(selectors) | static_cast<uint32_t>(dayOf(selectors)) << 4; }

Cell inDay(const Selectors& selectors, Row row) {
  return {{row.family, row.number + dayOf(selectors) - 1}, eventOf(selectors) - 1};
}

/** The recorder goes first: what it does not take is not saved. */
int32_t CEvent::CStatus::restart(Request& request) {
  const int32_t event = eventOf(request.selectors);
  if (const int32_t result = ParamPitcher().putRestart(event); result < 0) return result;
  constexpr std::array<Row, 2> kStaged = {event_row::EVENT_TRIGGER, event_row::EVENT_ACTION};
  Config* committed = Config::getInstance();
  committed->adopt(*CUserConfig::getInstance(), kStaged, event - 1);
  return committed->save(Family::Event, event - 1) == Config::kDone ? 0 : -status::kInternalError;
}

int32_t CEvent::CFilter::CTime::check(Request& request) { return spanOf(request.value) ? 0 : -status::kNotUnderstood; }

int32_t CEvent::CFilter::CTime::act(Request& request) {
  const Span span = spanOf(request.value).value_or(Span{});
  const Peer start = peer::recorderNumber(kFilterStart, ofDay);
  const Peer end = peer::recorderNumber(kFilterEnd, ofDay);
  request.number = span.start;
  if (const int32_t result = start.tell(start, request); result < 0) return result;
  request.number = span.end;
  return end.tell(end, request);
}

}  // namespace Application
