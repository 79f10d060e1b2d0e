#pragma once

#include <cstdint>
#include <string>

#include "tree/Rule.h"

/** The daemon that keeps the camera's time by a time server. */
namespace ntp_client {

/** Rule::fetch of the server that the address client brought. */
[[nodiscard]] int32_t fetchServer(const Request& request, std::string& text);

/** Takes the staged rows over, and starts, stops or wakes the daemon, whatever that asks for; 0 or -500. */
[[nodiscard]] int32_t restart(Request& request);

}  // namespace ntp_client
