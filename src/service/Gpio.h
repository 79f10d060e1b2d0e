#pragma once

#include <cstdint>

/**
 * The pin daemon, which also drives the focus motor and the infrared cut filter. Every operation is one connection.
 * Results: 0, or -1 after a failure, which is logged.
 */
namespace gpio {

enum class Command : uint32_t {
  InitDone = 0,          ///< tell: the settings of the camera are loaded
  Filter = 9,            ///< ask: cut filter, 0 black-and-white, 1 colour
  FocusAssist = 10,      ///< tell: 1 on, 0 off
  Counter = 16,          ///< ask, with a Counter
  SetCounter = 17,       ///< tell: a Counter and its value
  FormatSwitch = 20,     ///< ask: other than 0 is NTSC
  FocusStep = 30,        ///< tell: a step, negative towards near
  FocusAuto = 31,        ///< tell: 0 stop, 1 to 3 the automatic runs
  NightOffset = 32,      ///< tell: offset of the night focus
  FactoryPosition = 33,  ///< tell: drive to the factory position
  FilterRun = 34,        ///< tell: correct the focus for the filter's position
  AdjustMode = 35,       ///< tell: 1 enter a fixed mode, 0 leave it
  RunKind = 40,          ///< ask: 1, 5, 6 for the automatic runs, else 0
  RunEnded = 41,         ///< ask: 0 while a run is on
  FocusDirection = 42,   ///< ask: 0 near, 1 far
  FocusPosition = 43,    ///< ask
  FocusProgress = 45,    ///< ask: percent
};

/** What the daemon counts. */
enum class Counter : int32_t { Filter = 0, Focus = 1, Lamp = 2 };

/** Asks for a value. */
[[nodiscard]] int32_t ask(Command command, int32_t& value, int32_t argument = 0);
/** Tells the daemon something that it does not answer. */
[[nodiscard]] int32_t tell(Command command, int32_t first = 0, int32_t second = 0);

[[nodiscard]] int32_t askCounter(Counter counter, int32_t& value);
[[nodiscard]] int32_t setCounter(Counter counter, int32_t value);

}  // namespace gpio
