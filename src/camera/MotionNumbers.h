#pragma once

#include <string>

/** The numbers of moves: in requests, and in the sequencer's answers. */
namespace Camera {

/** The range of the zoom; 1 shows the whole picture. */
namespace zoom_factor {
inline constexpr float kLeast = 1.0F;
inline constexpr float kMost = 8.0F;
}  // namespace zoom_factor

[[nodiscard]] std::string twoDecimals(double number);

}  // namespace Camera
