#pragma once

#include <vector>

#include "sim/sandbox/Home.h"

namespace sim {

/**
 * Joins namespaces of the camera's first process; "user", which gives the right to the others, comes first. Whether
 * that was done: not when the camera is off.
 */
[[nodiscard]] bool join(const Home& home, const std::vector<const char*>& spaces);

/** Runs a command inside the camera, as a child of its shell would run; its exit status. */
[[nodiscard]] int runInside(const Home& home, const Command& command);

}  // namespace sim
