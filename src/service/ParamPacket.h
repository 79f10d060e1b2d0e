#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/**
 * The one message of the recorder and event daemon, 1012 bytes in each direction: command, argument, parameter id, and
 * then a number or, in the same place, a text with its NUL. In a reply the command is the verdict.
 */
class ParamPacket {
 public:
  static constexpr size_t kSize = 1012;
  static constexpr size_t kMaxText = 999;

  // Verdicts of a reply.
  static constexpr int32_t kSuccess = 2;
  static constexpr int32_t kRefused = 3;
  static constexpr int32_t kFailure = 5;

  [[nodiscard]] int32_t nCmd() const { return word(kCmd); }
  [[nodiscard]] int32_t nArg() const { return word(kArg); }
  [[nodiscard]] int32_t nId() const { return word(kId); }
  [[nodiscard]] int32_t nValue() const { return word(kValue); }
  [[nodiscard]] std::string text() const;

  void setCmd(int32_t command) { setWord(kCmd, command); }
  void setArg(int32_t argument) { setWord(kArg, argument); }
  void setId(int32_t id) { setWord(kId, id); }
  void setValue(int32_t value) { setWord(kValue, value); }
  /** Cut to kMaxText characters. */
  void setText(std::string_view text);

  [[nodiscard]] std::array<uint8_t, kSize>& bytes() { return m_bytes; }

 private:
  enum Offset : size_t { kCmd = 0, kArg = 4, kId = 8, kValue = 12 };

  [[nodiscard]] int32_t word(Offset offset) const;
  void setWord(Offset offset, int32_t value);

  std::array<uint8_t, kSize> m_bytes{};
};
