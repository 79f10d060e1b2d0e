#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

namespace sim {

using Command = std::vector<std::string>;
using Environment = std::vector<std::pair<std::string, std::string>>;

/** The variables that every program inside the camera gets, and nothing else of the host's. */
[[nodiscard]] Environment cameraEnvironment();

/** Adds what the daemon and its children get besides: the preloaded library and where the sanitizers report. */
[[nodiscard]] Environment daemonEnvironment(Environment extra);

/** What a child does with the variables that it inherits before it adds its own. */
enum class Inherit { Nothing, All };

/** Becomes the command, with a clean signal mask; ends with status 127 when it cannot be run. */
[[noreturn]] void become(const Command& command, const Environment& environment, Inherit inherit);

/** Starts a command with standard input and output on the null device; its pid, negative when the fork failed. */
[[nodiscard]] pid_t spawn(const Command& command, const Environment& environment);

/** Runs a command to its end with the variables that are there; exit status, 128 and the signal, or -1. */
[[nodiscard]] int run(const Command& command, const Environment& environment = {});

/** The exit status of a waited process as a shell would give it. */
[[nodiscard]] int exitStatus(int waitStatus);

}  // namespace sim
