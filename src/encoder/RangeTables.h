#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "encoder/EncodeCodes.h"

/**
 * The legal ranges of one encoder at one frame size, as texts "lo-hi": quality in kilobytes, frame rate in frames per
 * second, bit rate in kilobits per second, I-frame interval in frames.
 */
struct RangeEntry {
  std::string_view quality = "0k-0k";
  std::string_view framerate = "0-0";
  std::string_view bitrate = "0-0";
  std::string_view iframeinterval = "0-0";
};

using RangeTable = std::array<std::array<RangeEntry, resolution_code::kCount>, encoder_code::kCount>;

namespace range_tables {

using encoder_code::H264Baseline;
using encoder_code::H264High;
using encoder_code::Jpeg;
using resolution_code::R1280x720;
using resolution_code::R1280x960;
using resolution_code::R1920x1080;
using resolution_code::R320x240;
using resolution_code::R640x360;
using resolution_code::R640x480;

using Codes = std::initializer_list<int32_t>;

inline constexpr Codes kH264 = {H264Baseline, H264High};
inline constexpr Codes kAllSizes = {R1920x1080, R1280x960, R1280x720, R640x480, R640x360, R320x240};

/** The cells that share an entry. */
struct Rule {
  Codes encoders;
  Codes resolutions;
  RangeEntry entry;
};

/** The base, by default a table of empty entries, with the cells of the rules written over. */
consteval RangeTable table(std::initializer_list<Rule> rules, RangeTable base = {}) {
  for (const Rule& rule : rules) {
    for (const int32_t encoder : rule.encoders) {
      for (const int32_t resolution : rule.resolutions) {
        base[static_cast<std::size_t>(encoder)][static_cast<std::size_t>(resolution)] = rule.entry;
      }
    }
  }
  return base;
}

/** The channels that are on agree in encoder and frame size. */
inline constexpr RangeTable kSingleEncode = table({
    {{Jpeg}, {R1920x1080}, {"80k-320k", "1-15", "64-8000", "0-0"}},
    {{Jpeg}, {R1280x960, R1280x720, R640x480, R640x360, R320x240}, {"80k-320k", "1-30", "64-8000", "0-0"}},
    {kH264, kAllSizes, {"0k-0k", "1-30", "64-8000", "5-120"}},
});

/** They differ in the encoder. The empty quality has no "k" here, as clients know it. */
inline constexpr RangeTable kMultiEncode = table({
    {{Jpeg}, {R1920x1080}, {"80k-320k", "1-15", "64-8000", "0-0"}},
    {{Jpeg}, {R1280x960, R1280x720}, {"60k-180k", "1-15", "64-8000", "0-0"}},
    {{Jpeg}, {R640x480, R640x360}, {"15k-80k", "1-15", "64-8000", "0-0"}},
    {{Jpeg}, {R320x240}, {"5k-27k", "1-15", "64-8000", "0-0"}},
    {kH264, kAllSizes, {"0-0", "1-15", "64-8000", "5-120"}},
});

/** They differ in the frame size. */
inline constexpr RangeTable kMultiResolution =
    table({{{Jpeg}, {R1280x960}, {"69k-180k", "1-15", "64-8000", "0-0"}}}, kMultiEncode);

/** The analog output is on. */
inline constexpr RangeTable kAnalogOutPutOn = table({
    {{Jpeg}, {R1920x1080}, {"80k-320k", "1-5", "64-8000", "0-0"}},
    {kH264, {R1920x1080}, {"0k-0k", "1-5", "64-8000", "5-120"}},
});

}  // namespace range_tables
