#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "application/ParamChecker.h"
#include "local/LittleEndian.h"
#include "request/Log.h"

namespace {

using Bytes = std::span<const uint8_t>;

constexpr size_t kTagSize = 4;
/** Each chunk: a tag, the size of what follows, and that. */
constexpr size_t kChunkHead = 8;
constexpr size_t kWaveAt = 8;
constexpr size_t kFirstChunkAt = 12;
constexpr size_t kFmtFields = 24;

/** A number of the fmt chunk that only one value is accepted for. */
struct Field {
  size_t offset;
  std::string_view bytes;
  const char* complaint;
};

using std::string_view_literals::operator""sv;

constexpr auto kFields = std::to_array<Field>({
    {8, "\1\0"sv, "is not PCM format."},
    {10, "\1\0"sv, "wrong channel."},
    {12, "\x40\x1f\0\0"sv, "wrong sampling rate."},
    {16, "\x80\x3e\0\0"sv, "wrong data transffer rate."},
    {20, "\2\0"sv, "wrong block size."},
    {22, "\x10\0"sv, "wrong bit/sample."},
});

bool holds(Bytes bytes, size_t at, std::string_view text) {
  if (at > bytes.size() || bytes.size() - at < text.size()) return false;
  return std::equal(text.begin(), text.end(), bytes.begin() + static_cast<ptrdiff_t>(at),
                    [](char c, uint8_t byte) { return static_cast<uint8_t>(c) == byte; });
}

/** The byte at a place, 0 behind the end. */
uint8_t byteAt(Bytes bytes, size_t at) { return at < bytes.size() ? bytes[at] : uint8_t{0}; }

/** "01, 0A": some bytes as the log shows them. */
std::string hexText(Bytes bytes, size_t at, size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) {
    std::array<char, 3> digits{};
    snprintf(digits.data(), digits.size(), "%02X", byteAt(bytes, at + i));
    text += (i == 0 ? "" : ", ") + std::string(digits.data());
  }
  return text;
}

/** The place of the chunk with the tag, from a chunk on; none when the bytes end before it. */
std::optional<size_t> findChunk(Bytes bytes, size_t at, std::string_view tag) {
  while (!holds(bytes, at, tag)) {
    if (bytes.size() < kChunkHead || at > bytes.size() - kChunkHead) return std::nullopt;
    const size_t behindHead = bytes.size() - at - kChunkHead;
    const uint32_t size = getWord(bytes, at + kTagSize);
    if (size > behindHead) return std::nullopt;
    at += kChunkHead + size;
  }
  return at;
}

bool checkField(Bytes chunk, const Field& field) {
  if (holds(chunk, field.offset, field.bytes)) return true;
  TMX_LOG(LOG_ERR, "%s [%s]", field.complaint, hexText(chunk, field.offset, field.bytes.size()).c_str());
  return false;
}

/** The place behind the fmt chunk; none when there is none, or its form is another. */
std::optional<size_t> checkFmtChunk(Bytes bytes) {
  const std::optional<size_t> at = findChunk(bytes, kFirstChunkAt, "fmt ");
  if (!at) {
    TMX_LOG(LOG_ERR, "not found \"fmt \" tag.");
    return std::nullopt;
  }
  const Bytes chunk = bytes.subspan(*at);
  if (chunk.size() < kFmtFields) return std::nullopt;
  const bool fits =
      std::all_of(kFields.begin(), kFields.end(), [&](const Field& each) { return checkField(chunk, each); });
  const size_t size = getWord(chunk, kTagSize);
  if (!fits || size > chunk.size() - kChunkHead) return std::nullopt;
  return *at + kChunkHead + size;
}

bool checkDataChunk(Bytes bytes, size_t from, uint32_t* dataSize) {
  const std::optional<size_t> at = findChunk(bytes, from, "data");
  if (!at) {
    TMX_LOG(LOG_ERR, "not found \"data\" tag. [%s]", hexText(bytes, from, kTagSize).c_str());
    return false;
  }
  if (bytes.size() - *at < kChunkHead) return false;
  *dataSize = getWord(bytes, *at + kTagSize);
  return true;
}

}  // namespace

int32_t ParamChecker::checkFileHeader(Bytes head, uint32_t* dataSize) {
  if (!holds(head, 0, "RIFF") || !holds(head, kWaveAt, "WAVE")) {
    TMX_LOG(LOG_ERR, "Header error [%c%c%c%c]", byteAt(head, 0), byteAt(head, 1), byteAt(head, 2), byteAt(head, 3));
    return -1;
  }
  const std::optional<size_t> behindFmt = checkFmtChunk(head);
  if (!behindFmt) {
    TMX_LOG(LOG_ERR, "check \"fmt \" tag error.");
    return -1;
  }
  if (!checkDataChunk(head, *behindFmt, dataSize)) {
    TMX_LOG(LOG_ERR, "check \"data\" tag error.");
    return -1;
  }
  return 0;
}
