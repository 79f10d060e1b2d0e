#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/Config.h"
#include "service/Daemon.h"

/**
 * The fixed multicast streams, numbered from 1: three of the encoder channels, one of the audio, one of the motion
 * metadata. Each is sent by a process of its own.
 */
namespace stream_destination {

/** Where a destination's settings are kept; only the first three have a rate. */
struct Rows {
  network_row::Row status;
  network_row::Row host;
  network_row::Row port;
  network_row::Row framerate = network_row::kCount;
};

inline constexpr std::array<Rows, 5> kRows = {{
    {network_row::DEST1, network_row::DEST1_HOST, network_row::DEST1_PORT, network_row::DEST1_FRAMERATE},
    {network_row::DEST2, network_row::DEST2_HOST, network_row::DEST2_PORT, network_row::DEST2_FRAMERATE},
    {network_row::DEST3, network_row::DEST3_HOST, network_row::DEST3_PORT, network_row::DEST3_FRAMERATE},
    {network_row::DEST4, network_row::DEST4_HOST, network_row::DEST4_PORT},
    {network_row::DEST5, network_row::DEST5_HOST, network_row::DEST5_PORT},
}};
inline constexpr int32_t kVideoDestinations = 3;
inline constexpr int32_t kAudio = 4;
inline constexpr int32_t kMetadata = 5;

[[nodiscard]] constexpr const Rows& rows(int32_t number) { return kRows.at(static_cast<size_t>(number - 1)); }

/** Whether an encoder makes streams of this type. */
[[nodiscard]] bool isEncoderType(std::string_view type);

/** Kilobits per second of pictures of so many kilobytes; a rate of -n is one picture every n seconds. */
[[nodiscard]] int32_t m_jpegBitrate(float rate, int32_t quality);

/** What a destination sends, by the stored settings: its type, and its rate in kilobits per second. */
struct Stream {
  std::string type;
  int32_t bitrate;
};
/** None, and logged, where the encoder channel has no type that can be sent. */
[[nodiscard]] std::optional<Stream> streamOf(const Config& config, int32_t number);

/** A live stream of the camera as the session daemon tells it, its rate in kilobits per second. */
struct LiveStream {
  std::string rate;
  std::string type;
  std::string protocol;
};
/** Whether a jpeg destination of 1 to 3 can be sent beside what is live: 20000 kilobits per second together. */
[[nodiscard]] bool hasBandwidth(const Config& config, int32_t number, std::span<const LiveStream> live);

/** The texts of the sender's command line. */
struct RtpdParams {
  std::string bitrate;
  std::string host;
  std::string port;
  std::string framerate;
  std::string device;
  std::string ttl;
  std::string tos;
};
/** None where a setting that the stream needs is empty. */
[[nodiscard]] std::optional<RtpdParams> m_setRtpdParams(const Config& config, int32_t number, const Stream& stream);

/** The sender of a destination, which can be stopped, and with its command line to start it. */
[[nodiscard]] Service sender(int32_t number);
[[nodiscard]] Service sender(int32_t number, const std::string& type, const RtpdParams& params, bool hasUserdata);

}  // namespace stream_destination
