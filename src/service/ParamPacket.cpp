#include "service/ParamPacket.h"

#include <algorithm>
#include <cstring>

#include "local/LittleEndian.h"

std::string ParamPacket::text() const {
  const char* const begin = reinterpret_cast<const char*>(m_bytes.data()) + kValue;
  return {begin, strnlen(begin, kSize - kValue)};
}

void ParamPacket::setText(std::string_view text) {
  const auto begin = m_bytes.begin() + kValue;
  std::fill(begin, m_bytes.end(), uint8_t{0});
  std::copy_n(text.begin(), std::min(text.size(), kMaxText), begin);
}

int32_t ParamPacket::word(Offset offset) const { return static_cast<int32_t>(getWord(m_bytes, offset)); }

void ParamPacket::setWord(Offset offset, int32_t value) { putWord(m_bytes, offset, static_cast<uint32_t>(value)); }
