// Whether the staged values go together.

#include <algorithm>
#include <optional>
#include <string>

#include "config/Config.h"
#include "encode/Status.h"
#include "encoder/EncodeCodes.h"
#include "encoder/Encoder.h"
#include "encoder/QualityTable.h"
#include "encoder/StoredNumber.h"
#include "request/Log.h"

namespace Encode {
namespace {

std::string staged(int32_t channel, int32_t row) {
  return CUserConfig::getInstance()->getEncodeConfig(channel - 1, row);
}

/** Brings all channels back to their files; the refusal, negated, or -500 when they could not be read. */
int32_t dropStaged(int32_t refusal) {
  const bool isReloaded = Config::getInstance()->reloadEncodeConfig() == Config::kDone;
  static_cast<void>(CUserConfig::getInstance()->reloadEncodeConfig());
  return isReloaded ? -refusal : -status::kInternalError;
}

/** The modes of jpeg channels and of the stream channels, in both cases of letters. */
constexpr Words kJpegModes{"vfs", "VFS", "afs", "AFS"};
constexpr Words kStreamModes{"cbr", "CBR", "vbr", "VBR"};

bool fitsType(const std::string& mode, const std::string& type) {
  const Codec* codec = findCodec(type);
  if (codec == nullptr) return true;
  return (codec->isStream ? kStreamModes : kJpegModes).find(mode).has_value();
}

}  // namespace

int32_t CStatus::m_iframeConditionCheck() {
  for (int32_t channel = 1; channel <= kChannels; ++channel) {
    if (m_checkIframeIntervalRange(channel) < 0) return dropStaged(status::kInvalidRange);
    if (m_checkMpeg4IframeInterval(channel) < 0) return dropStaged(status::kPreconditionFailed);
  }
  return 0;
}

int32_t CStatus::m_checkIframeIntervalRange(int32_t channel) {
  // Not "jpeg": the interval of every channel is checked, whatever its type and whether it is on.
  if (staged(channel, encode_row::ENCTYPE_CH) == "jpge") return 0;
  const std::string text = staged(channel, encode_row::IFRAME_INTERVAL);
  const int32_t interval = storedInteger(text);
  if (interval >= 1 && interval <= 255) return 0;
  TMX_LOG(LOG_WARNING, "range out : channel(%ld) iframeinterval(%s)", static_cast<long>(channel), text.c_str());
  return -1;
}

int32_t CStatus::m_checkMpeg4IframeInterval(int32_t channel) {
  constexpr int32_t kLongest = 30;
  if (staged(channel, encode_row::ENCTYPE_CH) != "mpeg4") return 0;
  const std::string text = staged(channel, encode_row::IFRAME_INTERVAL);
  if (storedInteger(text) <= kLongest) return 0;
  TMX_LOG(LOG_WARNING, "mpeg4 range out ::channel(%ld) iframeinterval(%s)", static_cast<long>(channel), text.c_str());
  return -1;
}

int32_t CStatus::m_encodeFramesizeConditionCheck() {
  if (Encoder::getAspectRatioStatus() < 0) {
    const int32_t result = dropStaged(status::kPreconditionFailed);
    if (result == -status::kPreconditionFailed) TMX_LOG(LOG_ERR, "[framesize condition error] ");
    return result;
  }
  Config& config = *Config::getInstance();
  int32_t failures = 0;
  bool isReloaded = true;
  for (int32_t channel = 1; channel <= kChannels; ++channel) {
    if (m_followedQualityforFramesize(channel) < 0) {
      ++failures;
      if (config.reloadEachChannelEncodeConfig(channel) < 0) isReloaded = false;
      static_cast<void>(CUserConfig::getInstance()->reloadEachChannelEncodeConfig(channel));
      continue;
    }
    const std::string quality = staged(channel, encode_row::QUALITY);
    config.setEncodeConfig(channel - 1, encode_row::QUALITY, quality);
    TMX_LOG(LOG_DEBUG, "cov qauality(%ld:%s)", static_cast<long>(channel), quality.c_str());
  }
  if (!isReloaded) return -status::kInternalError;
  if (failures == 0) return 0;
  TMX_LOG(LOG_ERR, "[framesize conbination error(%ld)] ", static_cast<long>(failures));
  return -status::kPreconditionFailed;
}

/** Pulls a jpeg channel's picture size into the limits of its frame size, in the staging image. */
int32_t CStatus::m_followedQualityforFramesize(int32_t channel) {
  if (staged(channel, encode_row::ENCTYPE_CH) != "jpeg") return 0;
  const std::string mode = staged(channel, encode_row::CBR_MODE);
  TMX_LOG(LOG_DEBUG, "quality  mode (%s) ", mode.c_str());
  const std::optional<std::string> quality =
      qualityWithinLimits(staged(channel, encode_row::FRAME_SIZE), staged(channel, encode_row::QUALITY));
  if (quality) {
    CUserConfig::getInstance()->setEncodeConfig(channel - 1, encode_row::QUALITY, *quality);
    return 0;
  }
  if (mode != "vfs") return 0;
  TMX_LOG(LOG_ERR, "[QualityTable error(%ld)] ", -1L);
  return -1;
}

int32_t CStatus::m_encodeCbrmodeConditionCheck() {
  int32_t errors = 0;
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    const auto text = [channel](int32_t row) { return Config::getInstance()->getEncodeConfig(channel, row); };
    const std::string status = text(encode_row::ENC_STATUS);
    const std::string type = text(encode_row::ENCTYPE_CH);
    const std::string mode = text(encode_row::CBR_MODE);
    if (status != "on" || fitsType(mode, type)) continue;
    TMX_LOG(LOG_ERR, "status(%s),etype(%s) ch(%ld) cbr(%s)", status.c_str(), type.c_str(), static_cast<long>(channel),
            mode.c_str());
    ++errors;
  }
  if (errors == 0) return 0;
  const int32_t result = m_reloadEncodeChannels();
  if (result == -status::kPreconditionFailed) {
    TMX_LOG(LOG_ERR, "[cbrmode error(%ld)] ", static_cast<long>(errors));
  }
  return result;
}

/** Brings each channel back to its file: -412, or -500 when one of them could not be read. */
int32_t CStatus::m_reloadEncodeChannels() {
  bool isReloaded = true;
  for (int32_t channel = 1; channel <= kChannels; ++channel) {
    if (Config::getInstance()->reloadEachChannelEncodeConfig(channel) < 0) isReloaded = false;
    if (CUserConfig::getInstance()->reloadEachChannelEncodeConfig(channel) < 0) isReloaded = false;
  }
  return isReloaded ? -status::kPreconditionFailed : -status::kInternalError;
}

}  // namespace Encode
