#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

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
