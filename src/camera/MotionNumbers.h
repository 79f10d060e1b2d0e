#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/** The numbers of moves: in requests, and in the sequencer's answers. */
namespace Camera {

/** The range of the zoom; 1 shows the whole picture. */
namespace zoom_factor {
inline constexpr float kLeast = 1.0F;
inline constexpr float kMost = 8.0F;
}  // namespace zoom_factor

// None where the text is empty or is no number as a whole.
[[nodiscard]] std::optional<int32_t> wholeNumber(std::string_view text);
[[nodiscard]] std::optional<float> decimalNumber(std::string_view text);

[[nodiscard]] std::string twoDecimals(double number);

}  // namespace Camera
