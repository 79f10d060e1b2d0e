#pragma once

#include <sys/types.h>
#include <syslog.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "local/CommonInterface.h"

/**
 * Child processes and the pid files by which daemons are found again. Stateless. Commands are argument vectors that
 * begin with the program; none is empty (asserted).
 */
class CommonInterface::Process {
 public:
  /**
   * Starts a program and keeps its pid in the file. An existing pid file counts as a running program: its first line
   * is the result, -1 when it is empty. Otherwise the child's pid, or below 0.
   */
  [[nodiscard]] static pid_t Start(const std::string& pidFile, const std::vector<std::string>& command);
  /** The same for a daemon that writes the pid file itself. */
  [[nodiscard]] static pid_t StartOnly(const std::string& pidFile, const std::vector<std::string>& command);

  /** The child's pid; below 0 when no process could be made. */
  [[nodiscard]] static pid_t Fork(const std::vector<std::string>& command);
  /** In the child (fork result 0): becomes the program, with all signals let through. 1 when that failed. */
  static int32_t Exec(pid_t pid, char* const* command);
  /** Waits for the child's end: 1, or 0 when interrupted (the child is then ended) or impossible. */
  static int32_t Wait(pid_t pid);
  /**
   * The status of the child that has ended; none when the wait was interrupted or impossible. An end by a signal, or an
   * interruption, is logged with the priority.
   */
  [[nodiscard]] static std::optional<int> waitForEnd(pid_t pid, int priority = LOG_INFO);
  /** Ends the child and waits for it; the result of Wait. */
  static int32_t stopExec(pid_t pid);
  /** Ends a process and polls for its end, 10 microseconds apart: 1 when it has gone, else 0. */
  [[nodiscard]] static int32_t StopKillWait(pid_t pid, int32_t polls);

  /** The pids of all processes whose line in the process list holds the name. */
  [[nodiscard]] static std::vector<pid_t> GetPsPID(const std::string& name);

  static void CommandLog(const std::vector<std::string>& command);
};
