#pragma once

#include <cstdint>
#include <string>
#include <vector>

/**
 * A daemon that detaches itself and then stands in its pid file: what it is started with, and where it is found again.
 * Results are 0, or below 0 for a failure, which is logged.
 */
struct Service {
  /** What start can come to; apart from what stop can. */
  static constexpr int32_t kNotRun = -3;
  static constexpr int32_t kNoPidFile = -4;

  std::string program;
  std::string pidFile;
  std::vector<std::string> arguments = {};

  /** Runs the program until it has detached itself, and waits for the pid file: kNotRun, kNoPidFile. */
  [[nodiscard]] int32_t start() const;
  /** Ends what the pid file names; see CTmxdNetworkUtility::stopDaemon. */
  [[nodiscard]] int32_t stop() const;
};
