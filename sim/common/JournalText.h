#pragma once

#include <string>

#include "sim/common/Json.h"

namespace sim {

/**
 * A line of the journal in words: time of day, who, and what with its values; "-> …" shows what was answered, "FAILED"
 * a call that gave -1, and a fault by which a neighbour misbehaved stands in brackets.
 *
 * @param withRaw adds the bytes of the message.
 */
[[nodiscard]] std::string journalText(const JsonMembers& members, bool withRaw);

}  // namespace sim
