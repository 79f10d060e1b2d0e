#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/** Writes a 32-bit word at an offset of a message, lowest byte first: the camera's byte order on every host. */
inline void putWord(std::span<uint8_t> bytes, size_t offset, uint32_t word) {
  for (size_t i = 0; i < sizeof word; ++i)
    bytes[offset + i] = static_cast<uint8_t>(word >> (8 * i));
}

/** The 32-bit word at an offset of a message, lowest byte first. */
[[nodiscard]] inline uint32_t getWord(std::span<const uint8_t> bytes, size_t offset) {
  uint32_t word = 0;
  for (size_t i = 0; i < sizeof word; ++i)
    word |= static_cast<uint32_t>(bytes[offset + i]) << (8 * i);
  return word;
}
