#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <sstream>

#include "service/CTmxdUtility.h"

namespace {

/** The C conversions skip blanks and take a "+"; both are refused here. */
bool isPlain(const std::string& text) {
  return std::isspace(static_cast<unsigned char>(text.front())) == 0 && text.front() != '+';
}

bool isNumber(float number) { return !std::isnan(number); }
bool isNumber(int64_t) { return true; }

template <typename Number, typename Convert>
Number toNumber(const std::string& text, Number byDefault, int32_t* error, Convert convert) {
  char* end = nullptr;
  const Number number = text.empty() ? byDefault : convert(text.c_str(), &end);
  const bool isDone = text.empty() || (isPlain(text) && end == text.c_str() + text.size() && isNumber(number));
  if (error != nullptr) *error = isDone ? 0 : -1;
  return isDone ? number : byDefault;
}

}  // namespace

float CTmxdUtility::toFloat(const std::string& text, float byDefault, int32_t* error) {
  return toNumber(text, byDefault, error, [](const char* digits, char** end) { return strtof(digits, end); });
}

int64_t CTmxdUtility::toLongLong(const std::string& text, int64_t byDefault, int32_t* error) {
  return toNumber(text, byDefault, error,
                  [](const char* digits, char** end) { return int64_t{strtoll(digits, end, 10)}; });
}

int32_t CTmxdUtility::toLong(const std::string& text, int32_t byDefault, int32_t* error) {
  // The camera's long has 32 bits: numbers end there on every host.
  using Limits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(std::clamp<int64_t>(toLongLong(text, byDefault, error), Limits::min(), Limits::max()));
}

std::string CTmxdUtility::doubleToString(double number) {
  std::ostringstream text;
  text << number;
  return text.str();
}

std::string CTmxdUtility::longToString(int32_t number) { return std::to_string(number); }

std::string CTmxdUtility::unsignedToString(uint32_t number) { return std::to_string(number); }
