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
  for (Descriptor socket = acceptFrom(m_listener); socket.isOpen(); socket = acceptFrom(m_listener)) {
    const unsigned id = ++m_lastId;
    m_loop.watch(socket.number(), [this, id] { receive(id); });
    m_clients[id].socket = std::move(socket);
  }
}

void Control::receive(unsigned id) {
  std::array<char, 1024> buffer{};
  Client& client = m_clients.at(id);
  const ssize_t count = ::recv(client.socket.number(), buffer.data(), buffer.size(), 0);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) return drop(id);
  std::string& pending = client.pending;
  pending.append(buffer.data(), static_cast<std::size_t>(count));
  for (std::size_t end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
    m_loop.whenIdle([this, id, line = pending.substr(0, end)] { carryOut(id, line); });
    pending.erase(0, end + 1);
  }
  if (pending.size() > longestLine) drop(id);
}

void Control::carryOut(unsigned id, const std::string& line) {
  const std::string answer = m_neighbourhood.tell(line) + "\n";
  const auto client = m_clients.find(id);
  if (client == m_clients.end()) return;
  if (::send(client->second.socket.number(), answer.data(), answer.size(), MSG_NOSIGNAL) < 0) drop(id);
}

void Control::drop(unsigned id) {
  const auto client = m_clients.find(id);
  m_loop.unwatch(client->second.socket.number());
  m_clients.erase(client);
}

}  // namespace sim
