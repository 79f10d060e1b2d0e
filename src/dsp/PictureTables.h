#pragma once

#include <cstdint>
#include <span>

namespace dsp {

/** A band of the scale 0 to 100: the highest value in it and the step that the DSP knows. */
struct Band {
  int32_t top;
  int32_t step;
};

inline constexpr Band kColorBands[] = {
    {8, -5}, {17, -4}, {26, -3}, {35, -2}, {44, -1}, {55, 0}, {64, 1}, {73, 2}, {82, 3}, {91, 4}, {100, 5},
};

inline constexpr Band kEnhanceBands[] = {
    {8, -5}, {17, -4}, {26, -3}, {34, -2}, {43, -1}, {53, 0}, {59, 1},
    {65, 2}, {71, 3},  {77, 4},  {83, 5},  {89, 6},  {94, 7}, {100, 8},
};

inline constexpr int32_t kScaleTop = 100;

/** Pedestal: a flag above this value; a step goes to one of two values, which are not on the same side of it. */
inline constexpr int32_t kPedestalThreshold = 50;
inline constexpr int32_t kPedestalUp = 32;

/** The index of the band that holds a value of 0 to 100. */
[[nodiscard]] constexpr size_t bandIndex(std::span<const Band> bands, int32_t value) {
  size_t index = 0;
  while (index + 1 < bands.size() && value > bands[index].top)
    ++index;
  return index;
}

/** One step (1 up, -1 down) goes to the top of the neighbouring band; at either end the value stays. */
[[nodiscard]] constexpr int32_t bandStep(std::span<const Band> bands, int32_t value, int32_t direction) {
  const size_t index = bandIndex(bands, value);
  if (direction > 0) return index + 1 < bands.size() ? bands[index + 1].top : value;
  return index > 0 ? bands[index - 1].top : value;
}

}  // namespace dsp
