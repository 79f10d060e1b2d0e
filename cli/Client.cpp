#include "cli/Client.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tmx {
namespace {

using Clock = std::chrono::steady_clock;

/** An answer longer than this is no answer of the daemon's; its largest is the system log. */
constexpr std::uint32_t kMaxAnswer = 64U << 20;

/** A descriptor that is closed with its owner. */
class Descriptor {
 public:
  explicit Descriptor(int fd) : m_fd(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (m_fd >= 0) close(m_fd);
  }
  [[nodiscard]] int get() const { return m_fd; }

 private:
  int m_fd;
};

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

Reply connectTo(int fd, const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return {Outcome::kNoConnection, "the socket's path is too long"};
  path.copy(address.sun_path, path.size());
  if (connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return {Outcome::kAnswered, {}};
  if (errno == EAGAIN) return timedOut();
  return {Outcome::kNoConnection, std::strerror(errno)};
}

Reply sendAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    } else if (errno == EAGAIN) {
      return timedOut();
    } else if (errno != EINTR) {
      return broken();
    }
  }
  return {Outcome::kAnswered, {}};
}

Reply receive(int fd, std::size_t count, Clock::time_point deadline) {
  std::string bytes(count, '\0');
  std::size_t have = 0;
  while (have < count) {
    pollfd ready{fd, POLLIN, 0};
    const int polled = poll(&ready, 1, static_cast<int>(left(deadline).count()));
    if (polled == 0) return timedOut();
    const ssize_t got = polled < 0 ? -1 : read(fd, bytes.data() + have, count - have);
    if (got == 0) return {Outcome::kNoAnswer, "the connection was closed without a whole answer"};
    if (got > 0) {
      have += static_cast<std::size_t>(got);
    } else if (errno != EINTR) {
      return broken();
    }
  }
  return {Outcome::kAnswered, std::move(bytes)};
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

Reply Client::exchangeFrame(std::string_view frame) const {
  const auto deadline = Clock::now() + m_timeout;
  const Descriptor fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (fd.get() < 0 || !limitSending(fd.get(), m_timeout)) return {Outcome::kNoConnection, std::strerror(errno)};
  if (Reply reply = connectTo(fd.get(), m_socket); reply.outcome != Outcome::kAnswered) return reply;
  if (Reply reply = sendAll(fd.get(), frame); reply.outcome != Outcome::kAnswered) return reply;

  Reply head = receive(fd.get(), kLengthSize, deadline);
  if (head.outcome != Outcome::kAnswered) return head;
  const std::uint32_t length = frameLength(head.text.data());
  if (length == 0 || length > kMaxAnswer) return {Outcome::kNoAnswer, "the answer has no possible length"};
  return receive(fd.get(), length, deadline);
}

}  // namespace tmx
