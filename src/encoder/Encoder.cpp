#include "encoder/Encoder.h"

#include <utility>

#include "platform/zr_com.h"
#include "request/Log.h"

namespace {

// Actions of zr_set_video_encoder_ctl.
constexpr int32_t kStop = 0;
constexpr int32_t kStart = 2;

/** A setting that the recorder is told, with its parameter id for each channel. */
struct RecorderSetting {
  encode_row::Row row;
  std::array<int32_t, Encoder::kChannels> ids;
};

constexpr std::array<RecorderSetting, 5> kRecorderSettings = {{
    {encode_row::FRAME_SIZE, {0x501000, 0x502000, 0x503000}},
    {encode_row::FRAME_RATE, {0x511000, 0x512000, 0x513000}},
    {encode_row::IFRAME_INTERVAL, {0x521000, 0x522000, 0x523000}},
    {encode_row::BITRATE, {0x541000, 0x542000, 0x543000}},
    {encode_row::ENCTYPE_CH, {0x531000, 0x532000, 0x533000}},
}};

/** The recorder knows no status: a channel that is off has the type "off". */
std::string recorderValue(const Config& config, int32_t channel, encode_row::Row row) {
  const bool isOff = config.getEncodeConfig(channel, encode_row::ENC_STATUS) == "off";
  return row == encode_row::ENCTYPE_CH && isOff ? "off" : config.getEncodeConfig(channel, row);
}

}  // namespace

Encoder::Encoder(const Config& config, ParamPitcher recorder) : m_config(&config), m_recorder(std::move(recorder)) {}

int32_t Encoder::loadAll() {
  // A channel that cannot be set is logged; it does not keep the camera from starting.
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    for (const auto convert : kConversions)
      static_cast<void>(convert(channel));
  }
  static_cast<void>(setAspectRatioStatus());
  return restart();
}

int32_t Encoder::restart() {
  std::array<long, kChannels> states{};
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    const std::string status = staged(channel, encode_row::ENC_STATUS);
    const bool isStarted = status != "off";
    TMX_LOG(LOG_DEBUG, " encoder action(%ld:%s)", static_cast<long>(channel), status.c_str());
    const int32_t result = zr_set_video_encoder_ctl(channel, isStarted ? kStart : kStop);
    states[static_cast<std::size_t>(channel)] = result < 0 ? -1 : static_cast<long>(isStarted);
  }
  TMX_LOG(LOG_INFO, " encode start status[1:%ld,2:%ld,3:%ld](-1:err,0:off,1:on)", states[0], states[1], states[2]);
  return kDone;
}

int32_t Encoder::SetEncoder() const {
  TMX_LOG(LOG_DEBUG, "size = %ld", static_cast<long>(kRecorderSettings.size()));
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    for (std::size_t i = 0; i < kRecorderSettings.size(); ++i) {
      const RecorderSetting& setting = kRecorderSettings[i];
      const std::string value = recorderValue(*m_config, channel, setting.row);
      TMX_LOG(LOG_DEBUG, "i= %ld, j = %ld, data = %s", static_cast<long>(channel), static_cast<long>(i), value.c_str());
      // Whether a single setting arrived is not asked: the result is that of the closing command.
      static_cast<void>(m_recorder.putString(setting.ids[static_cast<std::size_t>(channel)], value));
    }
  }
  return m_recorder.putEncoderChange();
}
