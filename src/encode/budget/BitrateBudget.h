#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "config/Config.h"
#include "encode/budget/BitrateLimit.h"

/** One live session as the session daemon tells it. */
struct SessionSlot {
  std::string channel;  ///< of the encoders, "0" to "2"
  std::string rate;     ///< kilobits per second
  std::string type;     ///< of the encoder
};

/**
 * The budget of the live sessions: all of them together may take kLimitKilobits.
 *
 * A check takes the sessions and the settings of the channels as they are, puts the new value in the place of the
 * channel's own (0 to 2), and adds up what all sessions would take. 0 when that fits, else -1.
 */
namespace bitrate_budget {

inline constexpr int32_t kSessionSlots = 22;

/** A new bit rate, in bits per second; it changes only the sessions of a channel that is no jpeg channel. */
[[nodiscard]] int32_t checkForStream(std::span<const SessionSlot> sessions, const Config& config, int32_t newBits,
                                     int32_t channel);

/** A new picture size in kilobytes; it changes only the jpeg sessions of the channel. */
[[nodiscard]] int32_t checkForJpeg(std::span<const SessionSlot> sessions, const Config& config, int32_t newQuality,
                                   int32_t channel);

/**
 * The bits per second that one unit of the configured rate stands for: the configured rate itself, or its multiple that
 * the sessions take when they take more than twice of it. 0 when the configured rate is below one kilobit.
 */
[[nodiscard]] int64_t encoderReplaceforOverRate(int64_t sessionKilobits, int64_t baseBits);

}  // namespace bitrate_budget
