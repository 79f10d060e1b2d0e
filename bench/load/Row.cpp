#include "bench/load/Row.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

#include "bench/Process.h"

namespace bench::load {
namespace {

/** Seconds that the machine's processors were at work since it was started. */
double machineTime() {
  std::ifstream file("/proc/stat");
  std::string name;
  file >> name;
  double ticks = 0;
  // user, nice, system, idle, waiting for a disk, interrupts of two kinds, stolen
  for (int field = 0; field < 8; ++field) {
    double value = 0;
    file >> value;
    if (field != 3 && field != 4) ticks += value;
  }
  return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

std::vector<pid_t> processesIn(const std::string& name) {
  std::vector<pid_t> processes;
  std::ifstream file(name);
  for (pid_t pid = 0; file >> pid;)
    processes.push_back(pid);
  return processes;
}

double secondsOf(Clock::duration duration) { return std::chrono::duration<double>(duration).count(); }

}  // namespace

Meter::Meter(std::string broker, std::vector<pid_t> own)
    : m_broker(std::move(broker)), m_own(std::move(own)), m_machineBefore(machineTime()) {
  for (const auto& processes : {processesIn(m_broker), m_own}) {
    for (const pid_t pid : processes)
      m_before[pid] = processorTimeOf(pid);
  }
}

double Meter::timeOf(const std::vector<pid_t>& processes) const {
  double seconds = 0;
  for (const pid_t pid : processes)
    seconds += processorTimeOf(pid) - (m_before.contains(pid) ? m_before.at(pid) : 0);
  return seconds;
}

Row Meter::row(const std::string& phase, long wanted, long done, Clock::time_point end,
               std::vector<double> waits) const {
  Row row;
  row.phase = phase;
  row.wanted = wanted;
  row.done = done;
  row.seconds = secondsOf(end - m_start);
  if (!waits.empty()) {
    std::sort(waits.begin(), waits.end());
    row.median = waits[waits.size() / 2];
    row.most99 = waits[waits.size() * 99 / 100];
    row.most = waits.back();
  }
  const double wall = secondsOf(Clock::now() - m_start);
  row.brokerProcessor = timeOf(processesIn(m_broker)) / wall;
  row.ownProcessor = timeOf(m_own) / wall;
  row.otherProcessor = (machineTime() - m_machineBefore) / wall - row.brokerProcessor - row.ownProcessor;
  for (const pid_t pid : processesIn(m_broker))
    row.brokerMebibytes += static_cast<double>(memoryOf(pid).resident) / 1024;
  return row;
}

void print(const Row& row, bool isFirst, bool asJson) {
  const double pace = row.seconds > 0 ? static_cast<double>(row.done) / row.seconds : 0;
  if (asJson) {
    const nlohmann::ordered_json line = {{"phase", row.phase},
                                         {"wanted", row.wanted},
                                         {"done", row.done},
                                         {"seconds", row.seconds},
                                         {"median", row.median},
                                         {"most99", row.most99},
                                         {"most", row.most},
                                         {"broker_processor", row.brokerProcessor},
                                         {"own_processor", row.ownProcessor},
                                         {"other_processor", row.otherProcessor},
                                         {"broker_mebibytes", row.brokerMebibytes}};
    std::puts(line.dump().c_str());
  } else {
    if (isFirst)
      std::puts(
          "                                                   milliseconds of one         processors\n"
          "phase         wanted    done  seconds  a second   median    99 %     most  broker  load  else   MiB");
    std::printf("%-11s %8ld %8ld %8.1f %8.0f %8.1f %8.1f %8.1f %7.2f %5.2f %5.2f %5.0f\n", row.phase.c_str(),
                row.wanted, row.done, row.seconds, pace, row.median * 1e3, row.most99 * 1e3, row.most * 1e3,
                row.brokerProcessor, row.ownProcessor, row.otherProcessor, row.brokerMebibytes);
  }
  std::fflush(stdout);
}

}  // namespace bench::load
