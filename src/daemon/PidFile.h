#pragma once

#include <cstdint>

/** The pid file of the daemon, "/var/run/tmxd.pid", which keeps a second instance from starting. */
namespace PidFile {

inline constexpr int32_t kCreated = 0;
inline constexpr int32_t kOtherLives = 1;
inline constexpr int32_t kFailed = -1;

/** Creates it; replaces one that names a dead process. */
[[nodiscard]] int32_t create();
void remove();

}  // namespace PidFile
