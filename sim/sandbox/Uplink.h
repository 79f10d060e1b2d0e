#pragma once

#include <sys/types.h>

#include <string>

#include "sim/sandbox/Files.h"

namespace sim {

/**
 * What the camera has of the world: one port of its loopback address whose connections lead to one of the host's.
 *
 * A process of the host serves it. A socket belongs to the network in which it was made, so the one that listens is
 * made inside and handed out.
 */
class Uplink {
 public:
  /** Starts the process for one boot of a camera, with the host's "[ADDRESS:]PORT". */
  explicit Uplink(const std::string& place);
  ~Uplink();
  Uplink(const Uplink&) = delete;
  Uplink& operator=(const Uplink&) = delete;

  /** Opens it; called in the network of the camera. */
  void open() const;

 private:
  Fd m_channel;
  pid_t m_server = -1;
};

}  // namespace sim
