#include "dsp/Frame.h"

#include <algorithm>

namespace dsp {
namespace {

struct InitialPayload {
  uint8_t address;
  std::array<uint8_t, 11> payload;
};

/** Payloads that do not start as zeros; 16-bit numbers stand low byte first. */
constexpr InitialPayload kInitialPayloads[] = {
    {0x20, {0x00, 0x00, 8, 8, 3, 1}},
    {0x21, {1, 1, 0, 0, 2, 2}},
    {0x30, {1, 0}},
    {0x31, {0, 0, 0, 0, 0x80, 0x07, 0x38, 0x04}},  // 0, 0, 1920, 1080
    {0x40, {1, 0x4B, 0x00, 0x4B, 0x00}},
    {0x50, {2}},
    {0x51, {0xCB, 0x02, 0xE8, 0x03, 0x6E, 0x05}},  // 715, 1000, 1390
    {0x52, {0xA5, 0x03, 0xC6, 0x02, 0xF4, 0x01}},  // 933, 710, 500
    {0x59, {0, 0, 8, 8, 8, 8, 8, 8}},
    {0x5A, {0, 0, 8, 8, 8, 8, 8, 8}},
    {0x60, {0, 0, 1, 0, 2, 0}},
    {0x70, {0x40, 0x80, 0x80, 0x80}},
    {0x84, {0, 1}},
    {0xD1, {0x80, 0x80, 0x80}},
    {0xF0, {1}},
    {0xF8, {1, 0, 0, 0, 0, 1, 1, 1, 1}},
};

}  // namespace

void put(Frame& frame, Field field, int32_t value) {
  auto rest = static_cast<uint32_t>(value);
  for (size_t i = 0; i < field.width; ++i, rest >>= 8)
    frame[field.position + i] = static_cast<uint8_t>(rest);
}

uint32_t take(const Frame& frame, Field field) {
  uint32_t value = 0;
  for (size_t i = field.width; i-- > 0;)
    value = value << 8 | frame[field.position + i];
  return value;
}

void putArea(Frame& frame, const Area& area) {
  uint8_t position = 1;
  for (const int32_t number : {area.x1, area.y1, area.x2, area.y2}) {
    put(frame, {frame[0], position, 2}, number);
    position = static_cast<uint8_t>(position + 2);
  }
}

Frame blankFrame(uint8_t address) { return Frame{address}; }

FrameCache::FrameCache() {
  for (size_t address = 0; address < m_frames.size(); ++address) {
    m_frames[address] = blankFrame(static_cast<uint8_t>(address));
  }
  for (const InitialPayload& initial : kInitialPayloads) {
    std::ranges::copy(initial.payload, m_frames[initial.address].begin() + 1);
  }
}

}  // namespace dsp
