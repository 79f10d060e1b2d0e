#pragma once

#include <cstdint>

#include "camera/CCameraApiBase.h"

namespace Camera {

template <gpio::Counter counter>
int32_t resetCounter(Request& /*request*/) {
  return gpio::setCounter(counter, 0);
}

/** The rule of a counter of the GPIO daemon; `belowZero` is the status for a negative number. */
template <gpio::Counter counter>
constexpr Rule counterRule(int32_t belowZero = status::kInvalidRange) {
  return {
      .accepts = Number{.low = 0, .high = INT32_MAX, .outside = belowZero},
      .commands = {{{"reset", resetCounter<counter>}}},
      .peer = peer::gpioCounter(counter),
  };
}

}  // namespace Camera
