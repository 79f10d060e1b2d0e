#include "mqtt/Outbox.h"

#include <utility>

namespace mqtt {
namespace {

constexpr std::size_t kMostMessages = 32;

}  // namespace

void Outbox::retain(const std::string& topic, std::string payload) {
  const auto [found, isNew] = m_retained.try_emplace(topic, Retained{.payload = {}, .isWaiting = false});
  Retained& retained = found->second;
  if (!isNew && retained.payload == payload) return;
  retained.payload = std::move(payload);
  if (!std::exchange(retained.isWaiting, true)) m_waiting.push_back(&*found);
  pump();
}

void Outbox::send(std::string topic, std::string payload, bool isRetained) {
  if (m_messages.size() == kMostMessages) m_messages.pop_front();
  m_messages.push_back({std::move(topic), std::move(payload), isRetained});
  pump();
}

void Outbox::connected() {
  m_underWay = 0;
  m_waiting.clear();
  for (Entry& entry : m_retained) {
    entry.second.isWaiting = true;
    m_waiting.push_back(&entry);
  }
  pump();
}

void Outbox::delivered() {
  if (m_underWay > 0) --m_underWay;
  pump();
}

void Outbox::pump() {
  while (m_underWay < Link::kMaxOnTheirWay && sendNext())
    ++m_underWay;
}

/** False when there is nothing to send, or no connection. */
bool Outbox::sendNext() {
  if (!m_messages.empty()) {
    const Message& message = m_messages.front();
    if (!m_link.publish(message.topic, message.payload, message.isRetained)) return false;
    m_messages.pop_front();
    return true;
  }
  if (m_waiting.empty()) return false;
  Entry& entry = *m_waiting.front();
  if (!m_link.publish(entry.first, entry.second.payload, true)) return false;
  entry.second.isWaiting = false;
  m_waiting.pop_front();
  return true;
}

}  // namespace mqtt
