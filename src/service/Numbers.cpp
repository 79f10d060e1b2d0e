#include "service/Numbers.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

/** The C conversions skip blanks and take a "+"; both are refused here. */
bool isPlain(const std::string& text) {
  return !text.empty() && std::isspace(static_cast<unsigned char>(text.front())) == 0 && text.front() != '+';
}

template <class Number, class Convert>
std::optional<Number> parse(std::string_view text, Convert convert) {
  const std::string digits(text);
  char* end = nullptr;
  if (!isPlain(digits)) return std::nullopt;
  const Number number = convert(digits.c_str(), &end);
  if (end != digits.c_str() + digits.size()) return std::nullopt;
  return number;
}

}  // namespace

std::optional<int64_t> parseLongNumber(std::string_view text) {
  return parse<int64_t>(text, [](const char* digits, char** end) { return int64_t{strtoll(digits, end, 10)}; });
}

std::optional<int32_t> parseNumber(std::string_view text) {
  using Limits = std::numeric_limits<int32_t>;
  const auto number = parseLongNumber(text);
  if (!number) return std::nullopt;
  return static_cast<int32_t>(std::clamp<int64_t>(*number, Limits::min(), Limits::max()));
}

std::optional<float> parseFloat(std::string_view text) {
  const auto number = parse<float>(text, [](const char* digits, char** end) { return strtof(digits, end); });
  if (number && std::isnan(*number)) return std::nullopt;
  return number;
}

std::string doubleToString(double number) {
  std::array<char, 32> text{};
  snprintf(text.data(), text.size(), "%g", number);
  return text.data();
}
