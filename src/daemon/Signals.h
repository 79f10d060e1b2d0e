#pragma once

#include <cstdint>

/** The signals of the daemon: three that stop it, SIGSEGV, SIGPIPE ignored, all others blocked for its whole life. */
namespace Signals {

/** 0, or -1 with the failed step in the log. */
[[nodiscard]] int32_t set();

/** Until SIGINT, SIGTERM or SIGQUIT has arrived. */
[[nodiscard]] bool keepsRunning();

}  // namespace Signals
