#include "camera/MotionNumbers.h"

#include <array>
#include <cstdio>

namespace Camera {

std::string twoDecimals(double number) {
  std::array<char, 64> text{};
  snprintf(text.data(), text.size(), "%.2f", number);
  return text.data();
}

}  // namespace Camera
