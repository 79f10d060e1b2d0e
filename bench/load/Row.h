#pragma once

#include <map>
#include <string>
#include <vector>

#include "bench/load/Agent.h"

namespace bench::load {

/** What one phase of a load brought. */
struct Row {
  std::string phase;
  long wanted = 0;
  long done = 0;       ///< of what was wanted
  double seconds = 0;  ///< until the last of what was done
  double median = 0;   ///< seconds of one, and the longest of 99 % and of all of them; 0 where nobody counts it
  double most99 = 0;
  double most = 0;
  double brokerProcessor = 0;  ///< processors that the broker kept busy in the phase, on average
  double ownProcessor = 0;
  double otherProcessor = 0;   ///< all else on the machine
  double brokerMebibytes = 0;  ///< resident, behind the phase
};

/** Takes the time and counts the work of all from its construction on. */
class Meter {
 public:
  /** @param broker a file with the numbers of the broker's processes. @param own those of the load. */
  Meter(std::string broker, std::vector<pid_t> own);
  /** @param waits seconds that each of what was done took; may be empty. */
  [[nodiscard]] Row row(const std::string& phase, long wanted, long done, Clock::time_point end,
                        std::vector<double> waits) const;

 private:
  /** Seconds of processor time since the construction; of processes that were not there then, all. */
  [[nodiscard]] double timeOf(const std::vector<pid_t>& processes) const;

  std::string m_broker;
  std::vector<pid_t> m_own;
  Clock::time_point m_start = Clock::now();
  std::map<pid_t, double> m_before;
  double m_machineBefore;
};

/** Prints the row: a line of a table, under its heading when it is the first, or of JSON. */
void print(const Row& row, bool isFirst, bool asJson);

}  // namespace bench::load
