#pragma once

#include "sim/sandbox/Home.h"

namespace sim {

/**
 * Makes the camera's web server reachable at "[ADDRESS:]PORT" of the host, and with a second place its encrypted port
 * there, also behind a restart or another port of the camera. Prints the ports, any free one for 0, a line each, and
 * serves until it is ended; ends the process when a place cannot be had.
 */
[[noreturn]] void relay(const Home& home, std::vector<std::string> places);

}  // namespace sim
