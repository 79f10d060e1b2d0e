#pragma once

#include <cstdint>
#include <string>

/**
 * Unix stream sockets as the camera's daemons use them. Stateless; every descriptor handed out belongs to the caller.
 * Results: a descriptor or 0, and below 0 on a failure, which is logged. No descriptor is inherited by a child program.
 */
class UnixDomain {
 public:
  /** A listening socket in the place of whatever stood at the path; the request socket blocks, all others do not. */
  [[nodiscard]] static int32_t createServSocket(const std::string& path);

  /** The next client; -1 when there is none, silently after a signal. A lasting failure is logged once, each paused. */
  [[nodiscard]] static int32_t acceptClient(int32_t server);

  [[nodiscard]] static int32_t createClientSocket();

  [[nodiscard]] static int32_t connectServ(int32_t client, const std::string& path);

  /** Closes the descriptor and has everything that waits in memory written to its device. */
  static int32_t closeClientSocket(int32_t client);
};
