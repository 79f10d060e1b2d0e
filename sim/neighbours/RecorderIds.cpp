#include "RecorderIds.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace sim {

namespace {

struct Name {
  std::uint32_t id;
  std::string_view text;
};

constexpr auto plainNames = std::to_array<Name>({
    {0x131200, "input_pin.status"},
    {0x151200, "output_pin.status"},
    {0x221100, "ftp.host"},
    {0x221200, "ftp.user"},
    {0x221300, "ftp.password"},
    {0x221400, "ftp.mode"},
    {0x221600, "ftp.port"},
    {0x221700, "ftp.path"},
    {0x221800, "ftp.naming"},
    {0x221900, "ftp.naming_option"},
    {0x231000, "smtp.type"},
    {0x232000, "smtp.host"},
    {0x233000, "smtp.port"},
    {0x242000, "pop.host"},
    {0x243000, "pop.port"},
    {0x244000, "pop.user"},
    {0x245000, "pop.password"},
    {0x411000, "disk.status"},
});

/** Ids that carry an index in the four bits above their lowest twelve. */
constexpr auto indexedNames = std::to_array<Name>({
    {0x210100, "event(N).status"},
    {0x210200, "event(N).trigger"},
    {0x210300, "event(N).action"},
    {0x250100, "object(N).source"},
    {0x250200, "object(N).prerec"},
    {0x250300, "object(N).postrec"},
    {0x250500, "object(N).framerate"},
    {0x250610, "object(N).overwrite"},
    {0x500000, "channel(N).framesize"},
    {0x510000, "channel(N).framerate"},
    {0x520000, "channel(N).interval"},
    {0x530000, "channel(N).type"},
    {0x540000, "channel(N).bitrate"},
});

/** Pins: the number stands above the lowest four bits. */
constexpr auto pinNames = std::to_array<Name>({
    {0x131401, "input_pin(N).level"},
    {0x151401, "output_pin(N).level"},
    {0x151402, "output_pin(N).duration"},
});

constexpr std::array<std::string_view, 5> filterNames{"", "status", "type", "start", "end"};

std::string withIndex(std::string_view text, std::uint32_t index) {
  std::string name(text);
  return name.replace(name.find('N'), 1, std::to_string(index));
}

template <typename Table>
const Name* find(const Table& table, std::uint32_t id) {
  const auto* found = std::ranges::find(table, id, &Name::id);
  return found == table.end() ? nullptr : found;
}

}  // namespace

std::string recorderIdName(std::uint32_t id) {
  if (const Name* plain = find(plainNames, id)) return std::string(plain->text);
  const std::uint32_t index = id >> 12 & 15;
  if (const Name* indexed = find(indexedNames, id & ~0xf000u)) return withIndex(indexed->text, index);
  if (const Name* pin = find(pinNames, id & ~0xf0u)) return withIndex(pin->text, id >> 4 & 15);
  const std::uint32_t item = id & 15;
  if ((id & 0xff0f00) == 0x210400 && item >= 1 && item < filterNames.size()) {
    return withIndex("event(N).filter(", index) + std::to_string(id >> 4 & 15) + ")." + std::string(filterNames[item]);
  }
  return "unknown";
}

}  // namespace sim
