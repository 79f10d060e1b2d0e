#pragma once

#include <deque>
#include <string>

#include "Loop.h"
#include "sim/common/UnixSocket.h"

namespace sim {

/**
 * The GPIO daemon's own client of the parameter daemon: sends requests one after the other, without ever waiting, and
 * records each with its answer in the journal. While nobody listens yet it tries again for some seconds and then gives
 * the report up. Owned by the GPIO daemon.
 */
class Reporter {
 public:
  Reporter(Loop& loop, std::string requestPath) : m_loop(loop), m_path(std::move(requestPath)) {}

  void report(const std::string& query);
  /** How many reports have not been answered yet. */
  [[nodiscard]] std::size_t waiting() const { return m_waiting.size(); }

 private:
  void startNext();
  void receive();
  void finish(const std::string& outcome);

  Loop& m_loop;
  std::string m_path;
  std::deque<std::string> m_waiting;
  Descriptor m_connection;
  std::string m_answer;
  bool m_busy = false;
  int m_attempts = 0;
};

}  // namespace sim
