#include "Reporter.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>

#include "Bytes.h"
#include "sim/common/Journal.h"

namespace sim {

namespace {

constexpr std::chrono::milliseconds retryDelay(250);
constexpr int attemptLimit = 40;
constexpr std::size_t lengthSize = 4;

/** An administrator's request with plain line ends. */
std::string frame(const std::string& query) {
  std::string bytes(lengthSize + 2, '\0');
  putWord32(bytes, 0, static_cast<std::uint32_t>(query.size() + 2));
  bytes[5] = 1;
  return bytes + query;
}

}  // namespace

void Reporter::report(const std::string& query) {
  m_waiting.push_back(query);
  if (!m_busy) startNext();
}

void Reporter::startNext() {
  m_busy = !m_waiting.empty();
  if (!m_busy) return;
  m_connection = connectTo(m_path, SOCK_NONBLOCK);
  const std::string bytes = frame(m_waiting.front());
  const bool sent = m_connection.isOpen() && ::send(m_connection.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
                                                 static_cast<ssize_t>(bytes.size());
  if (sent) {
    m_loop.watch(m_connection.number(), [this] { receive(); });
  } else if (++m_attempts < attemptLimit) {
    m_loop.after(retryDelay, [this] { startNext(); });
  } else {
    finish("unreachable");
  }
}

void Reporter::receive() {
  std::array<char, 1024> buffer{};
  const ssize_t count = ::recv(m_connection.number(), buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count > 0) m_answer.append(buffer.data(), static_cast<std::size_t>(count));
  const bool complete = m_answer.size() >= lengthSize && m_answer.size() >= lengthSize + word32(m_answer, 0);
  if (count > 0 && !complete) return;
  m_loop.unwatch(m_connection.number());
  m_connection = Descriptor();
  finish(complete ? m_answer.substr(lengthSize) : "no answer");
}

void Reporter::finish(const std::string& outcome) {
  Journal("gpio", "report").text("text", m_waiting.front()).text("answer", outcome).write();
  m_waiting.pop_front();
  m_answer.clear();
  m_attempts = 0;
  startNext();
}

}  // namespace sim
