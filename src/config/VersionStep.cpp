#include "config/VersionStep.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr std::array<int32_t, 11> kNewScale = {-125, -100, -75, -50, -25, 0, 16, 32, 48, 64, 80};

}  // namespace

bool isOnNewScale(const std::string& text) {
  return std::any_of(kNewScale.begin(), kNewScale.end(), [&](int32_t value) { return text == std::to_string(value); });
}

int32_t convertExposureReference(const std::string& text) {
  constexpr long kLowest = -5;
  constexpr long kHighest = kLowest + static_cast<long>(kNewScale.size()) - 1;
  const long old = std::clamp(std::strtol(text.c_str(), nullptr, 10), kLowest, kHighest);
  return kNewScale[static_cast<size_t>(old - kLowest)];
}
