#include "encoder/EncodeCodes.h"

#include "service/Words.h"

namespace {

constexpr Words kEncoders{
    Word{"jpeg", encoder_code::Jpeg},
    Word{"h264baseline", encoder_code::H264Baseline},
    Word{"h264high", encoder_code::H264High},
    Word{"mpeg4", encoder_code::Mpeg4},
};

constexpr Words kResolutions{
    Word{"1920x1080", resolution_code::R1920x1080}, Word{"1280x960", resolution_code::R1280x960},
    Word{"quadvga", resolution_code::R1280x960},    Word{"1280x720", resolution_code::R1280x720},
    Word{"640x480", resolution_code::R640x480},     Word{"vga", resolution_code::R640x480},
    Word{"640x360", resolution_code::R640x360},     Word{"320x240", resolution_code::R320x240},
    Word{"qvga", resolution_code::R320x240},
};

}  // namespace

int32_t encoderCode(std::string_view text) { return kEncoders.find(text).value_or(encoder_code::NoEncoder); }

int32_t resolutionCode(std::string_view text) {
  return kResolutions.find(text).value_or(resolution_code::NoResolution);
}
