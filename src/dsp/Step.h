#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

namespace dsp {

/** 1 for "+", -1 for "-", 0 for any other text. */
[[nodiscard]] constexpr int32_t stepDirection(std::string_view step) {
  if (step == "+") return 1;
  return step == "-" ? -1 : 0;
}

/** The neighbouring rung; at either end, and from a value that is no rung, the value itself. */
[[nodiscard]] constexpr int32_t ladderStep(std::span<const int32_t> ladder, int32_t value, int32_t direction) {
  const auto rung = std::ranges::find(ladder, value);
  if (rung == ladder.end()) return value;
  if (direction > 0) return rung + 1 == ladder.end() ? value : rung[1];
  return rung == ladder.begin() ? value : rung[-1];
}

}  // namespace dsp
