#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/** What the GPIO daemon is asked and told. It also drives the focus motor and the infrared cut filter. */
enum class GpioCommand : uint32_t {
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
  MicGain = 50,          ///< tell: the register's value; this and the next three go on to the sound driver
  PowerSupply = 51,      ///< tell: 10 on, 11 off
  Halfduplex = 52,       ///< tell: 5, that it has changed
  Loopback = 53,         ///< tell: 15 on, 14 off
};

/** One message of the GPIO daemon, in either direction: four words, 16 bytes on the wire. */
struct GpioMessage {
  static constexpr size_t kSize = 16;
  static constexpr uint32_t kAcknowledged = 99;
  using Bytes = std::array<uint8_t, kSize>;

  /** Request: command, value, second and third value. Reply: acknowledgement, command, two result values. */
  std::array<uint32_t, 4> words{};

  [[nodiscard]] Bytes toBytes() const;
  [[nodiscard]] static GpioMessage fromBytes(const Bytes& bytes);

  /** Whether this reply acknowledges that request. */
  [[nodiscard]] bool acknowledges(const GpioMessage& request) const {
    return words[0] == kAcknowledged && words[1] == request.words[0];
  }
};
