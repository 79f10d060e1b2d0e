#include "web/Connection.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace console {
namespace {

/** The web server has the whole request before it sends it, and takes an answer as fast as it comes. */
constexpr std::chrono::seconds kTransferLimit{30};

/** The bytes of a stream that a browser may leave untaken: more than all values that it can look at. */
constexpr std::size_t kMaxUntaken = 131072;

}  // namespace

Connection::Connection(tmx::Reactor& reactor, FileDescriptor descriptor, OnRequest onRequest, OnClosed onClosed)
    : m_reactor(reactor),
      m_descriptor(std::move(descriptor)),
      m_onRequest(std::move(onRequest)),
      m_onClosed(std::move(onClosed)) {
  m_reactor.watch(m_descriptor.get(), POLLIN, [this](short events) { ready(events); });
  m_limit = m_reactor.after(kTransferLimit, [this] { close(); });
}

Connection::~Connection() {
  m_reactor.cancel(m_limit);
  if (m_descriptor.isValid()) m_reactor.forget(m_descriptor.get());
}

void Connection::answer(const Response& response) {
  if (!m_descriptor.isValid()) return;
  m_output = wire(response);
  m_limit = m_reactor.after(kTransferLimit, [this] { close(); });
  if (!write()) close();
}

void Connection::beginStream() {
  m_isStream = true;
  stream(eventStreamHead());
}

void Connection::stream(std::string_view bytes) {
  if (!m_descriptor.isValid() || m_limit != 0) return;
  if (m_output.size() + bytes.size() <= kMaxUntaken) {
    m_output += bytes;
    if (write()) return;
  }
  // Whoever streams to many goes through them, and would lose one on the way.
  m_output.clear();
  if (m_limit == 0) m_limit = m_reactor.after(std::chrono::seconds(0), [this] { close(); });
}

void Connection::ready(short events) {
  const auto self = shared_from_this();  // whoever hears of the end lets go of it
  if ((events & POLLOUT) != 0 && !write()) close();
  if ((events & (POLLIN | POLLHUP | POLLERR)) != 0 && m_descriptor.isValid()) readSome();
}

void Connection::readSome() {
  std::array<char, 4096> bytes;  // NOLINT(cppcoreguidelines-pro-type-member-init): read() fills it
  const ssize_t got = read(m_descriptor.get(), bytes.data(), bytes.size());
  if (got < 0 && (errno == EAGAIN || errno == EINTR)) return;
  // Behind the request nothing more comes but the end.
  if (got <= 0 || m_isRequestRead) {
    close();
    return;
  }
  const ScgiParser::State state = m_parser.take({bytes.data(), static_cast<std::size_t>(got)});
  if (state == ScgiParser::State::Incomplete) return;
  m_isRequestRead = true;
  m_reactor.cancel(std::exchange(m_limit, 0));
  switch (state) {
    case ScgiParser::State::Complete:
      m_onRequest(shared_from_this(), m_parser.request());
      break;
    case ScgiParser::State::BodyTooLong:
      answer(refusal(413, "the body is longer than 64 KiB"));
      break;
    default:
      close();
  }
}

bool Connection::write() {
  while (!m_output.empty()) {
    const ssize_t sent = send(m_descriptor.get(), m_output.data(), m_output.size(), MSG_NOSIGNAL);
    if (sent > 0) {
      m_output.erase(0, static_cast<std::size_t>(sent));
    } else if (errno == EAGAIN) {
      break;
    } else if (errno != EINTR) {
      return false;
    }
  }
  m_reactor.setEvents(m_descriptor.get(), m_output.empty() ? POLLIN : POLLIN | POLLOUT);
  return m_isStream || !m_output.empty();
}

void Connection::close() {
  if (!m_descriptor.isValid()) return;
  const auto self = shared_from_this();  // m_onClosed may let go of the last other one
  m_reactor.cancel(std::exchange(m_limit, 0));
  m_reactor.forget(m_descriptor.get());
  m_descriptor.reset();
  if (const auto leave = std::exchange(m_leave, nullptr)) leave();
  m_onClosed(this);
}

}  // namespace console
