#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "local/FileDescriptor.h"

/** How far a message to a neighbouring daemon came. */
enum class Sending { Done, NoSocket, NotConnected, NotWritten };

/**
 * Connects a socket to the daemon's path and writes the whole message in one call. The socket, connected or not, is the
 * caller's.
 */
[[nodiscard]] Sending sendMessage(FileDescriptor* socket, const std::string& path, std::span<const uint8_t> message);
