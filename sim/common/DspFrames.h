#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

constexpr std::size_t dspFrameSize = 12;
using DspFrame = std::array<std::uint8_t, dspFrameSize>;

/** A field of a DSP frame: `size` bytes from position `at`, low byte first. */
struct DspField {
  std::uint8_t address;
  std::string_view name;
  std::uint8_t at;
  std::uint8_t size = 1;
  bool isSigned = false;
};

struct DspAddress {
  std::uint8_t address;
  std::string_view name;
};

/** What each DSP address is for. */
inline constexpr auto dspAddresses = std::to_array<DspAddress>({
    {0x10, "clock"},
    {0x18, "device id"},
    {0x19, "register address"},
    {0x1A, "register data"},
    {0x20, "exposure reference"},
    {0x21, "exposure"},
    {0x22, "backlight area"},
    {0x30, "iris"},
    {0x31, "exposure area"},
    {0x38, "exposure loop"},
    {0x39, "iris loop"},
    {0x40, "white balance"},
    {0x41, "one-push white balance"},
    {0x42, "white balance area"},
    {0x50, "white balance sub-adjust"},
    {0x51, "pre white balance R"},
    {0x52, "pre white balance B"},
    {0x58, "white balance loop"},
    {0x59, "white balance wide range"},
    {0x5A, "white balance narrow range"},
    {0x60, "image"},
    {0x70, "infrared colour"},
    {0x78, "lumx"},
    {0x82, "night focus"},
    {0x84, "focus"},
    {0xD0, "privacy mask area"},
    {0xD1, "privacy mask colour"},
    {0xD2, "privacy mask"},
    {0xE0, "information 0"},
    {0xE1, "information 1"},
    {0xE2, "information 2"},
    {0xF0, "settings loaded"},
    {0xF1, "pass mode"},
    {0xF2, "aspect ratio"},
    {0xF3, "model type"},
    {0xF8, "gain"},
    {0xFE, "sensor select"},
    {0xFF, "information 3"},
});

/** The fields of each address; a byte that stands nowhere here is fixed, a bitmap or unused. */
inline constexpr auto dspFields = std::to_array<DspField>({
    {0x10, "second", 1},
    {0x10, "minute", 2},
    {0x10, "hour", 3},
    {0x10, "day", 5},
    {0x10, "month", 6},
    {0x10, "year", 7},
    {0x18, "device", 1},
    {0x19, "address", 1, 2},
    {0x1A, "data", 1, 2},
    {0x1A, "probe", 3},
    {0x20, "reference", 1, 1, true},
    {0x20, "blc", 2},
    {0x20, "avpk_color", 3},
    {0x20, "avpk_bw", 4},
    {0x20, "daynight", 5},
    {0x21, "priority", 1},
    {0x21, "shutter", 2},
    {0x21, "speed", 3},
    {0x21, "fast_limit", 4},
    {0x21, "senseup_limit", 5},
    {0x21, "agc", 6},
    {0x22, "page", 1},
    {0x30, "mode", 1},
    {0x30, "offset", 2, 1, true},
    {0x31, "x1", 1, 2},
    {0x31, "y1", 3, 2},
    {0x31, "x2", 5, 2},
    {0x31, "y2", 7, 2},
    {0x38, "speed", 1},
    {0x38, "err_en", 2, 2},
    {0x38, "err_h", 4, 2},
    {0x38, "err_l", 6, 2},
    {0x38, "restart", 8},
    {0x38, "hysteresis", 9},
    {0x39, "start", 1, 2},
    {0x39, "intgain", 3, 2},
    {0x39, "progain", 5, 2},
    {0x39, "limit_high", 7, 2},
    {0x39, "limit_low", 9, 2},
    {0x40, "mode", 1},
    {0x40, "r", 2, 2},
    {0x40, "b", 4, 2},
    {0x41, "state", 1},
    {0x41, "r", 2, 2},
    {0x41, "b", 4, 2},
    {0x42, "x1", 1, 2},
    {0x42, "y1", 3, 2},
    {0x42, "x2", 5, 2},
    {0x42, "y2", 7, 2},
    {0x50, "state", 1},
    {0x50, "r", 2, 2},
    {0x50, "b", 4, 2},
    {0x51, "low", 1, 2},
    {0x51, "normal", 3, 2},
    {0x51, "high", 5, 2},
    {0x52, "low", 1, 2},
    {0x52, "normal", 3, 2},
    {0x52, "high", 5, 2},
    {0x58, "speed", 1},
    {0x58, "err_en", 2, 2},
    {0x58, "err_h", 4, 2},
    {0x58, "err_l", 6, 2},
    {0x58, "restart", 8},
    {0x59, "r", 1, 1, true},
    {0x59, "b", 2, 1, true},
    {0x59, "g_low", 3},
    {0x59, "g_norm", 4},
    {0x59, "g_high", 5},
    {0x59, "mg_low", 6},
    {0x59, "mg_norm", 7},
    {0x59, "mg_high", 8},
    {0x5A, "r", 1, 1, true},
    {0x5A, "b", 2, 1, true},
    {0x5A, "g_low", 3},
    {0x5A, "g_norm", 4},
    {0x5A, "g_high", 5},
    {0x5A, "mg_low", 6},
    {0x5A, "mg_norm", 7},
    {0x5A, "mg_high", 8},
    {0x60, "color", 1, 1, true},
    {0x60, "enhance", 2, 1, true},
    {0x60, "pedestal", 3},
    {0x60, "gamma", 4},
    {0x60, "lumx", 5},
    {0x60, "dnr", 6},
    {0x70, "irygain1", 1},
    {0x70, "iryhue1", 2},
    {0x70, "ibygain1", 3},
    {0x70, "ibyhue1", 4},
    {0x78, "speed", 1},
    {0x78, "gain", 2},
    {0x82, "value", 1},
    {0x84, "direction", 1},
    {0x84, "icr", 2},
    {0x84, "position", 3, 2},
    {0x84, "factory_position", 5, 2},
    {0x84, "blackout", 7},
    {0xD0, "page", 1},
    {0xD1, "r", 1},
    {0xD1, "g", 2},
    {0xD1, "b", 3},
    {0xD2, "on", 1},
    {0xF0, "loaded", 1},
    {0xF1, "mode", 1},
    {0xF2, "aspect", 1},
    {0xF3, "combination", 1},
    {0xF3, "no_back_focus", 2},
    {0xF8, "automatic", 1},
    {0xF8, "compensation", 2, 2, true},
    {0xF8, "gain", 4, 2},
    {0xFE, "sensor", 1},
});

struct DspValue {
  std::string_view name;
  int value;
};

/** The meaning of an address, or "unknown". */
[[nodiscard]] std::string_view dspName(std::uint8_t address);

/** The named fields of a frame with their values, in the order of their bytes. */
[[nodiscard]] std::vector<DspValue> dspValues(const DspFrame& frame);

[[nodiscard]] constexpr std::uint16_t dspWord(const DspFrame& frame, std::size_t at) {
  return static_cast<std::uint16_t>(frame[at] | frame[at + 1] << 8);
}

constexpr void setDspWord(DspFrame& frame, std::size_t at, int value) {
  frame[at] = static_cast<std::uint8_t>(value & 0xff);
  frame[at + 1] = static_cast<std::uint8_t>(value >> 8 & 0xff);
}

}  // namespace sim
