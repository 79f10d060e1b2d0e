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

/** The number of an encoder's text, NoEncoder for an empty or unknown one. */
[[nodiscard]] int32_t encoderCode(std::string_view text);

/** The number of a frame size's text in either spelling, NoResolution for an empty or unknown one. */
[[nodiscard]] int32_t resolutionCode(std::string_view text);
