#include <array>

#include "config/Framesizes.h"
#include "encoder/Encoder.h"
#include "encoder/StoredNumber.h"
#include "platform/zr_com.h"
#include "request/Log.h"

namespace {

// Commands to the image DSP, with one byte of value.
constexpr uint8_t kPassModeCommand = 241;
constexpr uint8_t kAspectRatioCommand = 242;

int32_t sendCommand(uint8_t command, int32_t value) {
  std::array<uint8_t, 12> frame = {command, static_cast<uint8_t>(value)};
  return zr_set_va_data(frame.data());
}

}  // namespace

int32_t Encoder::setPassMode(int32_t mode) {
  TMX_LOG(LOG_DEBUG, "passmod(%ld) ", static_cast<long>(mode));
  if (sendCommand(kPassModeCommand, mode) < 0) {
    TMX_LOG(LOG_ERR, "passmode send error(%m)");
    return kSendFailed;
  }
  return kDone;
}

int32_t Encoder::updatePassMode() {
  int32_t mode = 1;
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    const float rate = storedFloat(staged(channel, encode_row::FRAME_RATE));
    if ((rate == 30.0F || rate == 25.0F) && isActive(channel)) mode = 0;
  }
  return setPassMode(mode) < 0 ? kFailed : kDone;
}

int32_t Encoder::getAspectRatioStatus() {
  bool isWide = true;
  bool isNarrow = true;
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    if (!isActive(channel)) continue;
    const Framesize* size = findFramesize(staged(channel, encode_row::FRAME_SIZE));
    const bool isMpeg4 = staged(channel, encode_row::ENCTYPE_CH) == "mpeg4";
    isWide = isWide && size != nullptr && size->isWide() && !isMpeg4;
    isNarrow = isNarrow && size != nullptr && size->isNarrow();
  }
  if (isWide) {
    TMX_LOG(LOG_DEBUG, "current aspectratio(16:9) ");
    return kAspect16to9;
  }
  if (isNarrow) {
    TMX_LOG(LOG_DEBUG, "current aspectratio(4:3) ");
    return kAspect4to3;
  }
  TMX_LOG(LOG_ERR, "resolution combination error ");
  return kAspectMixed;
}

int32_t Encoder::setAspectRatioStatus() {
  if (sendCommand(kAspectRatioCommand, getAspectRatioStatus()) < 0) {
    TMX_LOG(LOG_ERR, "AspecRatio send error(%m)");
    return kFailed;
  }
  TMX_LOG(LOG_DEBUG, "AspecRatio send successed");
  return kDone;
}

int32_t Encoder::countHighRateChannels() {
  int32_t count = 0;
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    if (isActive(channel) && storedDouble(staged(channel, encode_row::FRAME_RATE)) > 15.0) ++count;
  }
  return count;
}
