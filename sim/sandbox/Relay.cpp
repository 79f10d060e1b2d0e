#include "sim/sandbox/Relay.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>

#include "sim/sandbox/Enter.h"

namespace sim {

namespace {

constexpr int standardPort = 80;

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<in_port_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

/** The port that the daemon has given to the web server. */
int cameraPort(const Home& home) {
  int port = standardPort;
  std::sscanf(readFile(home.path("flash/lighttpd/lighttpd-inc.conf")).c_str(), "server.port = %d", &port);
  return port;
}

/** Moves what there is; false at the end of the one side or when the other takes nothing more. */
bool move(int from, int to) {
  std::array<char, 16384> bytes{};
  const ssize_t got = read(from, bytes.data(), bytes.size());
  for (ssize_t sent = 0, part = 0; sent < got; sent += part) {
    part = send(to, bytes.data() + sent, static_cast<std::size_t>(got - sent), MSG_NOSIGNAL);
    if (part <= 0) return false;
  }
  return got > 0;
}

/** One connection: the client's is one of the host's, the other is made inside. */
void serve(const Home& home, int client) {
  if (!join(home, {"user", "net"})) return;
  const Fd camera(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in address = loopback(cameraPort(home));
  if (connect(camera.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return;
  while (true) {
    std::array<pollfd, 2> ends{{{client, POLLIN, 0}, {camera.get(), POLLIN, 0}}};
    if (poll(ends.data(), ends.size(), -1) < 0) return;
    if (ends[0].revents != 0 && !move(client, camera.get())) return;
    if (ends[1].revents != 0 && !move(camera.get(), client)) return;
  }
}

}  // namespace

int relay(const Home& home, int port) {
  const Fd server(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const int yes = 1;
  setsockopt(server.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address = loopback(port);
  socklen_t size = sizeof address;
  auto* place = reinterpret_cast<sockaddr*>(&address);
  if (bind(server.get(), place, size) != 0 || listen(server.get(), SOMAXCONN) != 0 ||
      getsockname(server.get(), place, &size) != 0) {
    die("listen at 127.0.0.1:" + std::to_string(port));
  }
  std::printf("%d\n", ntohs(address.sin_port));
  std::fflush(stdout);
  std::signal(SIGCHLD, SIG_IGN);  // whoever ends is not waited for
  while (true) {
    const Fd client(accept4(server.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!client.valid() || fork() != 0) continue;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    serve(home, client.get());
    _exit(0);
  }
}

}  // namespace sim
