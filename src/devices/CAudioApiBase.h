#pragma once

#include <cstdint>

#include "tree/Node.h"

/** Base of all nodes of the root `audio`. */
struct CAudioApiBase : CApiBase {};

namespace Audio {

// Peers of rules (Rule.h): 0, or -500.
/** Hands the driver the number; it sits behind the pin daemon and answers nothing. */
[[nodiscard]] int32_t m_writeDriver(const Peer& peer, Request& request);
/** Hands the detection daemon the text. */
[[nodiscard]] int32_t m_sendDetectdata(const Peer& peer, Request& request);

}  // namespace Audio
