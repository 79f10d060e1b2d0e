#pragma once

#include <cstdint>
#include <string_view>

/** Numbers of the encoders in the range tables. */
namespace encoder_code {
enum Code : int32_t { NoEncoder, Jpeg, H264Baseline, H264High, Mpeg4, kCount };
}

/** Numbers of the frame sizes in the range tables; 320x180 has none. */
namespace resolution_code {
enum Code : int32_t { NoResolution, R1920x1080, R1280x960, R1280x720, R640x480, R640x360, R320x240, kCount };
}

/** A codec by its text. */
struct Codec {
  std::string_view text;
  encoder_code::Code code;
  int32_t format;  ///< the camera library's number
  bool isStream;   ///< has a bit rate and I-frames, where jpeg has a picture size
};

inline constexpr Codec kCodecs[] = {
    {"jpeg", encoder_code::Jpeg, 2, false},
    {"mpeg4", encoder_code::Mpeg4, 3, true},
    {"h264baseline", encoder_code::H264Baseline, 50, true},
    {"h264high", encoder_code::H264High, 52, true},
};

/** The codec of a text; none for another text. */
constexpr const Codec* findCodec(std::string_view text) {
  for (const Codec& codec : kCodecs) {
    if (codec.text == text) return &codec;
  }
  return nullptr;
}

/** The number of an encoder's text, NoEncoder for an empty or unknown one. */
[[nodiscard]] int32_t encoderCode(std::string_view text);

/** The number of a frame size's text in either spelling, NoResolution for an empty or unknown one. */
[[nodiscard]] int32_t resolutionCode(std::string_view text);
