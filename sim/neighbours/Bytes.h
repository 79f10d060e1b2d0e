#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sim {

/** The 32-bit number, low byte first, at a position of a message. The caller has seen to it that it lies inside. */
[[nodiscard]] inline std::uint32_t word32(std::string_view bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;)
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

[[nodiscard]] inline std::int32_t signed32(std::string_view bytes, std::size_t at) {
  return static_cast<std::int32_t>(word32(bytes, at));
}

[[nodiscard]] inline std::uint16_t word16(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1])
                                                                                << 8);
}

inline void putWord16(std::string& bytes, std::size_t at, std::uint16_t value) {
  bytes[at] = static_cast<char>(value & 0xff);
  bytes[at + 1] = static_cast<char>(value >> 8);
}

inline void putWord32(std::string& bytes, std::size_t at, std::uint32_t value) {
  putWord16(bytes, at, static_cast<std::uint16_t>(value & 0xffff));
  putWord16(bytes, at + 2, static_cast<std::uint16_t>(value >> 16));
}

inline void putSigned32(std::string& bytes, std::size_t at, std::int32_t value) {
  putWord32(bytes, at, static_cast<std::uint32_t>(value));
}

/** The first numbers of a message in decimal, divided by blanks. */
[[nodiscard]] inline std::string numbersText(std::string_view bytes, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i)
    text += (i == 0 ? "" : " ") + std::to_string(signed32(bytes, 4 * i));
  return text;
}

/** The text from a position up to its first NUL or the end of the message. */
[[nodiscard]] inline std::string textAt(std::string_view bytes, std::size_t at) {
  const std::string_view text = bytes.substr(at);
  return std::string(text.substr(0, text.find('\0')));
}

}  // namespace sim
