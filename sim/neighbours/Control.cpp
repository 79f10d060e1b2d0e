#include "Control.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace sim {

namespace {
constexpr std::size_t longestLine = 4096;
}

Control::Control(Loop& loop, Neighbourhood& neighbourhood, std::string path)
    : m_loop(loop), m_neighbourhood(neighbourhood), m_path(std::move(path)), m_listener(listenAt(m_path)) {
  if (m_listener.isOpen()) m_loop.watch(m_listener.number(), [this] { accept(); });
}

Control::~Control() {
  if (m_listener.isOpen()) ::unlink(m_path.c_str());
}

void Control::accept() {
  Descriptor socket(::accept4(m_listener.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (!socket.isOpen()) return;
  const int number = socket.number();
  m_clients[number].socket = std::move(socket);
  m_loop.watch(number, [this, number] { receive(number); });
}

void Control::receive(int number) {
  std::array<char, 1024> buffer{};
  const ssize_t count = ::recv(number, buffer.data(), buffer.size(), 0);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) return drop(number);
  std::string& pending = m_clients.at(number).pending;
  pending.append(buffer.data(), static_cast<std::size_t>(count));
  for (std::size_t end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
    const std::string answer = m_neighbourhood.tell(pending.substr(0, end)) + "\n";
    pending.erase(0, end + 1);
    if (::send(number, answer.data(), answer.size(), MSG_NOSIGNAL) < 0) return drop(number);
  }
  if (pending.size() > longestLine) drop(number);
}

void Control::drop(int number) {
  m_loop.unwatch(number);
  m_clients.erase(number);
}

}  // namespace sim
