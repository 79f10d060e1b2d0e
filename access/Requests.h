#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/Account.h"
#include "access/Catalogue.h"
#include "access/Upstream.h"
#include "access/Waiting.h"
#include "cli/Item.h"

namespace tmx {

/** Items that somebody has sent, and what became of them. */
struct Work {
  Account account;
  std::vector<Item> items;
  std::vector<Answer> answers = {};        ///< in the order of the items
  std::vector<Waiting::Reads> reads = {};  ///< of each item
};

/** An answer as the JSON object of docs/console.md. @param now what a read shows behind a write, on the wire. */
[[nodiscard]] std::string answerText(const Answer& answer, const std::optional<std::string>& now);
/** All of them, parted by commas. */
[[nodiscard]] std::string answersText(const Work& work);

/** Carries out what people ask for, with a look at each value in front of its write and behind it. */
class Requests {
 public:
  using WorkPointer = std::shared_ptr<Work>;

  Requests(Upstream& upstream, const Catalogue& catalogue, Waiting& waiting)
      : m_upstream(upstream), m_catalogue(catalogue), m_waiting(waiting) {}

  /** @param done hears why the daemon did not answer all of it; of an empty text when it did. */
  void carryOut(const WorkPointer& work, std::function<void(const std::string& failure)> done);

  /** Behind writes that were answered: reads what they have left, and notes what waits. */
  void lookBehind(const WorkPointer& work, std::function<void()> done);

 private:
  using Kept = std::optional<std::string> Waiting::Reads::*;
  void readValues(const WorkPointer& work, Kept kept, std::function<void()> next);

  Upstream& m_upstream;
  const Catalogue& m_catalogue;
  Waiting& m_waiting;
};

}  // namespace tmx
