#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "local/ModelFeature.h"
#include "request/StatusCode.h"
#include "service/Words.h"
#include "tree/ExecArgs.h"

/** A selector that is a decimal number from low to high: 451 for another text, 456 out of the range. */
struct SelectorNumber {
  int32_t low;
  int32_t high;
  /** Only digits count as a number, so that "-1" is 451 and not 456. */
  bool digitsOnly = false;
};

/** A selector that is one of the words: 451 for another. */
struct SelectorWord {
  Words words;
  bool anyCase = false;
  bool firstPartOnly = false;  ///< only the text in front of the first "," is compared
};

/** Something that not every camera has. */
struct Requirement {
  bool (*met)() = nullptr;
  std::string_view what{};
};

/** A feature of the model file. */
template <Feature feature>
inline constexpr Requirement has{[] { return ModelFeature::has(feature); }, ModelFeature::text(feature)};
/** For a layer that a model has only without the feature. */
template <Feature feature>
inline constexpr Requirement lacks{[] { return !ModelFeature::has(feature); }, ModelFeature::absence(feature)};

/**
 * What a layer takes between its brackets, and when the layer exists at all. A layer whose class states no Selector
 * takes any selector and gives it no meaning.
 */
struct Selector {
  /** What the camera must have for the layer to exist; 461 where it has not. */
  Requirement available{};
  /** The status for a layer without brackets; 0 where that is accepted. */
  int32_t empty = 0;
  std::variant<std::monostate, SelectorNumber, SelectorWord> takes{};
  /** Hears of each accepted selector that is not empty: a path with it changes what later requests mean. */
  void (*selects)(const std::string& selector) = nullptr;
  /** The selector that a path without brackets stands for. */
  std::string_view without{};
};

/** Whether a rule can be right at all; a wrong one does not compile. */
constexpr bool isSound(const Selector& rule) {
  if (const auto* number = std::get_if<SelectorNumber>(&rule.takes)) return number->low <= number->high;
  if (const auto* word = std::get_if<SelectorWord>(&rule.takes)) return !word->words.empty();
  return rule.available.met != nullptr && rule.empty == 0 && rule.selects == nullptr;
}

/** Whether a path without brackets is refused, the same as any, or stands for a selector. */
constexpr bool saysWithout(const Selector& rule) {
  return std::holds_alternative<std::monostate>(rule.takes) || rule.empty != 0 || !rule.without.empty();
}

/** Applies the rule to the text between the brackets; 0 or a negated status. */
[[nodiscard]] int32_t checkSelector(const Selector& rule, const std::string& selector);

/** A selector's number, `fallback` where it is empty; the layer's rule has seen to the rest. */
[[nodiscard]] int32_t selectorNumber(const Selectors& selectors, size_t layer, int32_t fallback);
