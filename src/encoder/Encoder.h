#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "config/Config.h"
#include "service/ParamPitcher.h"

/**
 * The bridge from the texts of the encode channels to the camera library: formats, rates and sizes, start and stop of
 * the encoders, and the two things of the picture that follow from the channels, its aspect ratio and the image
 * processor's pass mode. All of it reads the staging image anew at each call. SetEncoder alone reads the store that the
 * object was built over, and tells the settings to the recorder.
 *
 * Whoever needs one builds it; it keeps no state. Channels are 0 to 2. Results are 0 or more, and below 0 when the
 * library refused or a text has no meaning, which is logged; what was converted before a failure stays.
 */
class Encoder {
 public:
  static constexpr int32_t kDone = 0;
  static constexpr int32_t kFailed = -1;
  static constexpr int32_t kSendFailed = -3;

  static constexpr int32_t kChannels = 3;

  // Aspect states.
  static constexpr int32_t kAspect16to9 = 0;
  static constexpr int32_t kAspect4to3 = 1;
  static constexpr int32_t kAspectMixed = -1;

  explicit Encoder(const Config& config, ParamPitcher recorder = ParamPitcher());

  // One setting of one channel to the encoder (Conversions.cpp). A channel that is off is left alone, with success,
  // but for its format, which becomes 0.
  [[nodiscard]] static int32_t setConvertSetToSdk_Formattype(int32_t channel);
  [[nodiscard]] static int32_t setConvertSetToSdk_Resolution(int32_t channel);
  [[nodiscard]] static int32_t setConvertSetToSdk_Framerate(int32_t channel);
  [[nodiscard]] static int32_t setConvertSetToSdk_Cbrmode(int32_t channel);
  [[nodiscard]] static int32_t setConvertSetToSdk_IframeInterval(int32_t channel);
  /** All of them, in the order in which an encoder takes them. */
  static constexpr std::array kConversions = {&setConvertSetToSdk_Formattype, &setConvertSetToSdk_Resolution,
                                              &setConvertSetToSdk_Framerate, &setConvertSetToSdk_Cbrmode,
                                              &setConvertSetToSdk_IframeInterval};

  /** All conversions of all channels, aspect ratio and restart, as the start needs them; the result of restart. */
  static int32_t loadAll();
  /** Starts the channels that are on and stops the others; 0 even if one of them fails. */
  static int32_t restart();

  // The picture (Picture.cpp).
  [[nodiscard]] static int32_t setPassMode(int32_t mode);
  /** Pass mode 0 when an active channel runs at exactly 30 or 25 frames per second, else 1. */
  [[nodiscard]] static int32_t updatePassMode();
  /** The aspect that all active channels share; 16:9 when none is active. */
  [[nodiscard]] static int32_t getAspectRatioStatus();
  [[nodiscard]] static int32_t setAspectRatioStatus();
  /** How many active channels run above 15 frames per second. */
  [[nodiscard]] static int32_t countHighRateChannels();

  /** Tells every channel's settings to the recorder and has it restart: 200, or -500 when the last command failed. */
  int32_t SetEncoder() const;

 private:
  static std::string staged(int32_t channel, int32_t row) {
    return CUserConfig::getInstance()->getEncodeConfig(channel, row);
  }
  static bool isActive(int32_t channel) { return staged(channel, encode_row::ENC_STATUS) == "on"; }
  static bool isOff(int32_t channel);
  static int32_t setJpegMode(int32_t channel);
  static int32_t setStreamMode(int32_t channel);

  const Config* m_config;  ///< not owned
  ParamPitcher m_recorder;
};
