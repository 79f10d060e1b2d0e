#pragma once

#include <array>
#include <string>

#include "Bytes.h"
#include "Neighbour.h"
#include "Pins.h"
#include "Reporter.h"

namespace sim {

/**
 * The GPIO daemon: focus drive, infrared cut filter, run counters, format switch, audio driver. A focus run takes its
 * time, during which the drive is not idle; the lens is at its new place at once. With reports on, the daemon tells the
 * parameter daemon what a run came to and when the filter moves, as it does on the camera; they are off at first, so
 * that nothing happens that a test has not asked for.
 */
class Gpio : public Neighbour {
 public:
  Gpio(Loop& loop, const std::string& root, Pins& pins);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override;
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string readable(std::string_view reply) const override { return numbersText(reply, 4); }
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  [[nodiscard]] bool set(const std::string& key, const std::string& value) override;
  void show(JsonObject& state) const override;

 private:
  [[nodiscard]] int query(int command, int first) const;
  void order(int command, int first, int second);
  void runAuto(int mode);
  void startRun(int kind, int target);
  void endRun();
  [[nodiscard]] bool setFilter(const std::string& value);
  void report(const std::string& text);
  [[nodiscard]] int progress() const;

  Pins& m_pins;
  Reporter m_reporter;
  bool m_reports = false;

  int m_filter = 1;
  int m_switch = 1;
  /** Filter, focus and lamp, by the index of commands 16 and 17. */
  std::array<int, 3> m_counters{};

  int m_kind = 0;
  int m_direction = 1;
  int m_position = 500;
  int m_factoryPosition = 500;
  int m_sharpPosition = 520;
  int m_assist = 0;
  int m_nightOffset = 0;
  int m_adjustMode = 0;
  std::array<int, 4> m_audio{};

  int m_runMilliseconds = 300;
  bool m_running = false;
  unsigned m_runNumber = 0;
  Loop::Clock::time_point m_runStart;
  std::string m_result = "stop";
};

}  // namespace sim
