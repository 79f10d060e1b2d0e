#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/** The largest and the smallest jpeg picture of one frame size, in kilobytes. */
struct QualityRow {
  int32_t limit;
  int32_t lowerLimit;
};

/** The row of a frame size in either spelling, nullptr when it has none. */
[[nodiscard]] const QualityRow* qualityRow(std::string_view framesize);

/** The stored quality when it lies within the limits of the frame size, else the limit it passes; none without a row.
 */
[[nodiscard]] std::optional<std::string> qualityWithinLimits(std::string_view framesize, const std::string& quality);
