#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/** The lines that a command of the shell prints, each cut to a length; none, which is logged, when it cannot be run. */
[[nodiscard]] std::optional<std::vector<std::string>> linesOf(const std::string& command, size_t longestLine);
