#pragma once

#include <netinet/in.h>

#include <functional>
#include <string>
#include <vector>

#include "sim/sandbox/Files.h"

namespace sim {

/** A socket that listens, and a way to the place that its connections lead to. */
struct Door {
  Fd listener;
  std::function<Fd()> reach;  ///< called in the process of one connection; an invalid descriptor closes it
};

/** "[ADDRESS:]PORT", of the loopback address where none is named; ends the process when it is neither. */
[[nodiscard]] sockaddr_in parseAddress(const std::string& text);
[[nodiscard]] sockaddr_in loopback(int port);

/** A socket that listens there; ends the process when that cannot be had. */
[[nodiscard]] Fd listenAt(const sockaddr_in& address);
/** A connection; an invalid descriptor when there is none to be had. */
[[nodiscard]] Fd connectTo(const sockaddr_in& address);

/** Carries the bytes of every connection, each in a process of its own that ends with this one, until this one is
 * ended. */
[[noreturn]] void serve(const std::vector<Door>& doors);

}  // namespace sim
