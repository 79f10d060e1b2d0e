#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers as they stand in requests, files and the answers of neighbours. The whole text must be a decimal number, in
// front of which neither a blank nor a "+" belongs; anything else, the empty text too, is none. Whole numbers out of
// the type's range become its nearest limit: the camera's long has 32 bits, and numbers end there on every host.

[[nodiscard]] std::optional<int32_t> parseNumber(std::string_view text);
[[nodiscard]] std::optional<int64_t> parseLongNumber(std::string_view text);
/** Also with a fraction or an exponent. */
[[nodiscard]] std::optional<float> parseFloat(std::string_view text);

/** The number as a stream prints it: six significant digits, an exponent where that is shorter. */
[[nodiscard]] std::string doubleToString(double number);
