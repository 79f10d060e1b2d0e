#pragma once

#include <cstdint>
#include <vector>

#include "encode/CEncodeApiBase.h"
#include "tree/Node.h"

class CameraDSP;

namespace Encode {

/**
 * The state of a channel, and with "save" the commit of all that is staged, of all three channels together.
 *
 * Staged values stand in both images. The commit reads the saved state back into the staging image to see whether
 * anything is new, and copies the committed image over it: from there on both agree, and the checks and the encoder
 * bridge read the new values. A check that fails drops what was staged, with the values of the files; a failure behind
 * the checks keeps it. Streams that were stopped for the commit come back either way.
 *
 * The steps give 0 or more, or a negated status. Status.cpp has the commit, StatusChecks.cpp decides whether the staged
 * values go together, StatusApply.cpp brings them to the encoders and to what depends on them.
 */
struct CStatus : CEncodeApiBase {
  static int32_t save(Request& request);
  static constexpr Rule rule{.commands = {{{.word = "save", .run = save, .stops = "the streams"}}},
                             .place = ofChannel(encode_row::ENC_STATUS)};

 private:
  /** The numbers of network destinations. */
  using Destinations = std::vector<int32_t>;

  [[nodiscard]] static int32_t m_commit(bool isOnvifUser);

  [[nodiscard]] static bool m_isEncodeConfigChanged();
  [[nodiscard]] static Destinations m_stopDestinations();
  static void m_restartDestinations(const Destinations& destinations);
  [[nodiscard]] static int32_t m_saveEncodeConfig();
  static void m_stopOnvifService();
  [[nodiscard]] static int32_t m_restartEncoders();

  // Channels are 1 to 3 here.
  [[nodiscard]] static int32_t m_iframeConditionCheck();
  [[nodiscard]] static int32_t m_checkIframeIntervalRange(int32_t channel);
  [[nodiscard]] static int32_t m_checkMpeg4IframeInterval(int32_t channel);
  [[nodiscard]] static int32_t m_encodeFramesizeConditionCheck();
  [[nodiscard]] static int32_t m_followedQualityforFramesize(int32_t channel);
  [[nodiscard]] static int32_t m_encodeCbrmodeConditionCheck();
  [[nodiscard]] static int32_t m_reloadEncodeChannels();

  static void m_encodeHighRateConbinationSet();
  static void m_followAnalogOutput();
  [[nodiscard]] static int32_t m_encodeSetDataToSdkcontroler();
  [[nodiscard]] static int32_t m_convertChannels();
  static void m_resetBlcArea(CameraDSP& dsp);
};

}  // namespace Encode
