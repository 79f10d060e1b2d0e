#pragma once

#include <cstdint>

namespace bitrate_budget {

/** What all live sessions together may take, in kilobits per second. */
inline constexpr int64_t kLimitKilobits = 20000;

}  // namespace bitrate_budget
