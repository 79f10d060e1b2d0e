#pragma once

#include <functional>

#include "sim/sandbox/Collector.h"
#include "sim/sandbox/Options.h"

namespace sim {

/**
 * The camera's first process: starts the neighbours and the daemon in the order of a boot, collects the syslog, reaps,
 * and stops everything in order on SIGTERM. When it ends, the kernel ends every process of the camera with it.
 *
 * Lives in the camera's namespaces, owned by the supervisor outside, and dies with it.
 */
class Init {
 public:
  /** @param progress descriptor that gets a line per step of the boot; closed when the daemon has been started. */
  Init(const Options& options, Fd progress);

  /** Boots and serves until SIGTERM has been carried out. */
  void serve();

 private:
  using Condition = std::function<bool()>;

  void startNeighbours();
  void startDaemon();
  void startGuard();
  void startAgent();
  void stop();
  bool pump(const Condition& done, int milliseconds);
  void reap();
  void noteExit(int waitStatus);
  void tell(const char* step);

  const Options& m_options;
  Fd m_progress;
  Fd m_signals;
  Collector m_collector;
  pid_t m_starter = -1;  ///< the process that was started as the daemon; it leaves the daemon behind and ends
  pid_t m_daemon = -1;
  bool m_stopping = false;
};

}  // namespace sim
