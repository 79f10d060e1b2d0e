#include "encoder/EncodeCodes.h"

#include "config/Framesizes.h"

int32_t encoderCode(std::string_view text) {
  const Codec* codec = findCodec(text);
  return codec == nullptr ? encoder_code::NoEncoder : codec->code;
}

int32_t resolutionCode(std::string_view text) {
  using namespace resolution_code;
  const Framesize* size = findFramesize(text);
  if (size == nullptr) return NoResolution;
  switch (size->height) {
    case 1080:
      return R1920x1080;
    case 960:
      return R1280x960;
    case 720:
      return R1280x720;
    case 480:
      return R640x480;
    case 360:
      return R640x360;
    case 240:
      return R320x240;
    default:
      return NoResolution;
  }
}
