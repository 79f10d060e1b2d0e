#include <string_view>

#include "config/Framesizes.h"
#include "encoder/EncodeCodes.h"
#include "encoder/Encoder.h"
#include "encoder/StoredNumber.h"
#include "platform/zr_com.h"
#include "request/Log.h"

namespace {

constexpr int32_t kNoFormat = 0;

}  // namespace

bool Encoder::isOff(int32_t channel) {
  if (staged(channel, encode_row::ENC_STATUS) != "off") return false;
  TMX_LOG(LOG_DEBUG, "ch status(off)");
  return true;
}

int32_t Encoder::setConvertSetToSdk_Formattype(int32_t channel) {
  const std::string type = staged(channel, encode_row::ENCTYPE_CH);
  int32_t format = kNoFormat;
  if (staged(channel, encode_row::ENC_STATUS) == "off") {
    TMX_LOG(LOG_DEBUG, "ch(%ld) status(off)", static_cast<long>(channel));
  } else if (const Codec* known = findCodec(type); known != nullptr) {
    format = known->format;
  }
  TMX_LOG(LOG_DEBUG, "encoder set type(%s:%ld)", type.c_str(), static_cast<long>(format));
  if (zr_set_video_enc_format(channel, format) < 0) {
    TMX_LOG(LOG_ERR, "encoder set  format error(%ld:%ld)", static_cast<long>(channel), static_cast<long>(format));
    return kFailed;
  }
  return kDone;
}

int32_t Encoder::setConvertSetToSdk_Resolution(int32_t channel) {
  if (isOff(channel)) return kDone;
  const std::string type = staged(channel, encode_row::ENCTYPE_CH);
  const std::string text = staged(channel, encode_row::FRAME_SIZE);
  TMX_LOG(LOG_DEBUG, "ch(%ld) status(%s)", static_cast<long>(channel), staged(channel, encode_row::ENC_STATUS).c_str());
  TMX_LOG(LOG_DEBUG, "Reso:etype (%s) reso(%s)", type.c_str(), text.c_str());
  if (findCodec(type) == nullptr) {
    TMX_LOG(LOG_ERR, "unknown encode type ");
    return kFailed;
  }
  const Framesize* size = findFramesize(text);
  if (size == nullptr) {
    TMX_LOG(LOG_ERR, "unknown framesize");
    return kFailed;
  }
  TMX_LOG(LOG_DEBUG, "SetReso[ ch(%ld) w(%ld) h(%ld)]", static_cast<long>(channel), static_cast<long>(size->width),
          static_cast<long>(size->height));
  if (zr_set_video_resolution(channel, size->width, size->height) < 0) {
    TMX_LOG(LOG_ERR, "set(%ld) error(%m)", static_cast<long>(channel));
    return kFailed;
  }
  return kDone;
}

int32_t Encoder::setConvertSetToSdk_Framerate(int32_t channel) {
  if (isOff(channel)) return kDone;
  if (findCodec(staged(channel, encode_row::ENCTYPE_CH)) == nullptr) {
    TMX_LOG(LOG_ERR, "unknown encodetype ");
    return kFailed;
  }
  const std::string text = staged(channel, encode_row::FRAME_RATE);
  const int32_t rate = cutToWhole(storedFloat(text));
  TMX_LOG(LOG_DEBUG, "write in(%s) sdkset(%ld) ", text.c_str(), static_cast<long>(rate));
  if (zr_set_video_framerate(channel, rate) < 0) {
    TMX_LOG(LOG_ERR, "set(%ld) error(%m)", static_cast<long>(channel));
    return kFailed;
  }
  return kDone;
}

int32_t Encoder::setConvertSetToSdk_Cbrmode(int32_t channel) {
  if (isOff(channel)) return kDone;
  const std::string type = staged(channel, encode_row::ENCTYPE_CH);
  const Codec* known = findCodec(type);
  if (known == nullptr) {
    TMX_LOG(LOG_ERR, "etype(%s) ", type.c_str());
    return kFailed;
  }
  return known->isStream ? setStreamMode(channel) : setJpegMode(channel);
}

int32_t Encoder::setJpegMode(int32_t channel) {
  const std::string type = staged(channel, encode_row::ENCTYPE_CH);
  const std::string word = staged(channel, encode_row::CBR_MODE);
  const int32_t mode = word == "AFS" || word == "afs" ? 1 : 0;
  const int32_t quality = storedInteger(staged(channel, encode_row::QUALITY));
  TMX_LOG(LOG_DEBUG, "etype(%s)cbr(%ld)quality(%ld) ", type.c_str(), static_cast<long>(mode),
          static_cast<long>(quality));
  const bool isModeSet = zr_set_video_cbr_mode(channel, mode) >= 0;
  const bool isSizeSet = zr_set_video_filesize(channel, quality) >= 0;
  return isModeSet && isSizeSet ? kDone : kFailed;
}

int32_t Encoder::setStreamMode(int32_t channel) {
  const std::string type = staged(channel, encode_row::ENCTYPE_CH);
  const std::string bitrate = staged(channel, encode_row::BITRATE);
  // Lower case only, unlike jpeg: "CBR" runs as vbr.
  const int32_t mode = staged(channel, encode_row::CBR_MODE) == "cbr" ? 1 : 0;
  const int32_t kilobits = storedInteger(bitrate) / 1000;
  TMX_LOG(LOG_DEBUG, "etype(%s)cbr(%ld) ", type.c_str(), static_cast<long>(mode));
  const bool isModeSet = zr_set_video_cbr_mode(channel, mode) >= 0;
  if (!isModeSet) TMX_LOG(LOG_ERR, "vset(%ld) error(%m)", static_cast<long>(channel));
  TMX_LOG(LOG_DEBUG, "ch(%ld) type(%s) brate(%ld:base(%s)) ", static_cast<long>(channel), type.c_str(),
          static_cast<long>(kilobits), bitrate.c_str());
  const bool isRateSet = zr_set_video_bitrate(channel, kilobits) >= 0;
  if (!isRateSet) TMX_LOG(LOG_ERR, "brate(%ld) error(%m)", static_cast<long>(channel));
  return isModeSet && isRateSet ? kDone : kFailed;
}

int32_t Encoder::setConvertSetToSdk_IframeInterval(int32_t channel) {
  if (isOff(channel)) return kDone;
  const Codec* known = findCodec(staged(channel, encode_row::ENCTYPE_CH));
  if (known == nullptr) return kFailed;
  if (!known->isStream) return kDone;
  if (zr_set_video_i_interval(channel, storedInteger(staged(channel, encode_row::IFRAME_INTERVAL))) < 0) {
    TMX_LOG(LOG_ERR, "i_interval sdk_controler error");
    return kFailed;
  }
  return kDone;
}
