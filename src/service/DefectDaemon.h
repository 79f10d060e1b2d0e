#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

/**
 * Client of the defect daemon, which looks for pixels that are stuck (static defects) and for the sensor's fixed
 * pattern. Every operation is one connection: one byte, answered by two.
 */
class DefectDaemon {
 public:
  /** What the daemon looks for. */
  enum class Search { StaticDefects, FixedPattern };

  explicit DefectDaemon(Search search, std::string path = "/tmp/dd_request");

  /** 0 when the daemon took the order, else -1. */
  [[nodiscard]] int32_t start() const;
  [[nodiscard]] int32_t stop() const;
  /** Stops a search that is on; 0 also when none is, -1 when the daemon did not answer or take the order. */
  [[nodiscard]] int32_t stopIfAdjusting() const;
  /** Starts a search unless one is on; results alike. */
  [[nodiscard]] int32_t startUnlessAdjusting() const;

  /** "completed", "adjusting" or "error"; empty when the daemon did not answer. */
  [[nodiscard]] std::string status() const;
  /** The same with what was found or went wrong: "completed(12)", "error(3)"; "error" without an answer. */
  [[nodiscard]] std::string statusDetail() const;
  /** The number of places that were found; none when the daemon did not answer. */
  [[nodiscard]] std::optional<int32_t> count() const;

 private:
  using Reply = std::array<uint8_t, 2>;
  [[nodiscard]] std::optional<Reply> exchange(uint8_t command) const;
  /** For the command of static defects, that of this search. */
  [[nodiscard]] std::optional<Reply> question(uint8_t command) const;
  [[nodiscard]] int32_t order(uint8_t command) const;

  Search m_search;
  std::string m_path;
};
