#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The memory card as the kernel and the card's test program see it.

/** Its size in megabytes with the unit, such as "1886M"; "0M" without a card. */
[[nodiscard]] std::string cardSize();

/** Runs the card's test, however long that takes: "ok", "ng" or "read_only"; none when it could not be run. */
[[nodiscard]] std::optional<std::string> testCard();

/** The verdict in the lines of the test's result: the first that tells of its end decides. */
[[nodiscard]] std::string cardVerdict(const std::vector<std::string>& lines);
