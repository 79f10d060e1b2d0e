#pragma once

#include <string>
#include <vector>

namespace tmx {

/** Gives up all capabilities, for good, and for what this process may start; false with errno set. */
[[nodiscard]] bool dropCapabilities();

/**
 * Becomes the user and gives up all capabilities, for good. In a user namespace that does not have the user, as in a
 * camera that was started without root, the number stays root's, and only the capabilities go.
 *
 * @param folders made where they are missing, and given to the user before.
 * @return false with errno set when this process must not go on.
 */
[[nodiscard]] bool becomeUser(const std::string& user, const std::vector<std::string>& folders);

}  // namespace tmx
