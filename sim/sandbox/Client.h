#pragma once

#include <string>

#include "sim/sandbox/Files.h"

namespace sim {

/**
 * Sends one request as administrator to the daemon's socket HOME/tmp/request.
 *
 * @return the answer's text; empty when nobody answers within the given time.
 */
[[nodiscard]] std::string request(const Path& home, const std::string& query, int milliseconds);

}  // namespace sim
