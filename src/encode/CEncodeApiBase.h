#pragma once

#include <cstdint>

#include "tree/CApiBase.h"
#include "tree/Rule.h"

/**
 * Base of all nodes of the root `encode`. The root's selector is the channel; a write stages its value in both images,
 * and the write of `encode.status` takes all that is staged over.
 */
class CEncodeApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;

  static constexpr int32_t kChannels = 3;

  /** The channel that a path speaks of, 1 to 3. */
  [[nodiscard]] static int32_t m_getChannel(const Selectors& selectors);

 protected:
  /** The place of a row in the tables of the channels. */
  static constexpr Place ofChannel(int32_t row) { return {.family = Family::Encode, .row = row, .locate = locate}; }

  /** What a client is told to send next: "(encode(2).status=save)". */
  static constexpr Hint kSaveHint{.layer = "encode", .command = ".status=save", .selector = 0};

  /** The rule of a value that stands in a row of the channel. */
  static constexpr Rule stagedRule(const Accepts& accepts, int32_t row, const Shows& shows = {}) {
    return {.accepts = accepts,
            .place = ofChannel(row),
            .keeps = Keeps::InMemory,
            .unchanged = Unchanged::AfterTest,
            .compares = Image::User,
            .shows = shows,
            .answers = kSaveHint};
  }

 private:
  static Cell locate(const Selectors& selectors, int32_t row);
};
