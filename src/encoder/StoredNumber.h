#pragma once

#include <cstdint>
#include <string_view>

// Numbers out of stored texts, which may carry a unit ("320k"): the number in front counts, 0 when there is none.

/** A number beyond 32 bits gives the nearest there is. */
[[nodiscard]] int32_t storedInteger(std::string_view text);
[[nodiscard]] float storedFloat(std::string_view text);
[[nodiscard]] double storedDouble(std::string_view text);

/** The whole part of a number; no number at all gives 0, one beyond 32 bits the nearest there is. */
[[nodiscard]] int32_t cutToWhole(double number);
