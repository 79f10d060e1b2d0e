#include "encoder/RangeSetup.h"

#include "request/Log.h"

namespace {

bool recordOther(EncodeRangeData& range, const Config& config, int32_t attr, int32_t other) {
  const std::string framesize = config.getEncodeConfig(other - 1, encode_row::FRAME_SIZE);
  const std::string type = config.getEncodeConfig(other - 1, encode_row::ENCTYPE_CH);
  const std::string status = config.getEncodeConfig(other - 1, encode_row::ENC_STATUS);
  TMX_LOG(LOG_DEBUG, "status = %s // encoder = %s // reso = %s", status.c_str(), type.c_str(), framesize.c_str());
  TMX_LOG(LOG_DEBUG, "attrinfo[%ld][%ld]", static_cast<long>(attr), static_cast<long>(other));
  return range.SetEncoderInfo(other, type, framesize, status);
}

}  // namespace

int32_t encoderRangeInfoSetup(EncodeRangeData& range, const Config& config, const std::string& encoder,
                              const std::string& resolution, int32_t attr) {
  for (int32_t other = 1; other <= 3; ++other) {
    if (other != attr && !recordOther(range, config, attr, other)) return -1;
  }
  range.setAnalogOutPutOn(config.get(video_row::VIDEO_OUTPUT) == "on");
  TMX_LOG(LOG_DEBUG, "SetEncoder(%s,%s)", encoder.c_str(), "on");
  if (!range.SetEncoder(encoder, "on")) return -1;
  TMX_LOG(LOG_DEBUG, "range->SetResolution(%s)", resolution.c_str());
  return range.SetResolution(resolution) ? 0 : -1;
}
