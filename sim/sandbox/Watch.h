#pragma once

#include "sim/sandbox/Home.h"

namespace sim {

/**
 * Waits until the daemon of a camera that has booted for at least the given number of times answers.
 *
 * Ends early when the camera goes off, or when the daemon has ended and no further boot begins. Says on standard error
 * why it gave up, with the last lines of the syslog.
 *
 * @return whether it answers.
 */
[[nodiscard]] bool waitForAnswer(const Home& home, int boots, int timeoutSeconds);

/** How often the camera has booted since it was switched on. */
[[nodiscard]] int boots(const Home& home);

}  // namespace sim
