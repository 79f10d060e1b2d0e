#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>

#include "Bytes.h"
#include "Lens.h"
#include "Neighbour.h"
#include "PictureLine.h"
#include "Pins.h"
#include "Reporter.h"

namespace sim {

/**
 * The GPIO daemon: focus drive, infrared cut filter, run counters, format switch, audio driver. With reports on, the
 * daemon tells the parameter daemon what a run came to and when the filter moves, as it does on the camera; where it
 * follows, the filter goes where the picture wants it. Both are off at first, so that nothing happens that a test has
 * not asked for.
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
  [[nodiscard]] bool setFilter(const std::string& value);
  void follow(int filter);
  [[nodiscard]] bool setFollow(const std::string& value);
  [[nodiscard]] bool setLens(const std::string& key, const std::string& value);
  [[nodiscard]] bool setStick(const std::string& value);
  [[nodiscard]] bool setRunTime(const std::string& value);
  void report(const std::string& text);

  Pins& m_pins;
  Reporter m_reporter;
  bool m_reports = false;
  std::string m_picturePath;
  std::unique_ptr<PictureLine> m_picture;  ///< where the filter follows the picture

  Lens m_lens;
  int m_switch = 1;
  /** Filter, focus and lamp, by the index of commands 16 and 17. */
  /** A full counter stays full. */
  void count(std::size_t counter) {
    if (m_counters[counter] < std::numeric_limits<int>::max()) ++m_counters[counter];
  }

  std::array<int, 3> m_counters{};

  int m_kind = 0;
  int m_factoryPosition = 500;
  int m_sharpPosition = 520;
  int m_assist = 0;
  int m_nightOffset = 0;
  int m_adjustMode = 0;
  std::array<int, 4> m_audio{};
  std::string m_result = "stop";
};

}  // namespace sim
