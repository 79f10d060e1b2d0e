#pragma once

#include <string>

namespace console {

/** Gives up all capabilities, for good, and for what this process may start; false with errno set. */
[[nodiscard]] bool dropCapabilities();

/**
 * Becomes the user and gives up all capabilities, for good. In a user namespace that does not have the user, as in a
 * camera that was started without root, the number stays root's, and only the capabilities go.
 *
 * @param folder made where it is missing, and given to the user before; holds what outlives the process.
 * @return false with errno set when this process must not go on.
 */
[[nodiscard]] bool becomeUser(const std::string& user, const std::string& folder);

}  // namespace console
