#pragma once

#include <cstdint>
#include <string>

namespace sim {

/** What a parameter id of the recorder daemon stands for, as "event(3).trigger"; "unknown" for any other number. */
[[nodiscard]] std::string recorderIdName(std::uint32_t id);

}  // namespace sim
