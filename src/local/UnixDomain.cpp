#include "local/UnixDomain.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>

#include "local/FileDescriptor.h"
#include "request/Log.h"

namespace {

constexpr const char* kRequestSocket = "/tmp/request";
constexpr int kBacklog = 5;

struct SocketAddress {
  sockaddr_un address{};
  socklen_t length;

  /** A path too long for an address is cut. */
  explicit SocketAddress(const std::string& path) {
    const size_t count = std::min(path.size(), sizeof address.sun_path);
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, count);
    length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + count);
  }

  [[nodiscard]] const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address); }
};

int32_t makeAsynchronous(int32_t server) {
  const int flags = fcntl(server, F_GETFL);
  if (flags < 0) {
    TMX_LOG(LOG_ERR, "fcntrl error(%m)");
    return flags;
  }
  const int result = fcntl(server, F_SETFL, flags | O_NONBLOCK | O_ASYNC);
  if (result < 0) TMX_LOG(LOG_ERR, "fcntl F_SETFL, FNDELAY|FASYNC error(%m)");
  return result;
}

}  // namespace

int32_t UnixDomain::createServSocket(const std::string& path) {
  FileDescriptor server(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!server.isValid()) {
    TMX_LOG(LOG_ERR, "socket error(%m)");
    return -1;
  }
  unlink(path.c_str());
  if (path != kRequestSocket) {
    const int32_t result = makeAsynchronous(server.get());
    if (result < 0) return result;
  }
  const SocketAddress address(path);
  if (bind(server.get(), address.get(), address.length) < 0) {
    TMX_LOG(LOG_ERR, "bind error(%m)");
    return -1;
  }
  if (listen(server.get(), kBacklog) < 0) {
    TMX_LOG(LOG_ERR, "listen error(%m)");
    return -1;
  }
  return server.release();
}

int32_t UnixDomain::acceptClient(int32_t server) {
  sockaddr_un address{};
  socklen_t length = sizeof address;
  const int client = accept4(server, reinterpret_cast<sockaddr*>(&address), &length, SOCK_CLOEXEC);
  static bool hasFailed = false;
  if (client < 0 && errno == EINTR) return -1;
  if (client < 0) {
    constexpr useconds_t kPause = 100'000;  // no descriptor is left, say: asking again at once would only spin
    if (!hasFailed) TMX_LOG(LOG_ERR, "accept error(%m)");
    usleep(kPause);
  }
  hasFailed = client < 0;
  return client;
}

int32_t UnixDomain::createClientSocket() {
  const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (client < 0) {
    TMX_LOG(LOG_ERR, "socket error(%m)");
    return -1;
  }
  TMX_LOG(LOG_DEBUG, " create sockt number(%ld) ", static_cast<long>(client));
  return client;
}

int32_t UnixDomain::connectServ(int32_t client, const std::string& path) {
  const SocketAddress address(path);
  if (connect(client, address.get(), address.length) == 0) return 0;
  TMX_LOG(LOG_ERR, "connect error(%m)");
  return -1;
}

int32_t UnixDomain::closeClientSocket(int32_t client) {
  TMX_LOG(LOG_DEBUG, " %s:%d ::close socket(%ld)", __func__, __LINE__, static_cast<long>(client));
  const int result = close(client);
  if (result < 0) TMX_LOG(LOG_ERR, "close scket error(%m)");
  sync();
  return result;
}
