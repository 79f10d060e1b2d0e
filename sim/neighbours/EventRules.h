#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "RecorderValues.h"

namespace sim {

/** A moment of the week: the day with sunday as 0, and the second of that day. */
struct WeekTime {
  int day = 0;
  int second = 0;
};

/** "monday-093000"; nothing for any other text. */
[[nodiscard]] std::optional<WeekTime> parseWeekTime(const std::string& text);

/**
 * The recorder's event rules at work. A restart takes over a rule's trigger, action and filters as they were put; its
 * status counts at once. A trigger is a word of the alarm inputs, "pin1=make"; an action is "record(2)", or several of
 * them joined by "&". What fires, and what each object then records, goes to the journal. Owned by the recorder.
 */
class EventRules {
 public:
  /** @param clockFile the number of seconds by which the camera's clock is ahead of the machine's. */
  EventRules(const RecorderValues& values, std::string clockFile);

  void restart(int number);
  /** An alarm input has changed: "pin2=break". */
  void happened(const std::string& word) const;

  /** Lets the rules see that moment instead of the camera's clock, or the clock again. */
  void setNow(std::optional<WeekTime> moment) { m_now = moment; }

 private:
  struct Filter {
    bool on = false;
    bool masks = true;
    int start = 0;
    int end = 0;
  };
  struct Rule {
    std::string trigger;
    std::string action;
    std::array<Filter, 7> filters;
  };

  [[nodiscard]] WeekTime now() const;
  [[nodiscard]] static bool isOpen(const Rule& rule, const WeekTime& moment);
  void fire(int number, const Rule& rule) const;
  void record(std::uint32_t object) const;

  const RecorderValues& m_values;
  std::string m_clockFile;
  std::optional<WeekTime> m_now;
  std::map<int, Rule> m_rules;
};

}  // namespace sim
