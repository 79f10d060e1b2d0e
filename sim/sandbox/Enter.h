#pragma once

#include "sim/sandbox/Home.h"

namespace sim {

/** Runs a command inside the camera, as a child of its shell would run; its exit status. */
[[nodiscard]] int runInside(const Home& home, const Command& command);

}  // namespace sim
