#pragma once

#include <cstdint>

#include "tree/Node.h"

/**
 * Base of all nodes of the root `encode`. The root's selector is the channel; a write stages its value in both images,
 * and the write of `encode.status` takes all that is staged over.
 */
struct CEncodeApiBase : CApiBase {
  static constexpr int32_t kChannels = 3;

  /** The channel that a path speaks of, 1 to 3. */
  [[nodiscard]] static int32_t m_getChannel(const Selectors& selectors);
};

namespace Encode {

/** What a client is told to send next: "(encode(2).status=save)". */
inline constexpr Hint kSaveHint{.layer = "encode", .command = ".status=save", .selector = 0};

/** The place of a row in the tables of the channels. */
constexpr Place ofChannel(encode_row::Row row) { return {row, tableOf<0, 1>}; }

/** The rule of a value that stands in a row of the channel. */
constexpr Rule staged(const Accepts& accepts, encode_row::Row row, Act act = nullptr) {
  return {
      .accepts = accepts,
      .place = ofChannel(row),
      .act = act,
      .keeps = Keeps::InMemory,
      .unchanged = Unchanged::AfterTest,
      .compares = Image::User,
      .answers = kSaveHint,
  };
}

}  // namespace Encode
