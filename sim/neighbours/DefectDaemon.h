#pragma once

#include <cstdint>
#include <string>

#include "Neighbour.h"

namespace sim {

/**
 * The defect daemon: runs that look for static defects and for the fixed pattern, each with its state and count. A run
 * takes its time and finds what there is bit by bit; a stop leaves it with what it has found.
 */
class DefectDaemon : public Neighbour {
 public:
  DefectDaemon(Loop& loop, const std::string& root);

 protected:
  [[nodiscard]] std::size_t requestSize(std::string_view bytes) const override { return bytes.empty() ? 0 : 1; }
  [[nodiscard]] std::string messageName(std::string_view request) const override;
  void describe(std::string_view request, Journal& line) const override;
  [[nodiscard]] std::string answer(std::string_view request) override;
  [[nodiscard]] std::string refusal(std::string_view request, std::optional<int> number) const override;
  [[nodiscard]] bool set(const std::string& key, const std::string& value) override;
  void show(JsonObject& state) const override;

 private:
  /** A kind of run; a new start makes the end of the run before it count for nothing. */
  struct Run {
    std::string state = "completed";
    std::uint16_t present = 0;  ///< what there is to find
    std::uint16_t count = 0;    ///< what the last run has found
    Loop::Clock::time_point begin;
    std::uint8_t error = 1;
    unsigned number = 0;
  };

  void start(Run& run);
  static void end(Run& run, std::uint16_t count);
  /** While a run is on, what it has found so far. */
  [[nodiscard]] std::uint16_t found(const Run& run) const;
  [[nodiscard]] bool setRun(Run& run, const std::string& item, const std::string& value);
  [[nodiscard]] std::string status(const Run& run) const;

  Run m_static;
  Run m_pattern;
  int m_runMilliseconds = 300;
};

}  // namespace sim
