#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sim {

/** The words of one command line, without the blanks between them. */
using Words = std::vector<std::string>;

/** The two sides of a word "key=value", or nothing when there is no "=". */
[[nodiscard]] inline std::optional<std::pair<std::string, std::string>> keyAndValue(const std::string& word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string::npos) return std::nullopt;
  return std::pair{word.substr(0, equals), word.substr(equals + 1)};
}

/** The decimal number that is the whole text, or nothing. */
template <typename Number>
[[nodiscard]] std::optional<Number> numberFrom(std::string_view text) {
  Number number{};
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (fault != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/** Stores a number and tells whether the text was one. */
template <typename Number>
[[nodiscard]] bool setNumber(Number& place, std::string_view text) {
  const auto number = numberFrom<Number>(text);
  if (number) place = *number;
  return number.has_value();
}

/** Stores whether the text is the first of two words and tells whether it was one of them. */
[[nodiscard]] inline bool setSwitch(bool& place, std::string_view text, std::string_view on, std::string_view off) {
  if (text != on && text != off) return false;
  place = text == on;
  return true;
}

}  // namespace sim
