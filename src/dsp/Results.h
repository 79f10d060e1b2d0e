#pragma once

#include <cstdint>

namespace dsp {

/** What an operation of CameraDSP returns. */
inline constexpr int32_t kDone = 0;
inline constexpr int32_t kUnchanged = 1;  ///< done; the value is the one already kept
inline constexpr int32_t kBadArgument = -1;
inline constexpr int32_t kReadFailed = -2;
inline constexpr int32_t kSendFailed = -3;
inline constexpr int32_t kOutOfRange = -6;
inline constexpr int32_t kNotUnderstood = -7;  ///< or not allowed on this model
inline constexpr int32_t kRefused = -8;        ///< in the present state

}  // namespace dsp
