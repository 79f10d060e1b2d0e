#pragma once

#include <cstdint>

#include "service/GpioMessage.h"

/**
 * The pin daemon, which also drives the focus motor and the infrared cut filter. Every operation is one connection.
 * Results: 0, or -1 after a failure, which is logged.
 */
namespace gpio {

/** What the daemon counts. */
enum class Counter : int32_t { Filter = 0, Focus = 1, Lamp = 2 };

/** Asks for a value. */
[[nodiscard]] int32_t ask(GpioCommand command, int32_t& value, int32_t argument = 0);
/** Tells the daemon something that it does not answer. */
[[nodiscard]] int32_t tell(GpioCommand command, int32_t first = 0, int32_t second = 0);

[[nodiscard]] int32_t askCounter(Counter counter, int32_t& value);
[[nodiscard]] int32_t setCounter(Counter counter, int32_t value);

}  // namespace gpio
