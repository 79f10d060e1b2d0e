#include "bench/load/Client.h"

#include <sys/epoll.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>

namespace bench::load {
namespace {

constexpr int kKeepAliveSeconds = 30;

Client& clientOf(void* object) { return *static_cast<Client*>(object); }

}  // namespace

Poll::Poll() : m_descriptor(epoll_create1(EPOLL_CLOEXEC)) {
  if (m_descriptor < 0) throw std::runtime_error("no epoll");
}

Poll::~Poll() { close(m_descriptor); }

void Poll::serve() const {
  std::array<epoll_event, 256> events{};
  const int count = epoll_wait(m_descriptor, events.data(), events.size(), 1);
  for (int i = 0; i < count; ++i) {
    const epoll_event& event = events[static_cast<std::size_t>(i)];
    clientOf(event.data.ptr).serve(event.events);
  }
}

Client::Client(Poll& poll, std::string id, const Security& security)
    : m_poll(poll), m_id(std::move(id)), m_security(security), m_mosquitto(mosquitto_new(m_id.c_str(), true, this)) {
  if (m_mosquitto == nullptr) throw std::runtime_error("no memory for another client");
}

Client::~Client() { mosquitto_destroy(m_mosquitto); }

void Client::secure() {
  if (m_security.ca.empty()) return;
  const auto file = [](const std::string& name) { return name.empty() ? nullptr : name.c_str(); };
  if (mosquitto_tls_set(m_mosquitto, file(m_security.ca), nullptr, file(m_security.certificate), file(m_security.key),
                        nullptr) != MOSQ_ERR_SUCCESS)
    throw std::runtime_error("the certificates cannot be used");
}

void Client::setCallbacks() {
  mosquitto_connect_callback_set(m_mosquitto, [](mosquitto*, void* object, int result) {
    if (result == 0) clientOf(object).connected();
  });
  mosquitto_disconnect_callback_set(m_mosquitto, [](mosquitto*, void* object, int) { clientOf(object).end(); });
  mosquitto_message_callback_set(m_mosquitto, [](mosquitto*, void* object, const mosquitto_message* message) {
    clientOf(object).received(*message);
  });
  mosquitto_publish_callback_set(m_mosquitto, [](mosquitto*, void* object, int) { clientOf(object).published(); });
  mosquitto_subscribe_callback_set(
      m_mosquitto, [](mosquitto*, void* object, int, int, const int*) { clientOf(object).subscribed(); });
}

void Client::connect(const Address& address, const std::string& willTopic, const std::string& will) {
  // What the library still had to send on the old connection it would send on this one.
  if (mosquitto_reinitialise(m_mosquitto, m_id.c_str(), true, this) != MOSQ_ERR_SUCCESS)
    throw std::runtime_error("no memory for another connection");
  m_isOpen = true;
  m_hasWritten = false;
  secure();
  setCallbacks();
  mosquitto_int_option(m_mosquitto, MOSQ_OPT_TCP_NODELAY, 1);
  if (!willTopic.empty())
    mosquitto_will_set(m_mosquitto, willTopic.c_str(), static_cast<int>(will.size()), will.data(), 1, true);
  // The other kind waits for the connection, and with it everybody else.
  if (mosquitto_connect_async(m_mosquitto, address.host.c_str(), address.port, kKeepAliveSeconds) == MOSQ_ERR_SUCCESS) {
    update();
  } else {
    end();
  }
}

void Client::end() {
  if (!m_isOpen) return;
  m_isOpen = false;
  lost();
}

void Client::care() {
  if (m_descriptor < 0) return;
  mosquitto_loop_misc(m_mosquitto);
  update();
}

void Client::serve(std::uint32_t events) {
  int result = MOSQ_ERR_SUCCESS;
  if ((events & EPOLLOUT) != 0) {
    m_hasWritten = true;
    result = mosquitto_loop_write(m_mosquitto, 1);
  }
  if (result == MOSQ_ERR_SUCCESS && (events & ~EPOLLOUT) != 0) mosquitto_loop_read(m_mosquitto, 1);
  update();
  // A connection that is refused before TLS begins goes unnoticed by the library.
  if (m_descriptor >= 0 && (events & (EPOLLERR | EPOLLHUP)) != 0) {
    epoll_ctl(m_poll.descriptor(), EPOLL_CTL_DEL, m_descriptor, nullptr);
    m_descriptor = -1;
    end();
  }
}

void Client::publish(const std::string& topic, const std::string& payload, bool isRetained) {
  mosquitto_publish(m_mosquitto, nullptr, topic.c_str(), static_cast<int>(payload.size()), payload.data(), 1,
                    isRetained);
  update();
}

void Client::subscribe(const std::string& topic, int quality) {
  mosquitto_subscribe(m_mosquitto, nullptr, topic.c_str(), quality);
  update();
}

void Client::update() {
  const int descriptor = mosquitto_socket(m_mosquitto);
  // A closed descriptor has left epoll by itself; its number may be another's by now.
  if (descriptor != m_descriptor) m_events = 0;
  const bool isNew = m_events == 0;
  m_descriptor = descriptor;
  if (descriptor < 0) return;
  // With TLS the library does not ask to be told that the connection is there, and then nobody begins to speak.
  const bool writes = !m_hasWritten || mosquitto_want_write(m_mosquitto);
  const std::uint32_t events = writes ? EPOLLIN | EPOLLOUT : EPOLLIN;
  if (events == m_events) return;
  m_events = events;
  epoll_event event{};
  event.events = events;
  event.data.ptr = this;
  if (epoll_ctl(m_poll.descriptor(), isNew ? EPOLL_CTL_ADD : EPOLL_CTL_MOD, descriptor, &event) != 0)
    std::perror("epoll_ctl");
}

}  // namespace bench::load
