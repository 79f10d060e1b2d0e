#pragma once

#include <string>

#include "local/FileDescriptor.h"

namespace tmx {

/**
 * Starts the process that opens connections to the daemon's socket, which only root may. It keeps root's number and no
 * capability, and reads nothing but the one byte that asks for a connection. It ends when the result is closed.
 *
 * @param name of the process, at most 15 characters.
 * @return where requestConnection() and takeConnection() go; invalid with errno set.
 */
[[nodiscard]] FileDescriptor startOpener(const std::string& socket, const char* name);

/** Asks for one connection; false when the opener has gone. */
[[nodiscard]] bool requestConnection(int opener);

/** The connection asked for, or an invalid descriptor and why in errno: EPIPE when the opener has gone. */
[[nodiscard]] FileDescriptor takeConnection(int opener);

}  // namespace tmx
