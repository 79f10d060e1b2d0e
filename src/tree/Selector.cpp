#include "tree/Selector.h"

#include <algorithm>
#include <cctype>

#include "service/Numbers.h"

namespace {

bool isDigit(unsigned char character) { return std::isdigit(character) != 0; }

int32_t checkText(std::monostate /*unchecked*/, const std::string& /*selector*/) { return 0; }

int32_t checkText(const SelectorNumber& rule, const std::string& selector) {
  if (rule.digitsOnly && !std::all_of(selector.begin(), selector.end(), isDigit)) return -status::kNotUnderstood;
  const auto number = parseNumber(selector);
  if (!number) return -status::kNotUnderstood;
  return *number < rule.low || *number > rule.high ? -status::kNotValidForResource : 0;
}

char toLower(unsigned char character) { return static_cast<char>(std::tolower(character)); }

int32_t checkText(const SelectorWord& rule, const std::string& selector) {
  std::string text = rule.firstPartOnly ? selector.substr(0, selector.find(',')) : selector;
  if (rule.anyCase) std::transform(text.begin(), text.end(), text.begin(), toLower);
  return rule.words.find(text) ? 0 : -status::kNotUnderstood;
}

}  // namespace

int32_t checkSelector(const Selector& rule, const std::string& selector) {
  if (rule.available.met != nullptr && !rule.available.met()) return -status::kCommandNotFound;
  if (selector.empty()) return -rule.empty;
  const int32_t refused = std::visit([&selector](const auto& text) { return checkText(text, selector); }, rule.takes);
  if (refused == 0 && rule.selects != nullptr) rule.selects(selector);
  return refused;
}

int32_t selectorNumber(const Selectors& selectors, size_t layer, int32_t fallback) {
  return layer < selectors.size() ? parseNumber(selectors[layer]).value_or(fallback) : fallback;
}
