#pragma once

#include "sim/sandbox/Files.h"

namespace sim {

/**
 * The camera's syslog daemon: owns /dev/log and writes each message as one line of /var/log/messages, in the form
 * "Nov 22 21:31:06 camera tmxd[12]: <err> text", with the pid of the sender and the name of the priority.
 */
class Collector {
 public:
  /** Binds /dev/log; ends the process when that fails. */
  Collector();

  [[nodiscard]] int descriptor() const { return m_socket.get(); }
  /** Writes down what has arrived; does not wait. */
  void collect() const;

 private:
  Fd m_socket;
  Fd m_file;
};

}  // namespace sim
