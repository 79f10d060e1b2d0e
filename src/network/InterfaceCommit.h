#pragma once

#include <cstdint>

#include "tree/Rule.h"

/**
 * How the staged settings of the interface become active: checked as a whole, taken over, saved. Results are those of a
 * rule's functions; a refusal says what does not fit.
 */
namespace interface_commit {

/**
 * Settles and saves the four DHCP rows. kNothingWaits when none has changed; -412 when options are on without DHCP,
 * which switches all four off; -500.
 */
[[nodiscard]] int32_t saveDhcp(Request& request);

/**
 * Saves all settings of the interface, which are checked even when nothing waits (kNothingWaits then). -405 when the
 * address or a gateway does not fit, which takes the staged addresses back; -412 when the DHCP rows could not be
 * settled; -500.
 */
[[nodiscard]] int32_t saveInterface(Request& request);

}  // namespace interface_commit
