#pragma once

#include <functional>
#include <vector>

#include "bench/load/Crowd.h"
#include "bench/load/Observer.h"
#include "bench/load/Row.h"

namespace bench::load {

/**
 * Agents, in processes of their own, and their observer, in this one, led through the phases of a load. A phase that is
 * not done ends when nothing moves on.
 */
class Fleet {
 public:
  /** Starts the processes. @throws std::runtime_error when that is not possible. */
  explicit Fleet(const Options& options);
  Fleet(const Fleet&) = delete;
  Fleet& operator=(const Fleet&) = delete;
  ~Fleet();

  /** All agents connect, so many a second, and publish their values. */
  [[nodiscard]] Row connect();
  /** The observer subscribes and gets all values. */
  [[nodiscard]] Row subscribe();
  /** So many values change a second. */
  [[nodiscard]] Row change(int rate);
  /** The observer asks agents. */
  [[nodiscard]] Row ask();
  /** The broker is restarted; all agents come back and publish their values. */
  [[nodiscard]] Row outage();

 private:
  void start(int processes);
  /**
   * Serves the observer until so much is done, or nothing has moved on for as long as patience lasts.
   * @return when something moved on last.
   */
  Clock::time_point serveUntil(long wanted, const std::function<long()>& done, const std::function<long()>& progress);
  Clock::time_point serveUntil(long wanted, const std::function<long()>& done) {
    return serveUntil(wanted, done, done);
  }
  [[nodiscard]] Row rowOfReady(const Meter& meter, const char* phase);

  Options m_options;
  Crowd* m_crowd;
  std::vector<pid_t> m_players;
  std::vector<pid_t> m_processes;  ///< the players and this one
  Poll m_poll;
  Observer m_observer{m_poll, m_options};
};

}  // namespace bench::load
