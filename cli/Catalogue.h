#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tmx {

// What the daemon's list does not tell about its parameters, and a dump has to know.

/**
 * The path with every selector that each of its layers takes: "network.destination.host" becomes five paths. A layer
 * that works without a selector, and has one thing behind it only, stays as it is.
 */
[[nodiscard]] std::vector<std::string> expandSelectors(const std::string& path);

/**
 * Whether writing back what was read restores a setting. It does not where a write starts something (a motion, a
 * focus run, a format of the card), sets the clock or a counter, or belongs to the one camera (its adjustment).
 */
[[nodiscard]] bool isSetting(std::string_view path);

}  // namespace tmx
