#include "cli/Client.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "local/FileDescriptor.h"

namespace tmx {
namespace {

using Clock = std::chrono::steady_clock;

std::chrono::milliseconds left(Clock::time_point deadline) {
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  return std::max(rest, std::chrono::milliseconds(0));
}

Reply timedOut() { return {Outcome::kTimedOut, "no answer in time"}; }

Reply broken() { return {Outcome::kNoAnswer, std::strerror(errno)}; }

/** A full backlog makes connect() wait, and a full buffer makes send() wait: both heed the socket's send time-out. */
bool limitSending(int fd, std::chrono::milliseconds limit) {
  const auto ms = std::max<std::chrono::milliseconds::rep>(limit.count(), 1);
  timeval time{};
  time.tv_sec = static_cast<time_t>(ms / 1000);
  time.tv_usec = static_cast<suseconds_t>(ms % 1000 * 1000);
  return setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time) == 0;
}

}  // namespace

std::string requestFrame(UserClass user, LineEnd lineEnd, std::string_view text) {
  const auto length = static_cast<std::uint32_t>(text.size() + 2);
  std::string frame;
  frame.reserve(kLengthSize + length);
  for (unsigned shift = 0; shift < 32; shift += 8)
    frame.push_back(static_cast<char>(length >> shift & 0xFFU));
  frame.push_back(static_cast<char>(user));
  frame.push_back(static_cast<char>(lineEnd));
  frame.append(text);
  return frame;
}

std::uint32_t frameLength(const char* bytes) {
  std::uint32_t length = 0;
  for (unsigned i = 0; i < kLengthSize; ++i)
    length |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << 8 * i;
  return length;
}

Reply Client::exchange(UserClass user, LineEnd lineEnd, std::string_view text) const {
  return exchangeFrame(requestFrame(user, lineEnd, text));
}

int connectTo(const std::string& socket, std::chrono::milliseconds timeout) {
  FileDescriptor fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!fd.isValid() || !limitSending(fd.get(), timeout)) return -1;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (socket.size() >= sizeof address.sun_path) {
    errno = ENAMETOOLONG;
    return -1;
  }
  socket.copy(address.sun_path, socket.size());
  return connect(fd.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? fd.release() : -1;
}

Exchange::Exchange(int descriptor, std::string frame, std::uint32_t maxAnswer)
    : m_descriptor(descriptor), m_bytes(std::move(frame)), m_maxAnswer(maxAnswer) {
  fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

short Exchange::events() const { return m_stage == Stage::kSending ? POLLOUT : POLLIN; }

std::optional<Reply> Exchange::step() {
  std::optional<Reply> reply;
  if (m_stage == Stage::kSending) reply = send();
  return reply || m_stage == Stage::kSending ? reply : receive();
}

std::optional<Reply> Exchange::send() {
  while (m_done < m_bytes.size()) {
    const ssize_t sent = ::send(m_descriptor, m_bytes.data() + m_done, m_bytes.size() - m_done, MSG_NOSIGNAL);
    if (sent >= 0) {
      m_done += static_cast<std::size_t>(sent);
    } else if (errno == EAGAIN) {
      return std::nullopt;
    } else if (errno != EINTR) {
      return broken();
    }
  }
  m_stage = Stage::kLength;
  m_bytes.assign(kLengthSize, '\0');
  m_done = 0;
  return std::nullopt;
}

std::optional<Reply> Exchange::receive() {
  while (true) {
    const ssize_t got = read(m_descriptor, m_bytes.data() + m_done, m_bytes.size() - m_done);
    if (got == 0) return Reply{Outcome::kNoAnswer, "the connection was closed without a whole answer"};
    if (got < 0 && errno == EAGAIN) return std::nullopt;
    if (got < 0 && errno != EINTR) return broken();
    if (got > 0) m_done += static_cast<std::size_t>(got);
    if (m_done < m_bytes.size()) continue;
    if (m_stage == Stage::kText) return Reply{Outcome::kAnswered, std::exchange(m_bytes, {})};
    const std::uint32_t length = frameLength(m_bytes.data());
    if (length == 0 || length > m_maxAnswer) return Reply{Outcome::kNoAnswer, "the answer has no possible length"};
    m_stage = Stage::kText;
    m_bytes.assign(length, '\0');
    m_done = 0;
  }
}

Reply exchangeOver(int descriptor, std::string_view frame, std::chrono::milliseconds timeout) {
  const auto deadline = Clock::now() + timeout;
  Exchange exchange(descriptor, std::string(frame));
  while (true) {
    if (std::optional<Reply> reply = exchange.step()) return *reply;
    pollfd ready{descriptor, exchange.events(), 0};
    if (poll(&ready, 1, static_cast<int>(left(deadline).count())) == 0) return timedOut();
  }
}

Reply Client::exchangeFrame(std::string_view frame) const {
  const auto deadline = Clock::now() + m_timeout;
  const FileDescriptor fd(connectTo(m_socket, m_timeout));
  if (!fd.isValid()) return errno == EAGAIN ? timedOut() : Reply{Outcome::kNoConnection, std::strerror(errno)};
  return exchangeOver(fd.get(), frame, left(deadline));
}

}  // namespace tmx
