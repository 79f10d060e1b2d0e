#pragma once

#include "sim/sandbox/Home.h"

namespace sim {

/**
 * Makes the camera's web server reachable at a port of the host's loopback address, also behind a restart or another
 * port of the camera. Prints the port, any free one for 0, and serves until it is ended; 1 when the port cannot be had.
 */
[[nodiscard]] int relay(const Home& home, int port);

}  // namespace sim
