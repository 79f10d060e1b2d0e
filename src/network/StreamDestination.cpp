#include "network/StreamDestination.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "encoder/StoredNumber.h"
#include "request/Log.h"

namespace stream_destination {
namespace {

constexpr int64_t kLimitKilobits = 20000;
constexpr std::string_view kJpeg = "jpeg";

bool isOn(const Config& config, int32_t number) { return config.get(rows(number).status) == "on"; }

bool contains(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

void append(std::vector<std::string>& arguments, std::initializer_list<std::string> more) {
  arguments.insert(arguments.end(), more);
}

}  // namespace

bool isEncoderType(std::string_view type) {
  constexpr std::string_view kTypes[] = {kJpeg, "mpeg4", "h264baseline", "h264high"};
  return std::ranges::find(kTypes, type) != std::ranges::end(kTypes);
}

int32_t m_jpegBitrate(float rate, int32_t quality) {
  if (rate == 0) return 0;
  const float pictures = std::abs(std::trunc(rate));
  const auto kilobytes = static_cast<float>(quality);
  return cutToWhole(rate < 0 ? kilobytes / pictures * 8 : kilobytes * pictures * 8);
}

std::optional<Stream> streamOf(const Config& config, int32_t number) {
  if (number == kAudio) return Stream{"ulaw", 64};
  if (number == kMetadata) return Stream{"onvif_motion", 0};
  const int32_t channel = number - 1;
  const std::string type = config.getEncodeConfig(channel, encode_row::ENCTYPE_CH);
  if (!isEncoderType(type)) {
    TMX_LOG(LOG_ERR, "dest ch is invalid[%ld]", static_cast<long>(number));
    return std::nullopt;
  }
  const int32_t baseRate = storedInteger(config.getEncodeConfig(channel, encode_row::BITRATE));
  const int32_t bitrate = type == kJpeg
                              ? m_jpegBitrate(storedFloat(config.get(rows(number).framerate)),
                                              storedInteger(config.getEncodeConfig(channel, encode_row::QUALITY)))
                              : baseRate / 1000;
  TMX_LOG(LOG_DEBUG, "enctype = %s // bitrate = %ld(baserate:%ld) // chnum = %ld", type.c_str(),
          static_cast<long>(bitrate), static_cast<long>(baseRate), static_cast<long>(channel));
  return Stream{type, bitrate};
}

bool hasBandwidth(const Config& config, int32_t number, std::span<const LiveStream> live) {
  const std::optional<Stream> stream = streamOf(config, number);
  int64_t own = stream ? stream->bitrate : 0;
  int64_t sum = 0;
  bool isUdpLive = false;
  for (const LiveStream& session : live) {
    if (session.rate == "0" || !isEncoderType(session.type)) continue;
    sum += storedInteger(session.rate);
    isUdpLive = isUdpLive || session.protocol == "udp";
  }

  int32_t other = 1;
  while (other <= kVideoDestinations && (other == number || !isOn(config, other)))
    ++other;
  const bool isOtherOn = other <= kVideoDestinations;
  // A destination is a session of its own, unless the daemon counts none.
  if (isOtherOn && !isUdpLive) {
    const std::optional<Stream> sent = streamOf(config, other);
    sum += sent ? sent->bitrate : 0;
    if (sent && sent->type == kJpeg) own = sent->bitrate;
  }
  return sum + own <= kLimitKilobits || (sum == 0 && !isOtherOn);
}

std::optional<RtpdParams> m_setRtpdParams(const Config& config, int32_t number, const Stream& stream) {
  const Rows& row = rows(number);
  RtpdParams params{
      .bitrate = std::to_string(stream.bitrate),
      .host = config.get(row.host),
      .port = config.get(row.port),
      .framerate = stream.type == kJpeg ? config.get(row.framerate) : "",
      .device = "eth0",
      .ttl = config.get(network_row::IF1_TTL_MULTICAST),
      .tos = config.get(network_row::IF1_DSCP_VIDEO),
  };
  const bool lacksRate = stream.type == kJpeg && params.framerate.empty();
  if (params.host.empty() || params.port.empty() || lacksRate) return std::nullopt;
  return params;
}

Service sender(int32_t number) {
  return {.program = "/bin/rtpd", .pidFile = "/var/run/rtpd_channel" + std::to_string(number - 1) + ".pid"};
}

Service sender(int32_t number, const std::string& type, const RtpdParams& params, bool hasUserdata) {
  const bool isH264 = contains(type, "h264");
  const bool isMedia = number != kMetadata;
  std::string dataType = isH264 ? "h264" : type;
  if (isMedia) dataType += "(" + std::to_string(number - 1) + ")";

  Service rtpd = sender(number);
  std::vector<std::string>& arguments = rtpd.arguments;
  append(arguments, {"--datatype", dataType});
  if (isMedia) append(arguments, {"--bitrate", params.bitrate});
  append(arguments, {"--host", params.host, "--dstport", params.port, "--ttl", params.ttl, "--tos", params.tos,
                     "--device", params.device});
  if (isMedia && !params.framerate.empty()) append(arguments, {"--framerate", params.framerate});
  if (isMedia) append(arguments, {"--timeout", "0"});
  append(arguments, {"--protocol", "rtp_udp"});
  if (hasUserdata) return rtpd;
  if (isH264) {
    append(arguments, {"--disable-stap", "--disable-h264user"});
  } else if (contains(type, kJpeg)) {
    append(arguments, {"--enable-rfc2435"});
  }
  return rtpd;
}

}  // namespace stream_destination
