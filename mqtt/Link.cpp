#include "mqtt/Link.h"

#include <mosquitto.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <random>
#include <utility>

namespace mqtt {
namespace {

/** For the name's look-up, TCP, TLS and the broker's word. */
constexpr std::chrono::seconds kConnectLimit{10};
/** Without a word for this time the other end is asked, and is lost without an answer for as long again. */
constexpr int kKeepAlive = 30;  // seconds
constexpr std::chrono::seconds kCheck{5};
/** A connection that has stood for this time was none that fails at once. */
constexpr std::chrono::seconds kStands{60};
constexpr std::chrono::seconds kLongestPause{60};
constexpr std::chrono::seconds kLastWait{1};
constexpr std::size_t kMaxSaid = 32;
constexpr int kQos = 1;
constexpr int kRefused = 0x80;

void initialise() {
  static const int once = mosquitto_lib_init();
  static_cast<void>(once);
  std::signal(SIGPIPE, SIG_IGN);  // the library writes to connections that are gone
}

/** Nobody is there to type the word of a key that needs one. */
int noPassword(char* /*word*/, int /*size*/, int /*purpose*/, void* /*client*/) { return 0; }

/** The first of the files that cannot be read, and why; empty when all can be. */
std::string unreadable(const Broker& broker) {
  for (const std::string& file : {broker.ca, broker.certificate, broker.key}) {
    if (access(file.c_str(), R_OK) != 0) return file + ": " + std::strerror(errno);
  }
  return {};
}

int socketError(int socket) {
  int error = 0;
  socklen_t size = sizeof error;
  return getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

}  // namespace

/** What the library calls, with the link as its object. */
struct Link::Callbacks {
  static void connected(mosquitto* /*client*/, void* object, int refusal) {
    Link& link = *static_cast<Link*>(object);
    if (refusal != 0) {
      link.m_failure = mosquitto_connack_string(refusal);
    } else {
      link.stand();
    }
  }
  static void subscribed(mosquitto* /*client*/, void* object, int /*id*/, int count, const int* granted) {
    if (std::find(granted, granted + count, kRefused) != granted + count) {
      static_cast<Link*>(object)->m_failure = "the broker refuses a subscription";
    }
  }
  static void delivered(mosquitto* /*client*/, void* object, int id) {
    const Link& link = *static_cast<Link*>(object);
    if (link.m_delivered) link.m_delivered(id);
  }
  static void came(mosquitto* /*client*/, void* object, const mosquitto_message* message) {
    const Link& link = *static_cast<Link*>(object);
    const std::string_view payload(static_cast<const char*>(message->payload),
                                   static_cast<std::size_t>(message->payloadlen));
    if (link.m_message) link.m_message(message->topic, payload, message->retain);
  }
  static void said(mosquitto* /*client*/, void* object, int level, const char* words) {
    Link& link = *static_cast<Link*>(object);
    if (level == MOSQ_LOG_ERR && link.m_words.empty()) link.m_words = words;
  }
};

void Link::Destroy::operator()(mosquitto* client) const { mosquitto_destroy(client); }

Link::Link(tmx::Reactor& reactor, const Broker& broker, std::string clientId, Message will)
    : m_reactor(reactor), m_broker(broker), m_clientId(std::move(clientId)), m_will(std::move(will)) {
  initialise();
}

Link::~Link() { forget(); }

void Link::open() {
  m_words.clear();
  m_failure.clear();
  m_client.reset(mosquitto_new(m_clientId.c_str(), true, this));
  if (m_client == nullptr) return lose(std::strerror(errno));
  mosquitto* client = m_client.get();
  mosquitto_connect_callback_set(client, Callbacks::connected);
  mosquitto_subscribe_callback_set(client, Callbacks::subscribed);
  mosquitto_publish_callback_set(client, Callbacks::delivered);
  mosquitto_message_callback_set(client, Callbacks::came);
  mosquitto_log_callback_set(client, Callbacks::said);
  mosquitto_max_inflight_messages_set(client, kMaxOnTheirWay);
  if (const int error = configure(); error != MOSQ_ERR_SUCCESS) return lose(reason(error));
  if (const int error = mosquitto_connect_async(client, m_broker.host.c_str(), m_broker.port, kKeepAlive);
      error != MOSQ_ERR_SUCCESS) {
    return lose(reason(error));
  }
  m_limit = m_reactor.after(kConnectLimit, [this] { lose("the broker does not answer"); });
  watch();
}

int Link::configure() {
  const auto size = static_cast<int>(m_will.payload.size());
  if (const int error =
          mosquitto_will_set(m_client.get(), m_will.topic.c_str(), size, m_will.payload.data(), kQos, true);
      error != MOSQ_ERR_SUCCESS || m_broker.ca.empty()) {
    return error;
  }
  m_words = unreadable(m_broker);
  return mosquitto_tls_set(m_client.get(), m_broker.ca.c_str(), nullptr, m_broker.certificate.c_str(),
                           m_broker.key.c_str(), noPassword);
}

void Link::watch() {
  const auto events = static_cast<short>(POLLIN | (mosquitto_want_write(m_client.get()) ? POLLOUT : 0));
  if (m_socket >= 0) return m_reactor.setEvents(m_socket, events);
  m_socket = mosquitto_socket(m_client.get());
  m_reactor.watch(m_socket, events, [this](short found) { step(found); });
}

void Link::step(short events) {
  errno = 0;  // the library takes an old EAGAIN for its own
  int error = MOSQ_ERR_SUCCESS;
  const int broken = (events & (POLLERR | POLLHUP)) == 0 ? 0 : socketError(m_socket);
  if (broken != 0) return lose(std::strerror(broken));
  if ((events & ~POLLOUT) != 0) error = mosquitto_loop_read(m_client.get(), 1);
  if (error == MOSQ_ERR_SUCCESS && (events & POLLOUT) != 0) error = mosquitto_loop_write(m_client.get(), 1);
  // The library begins with TLS on a connection that has failed, and finds nothing wrong with its end.
  const bool isOver = !m_isConnected && (events & (POLLERR | POLLHUP)) != 0;
  if (error == MOSQ_ERR_SUCCESS && isOver && m_failure.empty()) m_failure = "the connection was refused or reset";
  check(error);
}

void Link::check(int error) {
  if (!m_failure.empty()) return lose(std::exchange(m_failure, {}));
  if (error != MOSQ_ERR_SUCCESS) return lose(reason(error));
  watch();
}

void Link::keepAlive() {
  m_next = m_reactor.after(kCheck, [this] { keepAlive(); });
  check(mosquitto_loop_misc(m_client.get()));
}

void Link::stand() {
  m_isConnected = true;
  m_reactor.cancel(m_limit);
  m_limit = m_reactor.after(kStands, [this] {
    m_tries = 0;
    m_said.clear();
  });
  m_next = m_reactor.after(kCheck, [this] { keepAlive(); });
  say(LOG_NOTICE, "connected");
  if (m_connected) m_connected();
}

void Link::lose(const std::string& why) {
  const bool wasConnected = m_isConnected;
  forget();
  say(LOG_WARNING, why);
  m_next = m_reactor.after(nextPause(), [this] { open(); });
  if (wasConnected && m_lost) m_lost(why);
}

/** A camera tries for years: each thing is said once until a connection stands. */
void Link::say(int level, const std::string& what) {
  if (m_said.size() >= kMaxSaid || !m_said.insert(what).second) return;
  syslog(level, "broker %s port %d: %s", m_broker.host.c_str(), m_broker.port, what.c_str());
}

std::string Link::reason(int error) const {
  if (!m_words.empty()) return m_words;
  return error == MOSQ_ERR_ERRNO ? std::strerror(errno) : mosquitto_strerror(error);
}

void Link::forget() {
  if (m_socket >= 0) m_reactor.forget(std::exchange(m_socket, -1));
  m_client.reset();
  m_isConnected = false;
  m_reactor.cancel(std::exchange(m_limit, 0));
  m_reactor.cancel(std::exchange(m_next, 0));
}

/** Any time up to a limit that doubles, so that many cameras that lost one broker do not come back all at once. */
std::chrono::milliseconds Link::nextPause() {
  const std::chrono::milliseconds limit = std::min(kLongestPause, std::chrono::seconds(1) * (1 << m_tries));
  if (limit < kLongestPause) ++m_tries;
  std::random_device random;
  return std::chrono::milliseconds(std::uniform_int_distribution<std::int64_t>(0, limit.count())(random));
}

std::optional<int> Link::publish(const std::string& topic, std::string_view payload, bool isRetained) {
  if (!m_isConnected) return std::nullopt;
  int id = 0;
  const int error = mosquitto_publish(m_client.get(), &id, topic.c_str(), static_cast<int>(payload.size()),
                                      payload.data(), kQos, isRetained);
  watch();
  return error == MOSQ_ERR_SUCCESS ? std::optional(id) : std::nullopt;
}

void Link::subscribe(const std::string& topic) {
  if (!m_isConnected) return;
  mosquitto_subscribe(m_client.get(), nullptr, topic.c_str(), kQos);
  watch();
}

std::string Link::localAddress() const {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  std::array<char, NI_MAXHOST> text{};
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  if (getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size) != 0 ||
      getnameinfo(generic, size, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST) != 0) {
    return {};
  }
  return text.data();
}

void Link::close(const Message& last) {
  bool isDelivered = false;
  m_lost = {};
  m_message = {};
  const std::optional<int> id = publish(last.topic, last.payload, true);
  m_delivered = [&](int delivered) { isDelivered = isDelivered || delivered == id; };
  const auto end = tmx::Clock::now() + kLastWait;
  const auto wait = [&](const auto& isOver) {
    while (m_isConnected && !isOver() && tmx::Clock::now() < end) {
      pollfd descriptor{m_socket, static_cast<short>(POLLIN | (mosquitto_want_write(m_client.get()) ? POLLOUT : 0)), 0};
      const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - tmx::Clock::now()).count();
      if (poll(&descriptor, 1, static_cast<int>(rest)) > 0) step(descriptor.revents);
    }
  };
  wait([&] { return isDelivered || !id; });
  if (m_isConnected) mosquitto_disconnect(m_client.get());
  forget();
  m_delivered = {};
}

}  // namespace mqtt
