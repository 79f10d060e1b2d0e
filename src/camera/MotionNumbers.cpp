#include "camera/MotionNumbers.h"

#include <array>
#include <cstdio>

#include "service/CTmxdUtility.h"

namespace Camera {

std::optional<int32_t> wholeNumber(std::string_view text) {
  int32_t error = 0;
  const int32_t number = CTmxdUtility::toLong(std::string(text), 0, &error);
  if (text.empty() || error != 0) return std::nullopt;
  return number;
}

std::optional<float> decimalNumber(std::string_view text) {
  int32_t error = 0;
  const float number = CTmxdUtility::toFloat(std::string(text), 0, &error);
  if (text.empty() || error != 0) return std::nullopt;
  return number;
}

std::string twoDecimals(double number) {
  std::array<char, 64> text{};
  snprintf(text.data(), text.size(), "%.2f", number);
  return text.data();
}

}  // namespace Camera
