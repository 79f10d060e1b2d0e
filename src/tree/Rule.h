#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "config/Config.h"
#include "request/StatusCode.h"
#include "service/Words.h"
#include "tree/ExecArgs.h"

class Parameter;

/**
 * The vocabulary in which a leaf of the tree says its whole rule: what it accepts, where the value is kept and in which
 * way, what it is compared with, and what it answers. RuleEngine.cpp is the one piece of code that executes rules; the
 * leaf's class adds only what it does besides (Leaf.h).
 */

/** One write on its way: the value as it was sent, and what the rule made of it. */
struct Request {
  Parameter& parameter;
  const Selectors& selectors;
  std::string value;   ///< the text that will be kept; a test or an action may put it in another form
  int32_t number = 0;  ///< the number, or the number of the word
  int32_t step = 0;    ///< +1 or -1 where the value asked for one step from the present value ("+", "-")
};

// ---- What a write accepts ------------------------------------------------------------------------------------------

/** A decimal number, else 451, from low to high, else `outside`. With `steps` also the words "+" and "-". */
struct Number {
  int32_t low;
  int32_t high;
  bool steps = false;
  int32_t outside = status::kInvalidRange;
};

/** A decimal number, else 451, that is one of the list, else 457. */
struct OneOf {
  static constexpr size_t kMost = 12;
  std::array<int32_t, kMost> numbers{};
  size_t count = 0;
  bool steps = false;
};

template <class... Numbers>
constexpr OneOf oneOf(Numbers... numbers) {
  return {.numbers = {numbers...}, .count = sizeof...(numbers)};
}

/** A test of its own: 0 or a negated status; may set the request's number and put its value in another form. */
struct Test {
  int32_t (*run)(Request& request);
};

/** Nothing: the leaf has no write operation and answers 501. */
using Accepts = std::variant<std::monostate, Words, Number, OneOf, Test>;

// ---- Where the value is kept ---------------------------------------------------------------------------------------

/** One cell of a family's tables. */
struct Cell {
  int32_t table;
  int32_t row;
};

/** The row of a family; where table or row depend on the path, `locate` works the cell out from the selectors. */
struct Place {
  Family family = Family::kCount;
  int32_t row = 0;
  Cell (*locate)(const Selectors& selectors, int32_t row) = nullptr;

  [[nodiscard]] constexpr bool exists() const { return family != Family::kCount; }
  [[nodiscard]] Cell cell(const Selectors& selectors) const { return locate ? locate(selectors, row) : Cell{0, row}; }
};

/** The committed or the staging image. */
enum class Image { Config, User };

/** How an accepted value is kept. */
enum class Keeps {
  Nothing,       ///< by the action, or nowhere
  WriteThrough,  ///< staging image, committed image, file
  ConfigOnly,    ///< committed image, file
  InMemory,      ///< both images; a later request of the family saves
  Staged,        ///< staging image; a later request of the family takes it over
};

/** When a value equal to the stored one ends the write with 200. Never while settings are replayed. */
enum class Unchanged {
  IsWritten,     ///< never: the value goes the whole way again
  BeforeTest,    ///< before the value is looked at
  AfterTest,     ///< once it is accepted
  AfterKeeping,  ///< once it is kept: 200 where both images agree, else the hint
};

// ---- What is answered ----------------------------------------------------------------------------------------------

/** "(layer(selector)command)" behind a 202, the request that takes the value over; an empty selector is left out. */
struct Hint {
  std::string_view layer{};
  std::string_view command{};
  int32_t selector = -1;  ///< which selector of the path stands behind the layer; -1 for none
};

/** A result of an action and the status for it. */
struct Refusal {
  int32_t result;
  int32_t code;
};

/** The statuses for an action's results that are not negated statuses themselves; 500 for any other. */
using Refusals = std::array<Refusal, 4>;

/** What an action returns when the value was in force already: the answer is 200 instead of 202. */
inline constexpr int32_t kAlreadyInForce = 1;

/** Asked before anything else: 0, or the negated status with which the path as it stands, or the moment, is refused. */
struct Guard {
  int32_t (*access)(const Selectors& selectors) = nullptr;  ///< of reads and writes
  int32_t (*write)(const Selectors& selectors) = nullptr;   ///< of writes alone
};

/** How a stored value is shown. */
struct Shows {
  Image image = Image::Config;
  std::string_view prefix{};
  std::string_view suffix{};
  bool escaped = false;      ///< quotes, percent signs and ampersands as %22, %25 and %26
  std::string_view fixed{};  ///< this text, whatever is stored
};

struct Rule {
  Guard guard{};
  Accepts accepts{};
  Place place{};
  Keeps keeps = Keeps::Nothing;
  Unchanged unchanged = Unchanged::IsWritten;
  Image compares = Image::Config;  ///< the image that Unchanged looks at
  Shows shows{};
  Hint answers{};  ///< none: 200; with it 202 and the hint
  Refusals refusals{};
};

// ---- Rules that cannot be right do not compile ---------------------------------------------------------------------

constexpr bool isSound(const Accepts& accepts) {
  if (const auto* words = std::get_if<Words>(&accepts)) return !words->empty();
  if (const auto* number = std::get_if<Number>(&accepts)) return number->low <= number->high;
  if (const auto* list = std::get_if<OneOf>(&accepts)) return list->count > 0;
  if (const auto* test = std::get_if<Test>(&accepts)) return test->run != nullptr;
  return true;
}

constexpr bool isSound(const Rule& rule) {
  const bool writes = !std::holds_alternative<std::monostate>(rule.accepts);
  const bool hints = !rule.answers.layer.empty();
  const bool staged = rule.keeps == Keeps::InMemory || rule.keeps == Keeps::Staged;
  if (!isSound(rule.accepts)) return false;
  if (!writes && rule.guard.write != nullptr) return false;
  if (!writes && (rule.keeps != Keeps::Nothing || rule.unchanged != Unchanged::IsWritten || hints)) return false;
  if (!rule.place.exists() && (rule.keeps != Keeps::Nothing || rule.unchanged != Unchanged::IsWritten)) return false;
  if (hints == rule.answers.command.empty()) return false;
  if (staged && !hints) return false;                                     // nobody would learn that it waits
  if (rule.unchanged == Unchanged::AfterKeeping && !hints) return false;  // it chooses between 200 and the hint
  return rule.place.exists() ? rule.place.row >= 0 : true;
}
