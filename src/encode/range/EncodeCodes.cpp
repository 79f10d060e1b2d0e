#include "encode/range/EncodeCodes.h"

#include <array>

namespace {

struct Word {
  std::string_view text;
  int32_t code;
};

constexpr std::array<Word, 4> kEncoders = {{
    {"jpeg", encoder_code::Jpeg},
    {"h264baseline", encoder_code::H264Baseline},
    {"h264high", encoder_code::H264High},
    {"mpeg4", encoder_code::Mpeg4},
}};

constexpr std::array<Word, 9> kResolutions = {{
    {"1920x1080", resolution_code::R1920x1080},
    {"1280x960", resolution_code::R1280x960},
    {"quadvga", resolution_code::R1280x960},
    {"1280x720", resolution_code::R1280x720},
    {"640x480", resolution_code::R640x480},
    {"vga", resolution_code::R640x480},
    {"640x360", resolution_code::R640x360},
    {"320x240", resolution_code::R320x240},
    {"qvga", resolution_code::R320x240},
}};

template <std::size_t size>
int32_t codeOf(const std::array<Word, size>& words, std::string_view text) {
  for (const Word& word : words) {
    if (word.text == text) return word.code;
  }
  return 0;
}

}  // namespace

int32_t encoderCode(std::string_view text) { return codeOf(kEncoders, text); }

int32_t resolutionCode(std::string_view text) { return codeOf(kResolutions, text); }
