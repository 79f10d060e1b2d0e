#include "sim/common/DspFrames.h"

#include <algorithm>

namespace sim {

namespace {

constexpr bool fieldsLieInsideFrame() {
  return std::ranges::all_of(dspFields, [](const DspField& field) {
    return field.at >= 1 && (field.size == 1 || field.size == 2) && field.at + field.size <= int{dspFrameSize};
  });
}
static_assert(fieldsLieInsideFrame());

constexpr bool fieldsHaveKnownAddress() {
  return std::ranges::all_of(dspFields, [](const DspField& field) {
    return std::ranges::find(dspAddresses, field.address, &DspAddress::address) != dspAddresses.end();
  });
}
static_assert(fieldsHaveKnownAddress());

int valueOf(const DspField& field, const DspFrame& frame) {
  const int bits = field.size == 1 ? frame[field.at] : dspWord(frame, field.at);
  if (!field.isSigned) return bits;
  return field.size == 1 ? static_cast<std::int8_t>(bits) : static_cast<std::int16_t>(bits);
}

}  // namespace

std::string_view dspName(std::uint8_t address) {
  const auto* found = std::ranges::find(dspAddresses, address, &DspAddress::address);
  return found == dspAddresses.end() ? "unknown" : found->name;
}

std::vector<DspValue> dspValues(const DspFrame& frame) {
  std::vector<DspValue> values;
  for (const DspField& field : dspFields) {
    if (field.address == frame[0]) values.push_back({field.name, valueOf(field, frame)});
  }
  return values;
}

}  // namespace sim
