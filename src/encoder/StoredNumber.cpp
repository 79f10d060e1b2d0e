#include "encoder/StoredNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

// What does not fit the type leaves the number as it was.
template <typename Number>
std::from_chars_result readLeading(std::string_view text, Number& number) {
  return std::from_chars(text.data(), text.data() + text.size(), number);
}

}  // namespace

int32_t storedInteger(std::string_view text) {
  int32_t number = 0;
  if (readLeading(text, number).ec != std::errc::result_out_of_range) return number;
  return text.front() == '-' ? std::numeric_limits<int32_t>::min() : std::numeric_limits<int32_t>::max();
}

float storedFloat(std::string_view text) {
  float number = 0;
  readLeading(text, number);
  return number;
}

double storedDouble(std::string_view text) {
  double number = 0;
  readLeading(text, number);
  return number;
}

int32_t cutToWhole(double number) {
  if (std::isnan(number)) return 0;
  constexpr double kLowest = std::numeric_limits<int32_t>::min();
  constexpr double kHighest = std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::clamp(number, kLowest, kHighest));
}
