#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "config/Config.h"
#include "request/Parameter.h"
#include "request/StatusCode.h"
#include "service/Words.h"
#include "tree/ExecArgs.h"
#include "tree/Selector.h"

/**
 * The vocabulary in which a leaf of the tree says its whole rule: what it accepts, whom it tells and asks, where the
 * value is kept and in which way, what it is compared with, what a read shows, and what is answered. RuleEngine.cpp is
 * the one piece of code that executes rules. What a leaf does of its own are functions that its rule names.
 */

/** One read or write on its way: the value as it was sent, and what the rule made of it. */
struct Request {
  Parameter& parameter;
  const Selectors& selectors;
  std::string value{};   ///< the text that will be kept; a test or an action may put it in another form
  int32_t number = 0;    ///< the number, or the number of the word
  int32_t step = 0;      ///< +1 or -1 where the value asked for one step from the present value ("+", "-")
  std::string detail{};  ///< stands behind the text of a refusal
};

// Results of the functions of a rule. A negated status refuses; another negative result is looked up in the rule's
// refusals. 0 and 200 go on: the value is kept and the rule's answer given.
/** Everything is done and nothing waits: the answer is 200 whatever the rule says, and no value is kept. */
inline constexpr int32_t kNothingWaits = 1;
/** Of a read: there is nothing live to show; the stored value is shown. */
inline constexpr int32_t kShowStored = 1;

using Act = int32_t (*)(Request& request);
using Fetch = int32_t (*)(const Request& request, std::string& text);

// ---- What a write accepts ------------------------------------------------------------------------------------------

/** A decimal number, else `noNumber`, from low to high, else `outside`. With `steps` also the words "+" and "-". */
struct Number {
  int32_t low;
  int32_t high;
  bool steps = false;
  int32_t outside = status::kInvalidRange;
  int32_t noNumber = status::kNotUnderstood;
  int32_t (*snap)(int32_t number) = nullptr;  ///< the number that is taken for it, and kept in its place
  const char* logged = nullptr;               ///< the name by which the log tells of a number outside
};

/** A decimal number, else 451, that is one of the list, else 457. With `steps` also the words "+" and "-". */
struct OneOf {
  static constexpr size_t kMost = 10;
  std::array<int32_t, kMost> numbers{};
  size_t count = 0;
  bool steps = false;
};

template <class... Numbers>
constexpr OneOf oneOf(Numbers... numbers) {
  return {.numbers = {numbers...}, .count = sizeof...(numbers)};
}

/** A number that may have a fraction, else 451, from low to high, else 457. */
struct Decimal {
  float low;
  float high;
};

/** A hexadecimal number, else 451, of at most so many digits, else 457. */
struct Hex {
  size_t digits;
};

/** The form of a text that code judges, for who asks what a write takes, with texts that show it (parted by blanks). */
struct Form {
  std::string_view words{};
  std::string_view taken{};
  std::string_view refused{};  ///< each by `code`
  int32_t code = status::kNotUnderstood;
};

/** How the escapes of a text are taken: as they stand, "%xx" for its character, or that and "+" for a blank. */
enum class Escapes { AsSent, Decoded, DecodedPlus };

/** A text of least to most bytes behind the decoding, else `wrongLength`, with none of the characters, else 451. */
struct Text {
  size_t most = 1024;  ///< a whole request is not longer
  size_t least = 0;
  int32_t wrongLength = status::kNotUnderstood;
  Escapes escapes = Escapes::AsSent;
  std::string_view forbidden{};
  bool canBeEmpty = false;     ///< "%00" stands for the empty text
  std::string_view emptyAs{};  ///< what is kept for it
  Form form{};                 ///< what is judged behind the acceptance
};

/** A test of its own: 0 or a negated status; may set the request's number and put its value in another form. */
struct Test {
  Act run;
  Form form;
};

/** Nothing: the leaf takes no value; without commands it has no write operation and answers 501. */
using Accepts = std::variant<std::monostate, Words, Number, OneOf, Decimal, Hex, Text, Test>;

/** A word that makes the leaf do something instead of taking a value: it is not compared, told or kept. */
struct Command {
  std::string_view word{};
  /** 0 answers 200; status::kAccepted answers 202 with the rule's hint. None: the peer, if there is one, is told. */
  Act run = nullptr;
  PostAction afterwards = PostAction::None;  ///< what follows behind the answer when `run` gave 0
  std::string_view stops{};                  ///< what it interrupts besides
};

// ---- Whom a write tells and a read asks ----------------------------------------------------------------------------

/** A neighbour and what is spoken of with it; Peers.h makes them. */
struct Peer {
  int32_t (*tell)(const Peer& peer, Request& request) = nullptr;
  int32_t (*ask)(const Peer& peer, const Request& request, std::string& text) = nullptr;
  uint32_t id = 0;                                           ///< in the neighbour's own numbers
  uint32_t (*ofPath)(const Selectors& selectors) = nullptr;  ///< what the path adds to the number
  std::string_view path{};                                   ///< in the neighbour's own words

  [[nodiscard]] constexpr bool exists() const { return tell != nullptr || ask != nullptr; }
  [[nodiscard]] int32_t idFor(const Selectors& selectors) const {
    return static_cast<int32_t>(id + (ofPath == nullptr ? 0 : ofPath(selectors)));
  }
};

// ---- Where the value is kept ---------------------------------------------------------------------------------------

/** The committed or the staging image. */
enum class Image { Config, User };

/** One cell of the settings. */
struct Cell {
  Row row;
  int32_t table = 0;
  std::optional<Image> image{};  ///< where this cell is shown from one image, whatever the rule says
};

/**
 * A row; where table, row or even the family depend on the path, `locate` works the cell out. `also` are further cells
 * that hold the same value. A value that no restart survives stands in a variable instead.
 */
struct Place {
  using Locate = Cell (*)(const Selectors& selectors, Row row);
  using Also = std::vector<Cell> (*)(const Selectors& selectors);

  constexpr Place() = default;
  constexpr Place(RowNumber auto where, Locate how = nullptr, Also more = nullptr)  // NOLINT: the row is the place
      : row(where), locate(how), also(more) {}
  constexpr Place(std::string* where) : variable(where) {}  // NOLINT: the variable is the place

  [[nodiscard]] constexpr bool exists() const { return row.exists() || variable != nullptr; }
  [[nodiscard]] Cell cell(const Selectors& selectors) const { return locate ? locate(selectors, row) : Cell{row}; }

  Row row{};
  Locate locate = nullptr;
  Also also = nullptr;
  std::string* variable = nullptr;
};

/** Place::locate of a family with a table for each number of a selector, the first of which is `First`. */
template <size_t Layer, int32_t First>
Cell tableOf(const Selectors& selectors, Row row) {
  return {row, selectorNumber(selectors, Layer, First) - First};
}

/** How an accepted value is kept. */
enum class Keeps {
  Nothing,         ///< nowhere, or in memory by an action, which the request of the hint then writes
  ByAct,           ///< on flash, or in files of others, by the action
  WriteThrough,    ///< staging image, committed image, file
  ConfigOnly,      ///< committed image, file
  InMemory,        ///< both images, or the variable
  ConfigInMemory,  ///< committed image
  Staged,          ///< staging image; a later request of the family takes it over
};

/** When a value equal to the stored one ends the write with 200. Never while settings are replayed. */
enum class Unchanged {
  IsWritten,     ///< never: the value goes the whole way again
  BeforeTest,    ///< before the value is looked at
  AfterTest,     ///< once it is accepted
  AfterKeeping,  ///< once it is kept: 200 where both images agree, else the hint
};

// ---- What is shown and answered ------------------------------------------------------------------------------------

/** What the request of a hint does for the value. */
enum class Brings {
  ToFlashAndForce,  ///< it was staged
  ToFlash,          ///< it was in force already
  IntoForce,        ///< it was on flash already
};

/** "(layer(selector)command)" behind a 202, the request that takes the value over. */
struct Hint {
  std::string_view layer{};
  std::string_view command{};
  int32_t selector = -1;         ///< which selector of the path stands behind the layer; -1 for none
  std::string_view byDefault{};  ///< stands for an empty selector, which is left out otherwise
  Brings brings = Brings::ToFlashAndForce;
  bool isTold = true;  ///< false: the answer is 200 all the same
};

/** A result of an action and the status for it. */
struct Refusal {
  int32_t result;
  int32_t code;
};

/** Stands for every negative result that no row in front of it names. */
inline constexpr int32_t kAnyFailure = std::numeric_limits<int32_t>::min();

/** The statuses for results that are no negated statuses themselves; 500 for any other. */
using Refusals = std::array<Refusal, 4>;

/** What must hold of the path as it stands, or of the moment. */
struct Condition {
  int32_t (*check)(const Selectors& selectors) = nullptr;  ///< 0, or the negated status that refuses
  std::string_view text{};                                 ///< "while …", "for …": when it holds
};

/** Asked before anything else, in this order. */
struct Guard {
  Condition access{};                ///< of reads and writes
  std::array<Condition, 2> write{};  ///< of writes alone
};

/** How a value is shown. */
struct Shows {
  Image image = Image::Config;
  std::string_view prefix{};
  std::string_view suffix{};                    ///< a unit; an empty text has none
  bool escaped = false;                         ///< quotes, percent signs and ampersands as %22, %25 and %26
  std::string_view fixed{};                     ///< this text, whatever is stored
  int32_t (*number)(int32_t stored) = nullptr;  ///< the number that is shown for the stored one
  const Words* words = nullptr;                 ///< the word of the number that was asked for; 500 where it has none
};

struct Rule {
  Guard guard{};
  Accepts accepts{};
  std::array<Command, 3> commands{};
  Place place{};
  Peer peer{};            ///< told before the value is kept; asked by a read
  Act act = nullptr;      ///< what a write does besides, behind the peer
  Fetch fetch = nullptr;  ///< where a read gets its value when no peer and no row has it
  Keeps keeps = Keeps::Nothing;
  Act then = nullptr;  ///< what follows once the value is kept; a negative result refuses, and the value stays kept
  Unchanged unchanged = Unchanged::IsWritten;
  Image compares = Image::Config;  ///< the image that Unchanged looks at
  Shows shows{};
  Hint answers{};  ///< none: 200; with it 202 and the hint
  Refusals refusals{};
  std::string_view forward{};  ///< another path that reads and writes in this one's place
};

// ---- Rules that cannot be right do not compile (checked where a node is added, Node.h) -----------------------------

namespace rule_check {

constexpr bool takesValues(const Rule& rule) { return !std::holds_alternative<std::monostate>(rule.accepts); }
constexpr bool hasHint(const Rule& rule) { return !rule.answers.layer.empty(); }
constexpr bool takesCommands(const Rule& rule) { return !rule.commands.front().word.empty(); }

constexpr bool hasWordTwice(const Rule& rule) {
  const auto* words = std::get_if<Words>(&rule.accepts);
  for (const Command& command : rule.commands) {
    if (words != nullptr && !command.word.empty() && words->find(command.word)) return true;
  }
  if (words == nullptr) return false;
  for (const Word* word = words->begin(); word != words->end(); ++word) {
    for (const Word* other = words->begin(); other != word; ++other) {
      if (other->text == word->text) return true;
    }
  }
  return false;
}

constexpr bool hasSoundRange(const Rule& rule) {
  if (const auto* words = std::get_if<Words>(&rule.accepts)) return !words->empty();
  if (const auto* number = std::get_if<Number>(&rule.accepts)) return number->low <= number->high;
  if (const auto* list = std::get_if<OneOf>(&rule.accepts)) return list->count > 0;
  if (const auto* decimal = std::get_if<Decimal>(&rule.accepts)) return decimal->low <= decimal->high;
  if (const auto* hex = std::get_if<Hex>(&rule.accepts)) return hex->digits > 0 && hex->digits <= 7;
  if (const auto* text = std::get_if<Text>(&rule.accepts)) return text->least <= text->most && text->most > 0;
  if (const auto* test = std::get_if<Test>(&rule.accepts)) return test->run != nullptr;
  return true;
}

/** Who asks would not learn what the test takes. */
constexpr bool lacksForm(const Rule& rule) {
  const auto* test = std::get_if<Test>(&rule.accepts);
  return test != nullptr && test->form.words.empty();
}

constexpr bool refusesWithStatus(const Rule& rule) {
  constexpr int32_t kLowest = status::kUnauthorized;
  if (const auto* number = std::get_if<Number>(&rule.accepts)) {
    return number->outside >= kLowest && number->noNumber >= kLowest;
  }
  const auto* text = std::get_if<Text>(&rule.accepts);
  if (text != nullptr && text->wrongLength < kLowest) return false;
  for (const Refusal& refusal : rule.refusals) {
    if (refusal.result > 0 || (refusal.result < 0 && refusal.code < kLowest)) return false;
  }
  return true;
}

constexpr bool hasRowOfItsFamily(const Rule& rule) {
  return !rule.place.row.exists() ||
         (rule.place.row.number >= 0 && rule.place.row.number < countRows(rule.place.row.family));
}

/** A value that nobody keeps, hears or shows; a fixed text may be confirmed. */
constexpr bool forgetsValue(const Rule& rule) {
  return takesValues(rule) && rule.keeps == Keeps::Nothing && rule.act == nullptr && rule.peer.tell == nullptr &&
         rule.shows.fixed.empty();
}

constexpr bool actsOnNothing(const Rule& rule) {
  return !takesValues(rule) && (rule.act != nullptr || rule.then != nullptr || rule.keeps != Keeps::Nothing ||
                                rule.unchanged != Unchanged::IsWritten ||
                                (!takesCommands(rule) && (hasHint(rule) || rule.guard.write.front().check != nullptr)));
}

constexpr bool keepsWithoutPlace(const Rule& rule) {
  const bool inVariable = rule.place.variable != nullptr;
  if (inVariable && rule.keeps != Keeps::Nothing && rule.keeps != Keeps::InMemory) return true;
  const bool needsPlace = rule.keeps != Keeps::Nothing && rule.keeps != Keeps::ByAct;
  return !rule.place.exists() && (needsPlace || rule.unchanged != Unchanged::IsWritten);
}

/** Nobody would learn that a value waits, or there is no choice between 200 and the hint. */
constexpr bool lacksHint(const Rule& rule) {
  if (rule.answers.layer.empty() != rule.answers.command.empty()) return true;
  const bool staysInMemory =
      rule.keeps == Keeps::ConfigInMemory || (rule.keeps == Keeps::InMemory && rule.place.row.exists());
  return !hasHint(rule) && (staysInMemory || rule.keeps == Keeps::Staged || rule.unchanged == Unchanged::AfterKeeping);
}

constexpr bool forwardsAndMore(const Rule& rule) {
  return !rule.forward.empty() && (takesValues(rule) || takesCommands(rule) || rule.place.exists() ||
                                   rule.fetch != nullptr || rule.peer.exists());
}

}  // namespace rule_check
