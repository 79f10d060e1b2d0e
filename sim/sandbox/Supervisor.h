#pragma once

#include <optional>

#include "sim/sandbox/Home.h"
#include "sim/sandbox/Uplink.h"

namespace sim {

/**
 * The camera's power supply: a process on the host, one for each home, that boots the camera into fresh namespaces and
 * carries out what is asked for on the FIFO HOME/run/power ("down", "reboot", "cut", one word a line).
 *
 * It ends when the camera is off. HOME/run/lock is locked while it lives, HOME/run/init.pid names the camera's first
 * process, HOME/run/boots counts the boots.
 */
class Supervisor {
 public:
  Supervisor(const Options& options, const Home& home) : m_options(options), m_home(home) {}

  /**
   * Starts the supervisor in the background. The descriptor gives a line per step of the first boot and ends with it;
   * an invalid one means that the camera of this home is already on.
   */
  [[nodiscard]] Fd start();

  /** Whether the camera of this home is on. */
  [[nodiscard]] static bool isOn(const Home& home);
  /** Asks the supervisor of this home for something; 0, or -1 when there is none. */
  [[nodiscard]] static int ask(const Home& home, const std::string& word);

 private:
  /** In the order of their strength: of several wishes the strongest counts, and a cut spares nothing. */
  enum class Event { Ended, Reboot, Down, Cut };

  [[noreturn]] void serve(Fd progress);
  [[nodiscard]] pid_t boot(Fd progress);
  [[noreturn]] void beInit(Fd progress, uid_t user, gid_t group);
  [[nodiscard]] Event wait(pid_t init);
  /** Carries the event out; a stronger one that is asked for meanwhile takes its place and is the result. */
  [[nodiscard]] Event end(pid_t init, Event event);
  /** The strongest of the wishes that have come, Ended without one. */
  [[nodiscard]] Event asked() const;

  const Options& m_options;
  const Home& m_home;
  Fd m_lock;
  Fd m_power;
  std::optional<Uplink> m_uplink;
};

}  // namespace sim
