#pragma once

#include <array>
#include <string>

/** The settings of one encoder channel, as they are stored. */
struct OnvifChannel {
  std::string type;
  std::string framesize;
  std::string framerate;
  std::string bitrate;  ///< bits per second
  std::string quality;  ///< kilobytes
  std::string iframeInterval;

  friend bool operator==(const OnvifChannel&, const OnvifChannel&) = default;
};

/**
 * What the ONVIF service runs with. It is started by a thread of its own, which has no part in the stores: the main
 * thread publishes a copy whenever the service is to begin, to end, or to run with other settings.
 */
struct OnvifSettings {
  bool isOn = false;
  std::string httpPort;
  std::array<OnvifChannel, 3> channels;

  /** Takes what the committed image holds now. */
  static void publish();
  /** What was published last; nothing is on before. */
  [[nodiscard]] static OnvifSettings published();

  friend bool operator==(const OnvifSettings&, const OnvifSettings&) = default;
};
