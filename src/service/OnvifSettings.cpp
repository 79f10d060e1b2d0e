#include "service/OnvifSettings.h"

#include <mutex>
#include <utility>

#include "config/Config.h"

namespace {

std::mutex guard;
OnvifSettings settings;

OnvifChannel channelOf(const Config& config, int32_t channel) {
  const auto value = [&](encode_row::Row row) { return config.getEncodeConfig(channel, row); };
  return {.type = value(encode_row::ENCTYPE_CH),
          .framesize = value(encode_row::FRAME_SIZE),
          .framerate = value(encode_row::FRAME_RATE),
          .bitrate = value(encode_row::BITRATE),
          .quality = value(encode_row::QUALITY),
          .iframeInterval = value(encode_row::IFRAME_INTERVAL)};
}

}  // namespace

void OnvifSettings::publish() {
  const Config& config = *Config::getInstance();
  OnvifSettings present{.isOn = config.get(network_row::ONVIF_SERVER_STATUS) == "on",
                        .httpPort = config.get(network_row::HTTP_CONFIG_PORT),
                        .channels = {channelOf(config, 0), channelOf(config, 1), channelOf(config, 2)}};
  const std::lock_guard lock(guard);
  settings = std::move(present);
}

OnvifSettings OnvifSettings::published() {
  const std::lock_guard lock(guard);
  return settings;
}
