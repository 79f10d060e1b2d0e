#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "web/ConfirmFile.h"

namespace console {

/** Where the guard says when it will put back: seconds of the clock that runs since the boot. */
inline constexpr const char* kDeadlineFile = "/run/console/deadline";

/** The seconds left before the guard puts back; `whole` where it has not said so yet. */
[[nodiscard]] std::int64_t secondsLeft(std::chrono::seconds whole);

/**
 * Puts back what nobody confirms in time, also behind a restart of the camera; runs from the camera's start on.
 *
 * @param opener see startOpener().
 */
[[noreturn]] void guard(const ConfirmFile& file, int opener, std::chrono::seconds time);

}  // namespace console
