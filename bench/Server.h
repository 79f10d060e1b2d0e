#pragma once

#include <sched.h>
#include <sys/types.h>

#include <string>

#include "bench/Process.h"
#include "bench/Statistics.h"
#include "cli/Client.h"

namespace bench {

/** A server on a Unix socket, seen from outside: its processor time, its memory, and what a request to it costs. */
class Server {
 public:
  explicit Server(std::string socket);

  /** The process that listens; 0 when nobody does. */
  [[nodiscard]] pid_t pid() const { return m_pid; }
  /** Seconds of processor time since the server's start, of all its threads. */
  [[nodiscard]] double processorTime() const { return processorTimeOf(m_pid); }
  [[nodiscard]] Memory memory() const { return memoryOf(m_pid); }

  /** The cost of sending the frames in turn, so many requests in all. Answers that are no answer make it fail. */
  [[nodiscard]] Cost send(const std::vector<std::string>& frames, int requests) const;

 private:
  std::string m_socket;
  tmx::Client m_client;
  pid_t m_pid = 0;
};

/**
 * For as long as it lives, this process, the children that it starts meanwhile and the others share one processor.
 * Waking a second processor takes as long as the work that is measured, and not always the same time.
 */
class OneProcessor {
 public:
  explicit OneProcessor(std::vector<pid_t> others);
  OneProcessor(const OneProcessor&) = delete;
  OneProcessor& operator=(const OneProcessor&) = delete;
  ~OneProcessor();

 private:
  std::vector<pid_t> m_processes;
  cpu_set_t m_before{};
};

/** The bare echo server, run as a child for as long as the object lives. */
class Floor {
 public:
  /**
   * It listens on the socket when the constructor returns, or isUp is false.
   * @param program the floor's program.
   * @param journal where it notes the DSP frame that each request of it sends; empty: it sends none.
   */
  Floor(const std::string& program, std::string socket, std::string journal = "");
  Floor(const Floor&) = delete;
  Floor& operator=(const Floor&) = delete;
  ~Floor();

  [[nodiscard]] bool isUp() const { return m_isUp; }

 private:
  std::string m_socket;
  std::string m_journal;
  pid_t m_child = -1;
  bool m_isUp = false;
};

}  // namespace bench
