#pragma once

#include <cstdint>
#include <span>

#include "tree/Rule.h"

/** The request that takes staged rows over: what must hold of them, and what brings them into force. */
struct Commit {
  std::span<const Row> rows;  ///< of one family with one table
  Act check = nullptr;        ///< 0, or a negated status with which the staged rows are refused and stay as they are
  Act apply = nullptr;        ///< 0 or a negated status, once the rows are taken over and on flash
};

/**
 * Carries a commit out: check, copy of what differs to the committed image, file, apply. kNothingWaits where no row
 * differs, unless settings are replayed; otherwise 0, or a negated status.
 */
[[nodiscard]] int32_t carryOut(const Commit& commit, Request& request);

/** The same as the function of a command. */
template <const Commit& commit>
int32_t takeOver(Request& request) {
  return carryOut(commit, request);
}
