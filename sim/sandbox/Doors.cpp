#include "sim/sandbox/Doors.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>

namespace sim {

namespace {

Fd newSocket() { return Fd(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)); }

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

void carry(int client, int place) {
  while (true) {
    std::array<pollfd, 2> ends{{{client, POLLIN, 0}, {place, POLLIN, 0}}};
    if (poll(ends.data(), ends.size(), -1) < 0) return;
    if (ends[0].revents != 0 && !move(client, place)) return;
    if (ends[1].revents != 0 && !move(place, client)) return;
  }
}

/** Takes one connection, if there is one. */
void admit(const Door& door) {
  const Fd client(accept4(door.listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
  if (!client.valid() || fork() != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const Fd place = door.reach();
  if (place.valid()) carry(client.get(), place.get());
  _exit(0);
}

}  // namespace

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<in_port_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

sockaddr_in parseAddress(const std::string& text) {
  const std::size_t colon = text.find(':');
  const std::string port = text.substr(colon == std::string::npos ? 0 : colon + 1);
  in_port_t number = 0;
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), number);
  sockaddr_in address = loopback(number);
  const bool isHost = colon == std::string::npos || inet_aton(text.substr(0, colon).c_str(), &address.sin_addr) != 0;
  errno = EINVAL;
  must(isHost && error == std::errc() && end == port.data() + port.size(), "use the address " + text);
  return address;
}

Fd listenAt(const sockaddr_in& address) {
  Fd listener = newSocket();
  const int yes = 1;
  setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  const bool listens = bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                       listen(listener.get(), SOMAXCONN) == 0;
  must(listens,
       std::string("listen at ") + inet_ntoa(address.sin_addr) + ":" + std::to_string(ntohs(address.sin_port)));
  return listener;
}

Fd connectTo(const sockaddr_in& address) {
  Fd place = newSocket();
  if (connect(place.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) place.reset();
  return place;
}

void serve(const std::vector<Door>& doors) {
  std::signal(SIGCHLD, SIG_IGN);  // whoever ends is not waited for
  std::vector<pollfd> listeners;
  listeners.reserve(doors.size());
  for (const Door& door : doors)
    listeners.push_back({door.listener.get(), POLLIN, 0});
  while (true) {
    if (poll(listeners.data(), listeners.size(), -1) < 0) continue;
    for (std::size_t index = 0; index < doors.size(); ++index) {
      if (listeners[index].revents != 0) admit(doors[index]);
    }
  }
}

}  // namespace sim
