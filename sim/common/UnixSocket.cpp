#include "sim/common/UnixSocket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

namespace sim {

namespace {

constexpr int backlog = 64;

std::optional<sockaddr_un> addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) {
    errno = ENAMETOOLONG;
    return std::nullopt;
  }
  std::ranges::copy(path, address.sun_path);
  return address;
}

const sockaddr* generic(const sockaddr_un& address) { return reinterpret_cast<const sockaddr*>(&address); }

}  // namespace

Descriptor::~Descriptor() {
  if (m_number >= 0) ::close(m_number);
}

Descriptor listenAt(const std::string& path) {
  const auto address = addressOf(path);
  Descriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!address || !listener.isOpen()) return {};
  ::unlink(path.c_str());
  if (::bind(listener.number(), generic(*address), sizeof(*address)) != 0) return {};
  if (::listen(listener.number(), backlog) != 0) return {};
  return listener;
}

Descriptor acceptFrom(const Descriptor& listener) {
  return Descriptor(::accept4(listener.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
}

Descriptor connectTo(const std::string& path, int flags) {
  const auto address = addressOf(path);
  if (!address) return {};
  Descriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
  if (!connection.isOpen()) return {};
  if (::connect(connection.number(), generic(*address), sizeof(*address)) != 0) return {};
  return connection;
}

}  // namespace sim
