#pragma once

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <string_view>

namespace bench {

/** The address of a Unix socket; a path that is too long is cut. */
inline sockaddr_un addressOf(std::string_view path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

/** Reads so many bytes, waiting for them; false when the other side closes before. */
inline bool readAll(int fd, char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t got = read(fd, bytes, count);
    if (got <= 0) return false;
    bytes += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace bench
