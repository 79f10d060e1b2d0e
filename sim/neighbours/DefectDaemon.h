#pragma once

#include <cstdint>
#include <string>

#include "Neighbour.h"

namespace sim {

/** The defect daemon: runs that look for static defects and for the fixed pattern, each with its state and count. */
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
    std::uint16_t count = 0;
    std::uint8_t error = 1;
    unsigned number = 0;
  };

  void start(Run& run);
  [[nodiscard]] bool setRun(Run& run, const std::string& item, const std::string& value);
  [[nodiscard]] static std::string status(const Run& run);

  Run m_static;
  Run m_pattern;
  int m_runMilliseconds = 300;
};

}  // namespace sim
