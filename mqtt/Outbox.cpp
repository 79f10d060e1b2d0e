#include "mqtt/Outbox.h"

#include "mqtt/Topics.h"

namespace mqtt {
namespace {

constexpr std::size_t kMostSingles = 32;

}  // namespace

void Outbox::retain(const std::string& topic, std::string payload) {
  const auto [entry, isNew] = m_retained.try_emplace(topic);
  if (!isNew && entry->second.payload == payload) return;
  entry->second = {.payload = std::move(payload)};
  pump();
}

void Outbox::send(std::string topic, std::string payload, bool isRetained) {
  if (m_singles.size() == kMostSingles) m_singles.pop_front();
  m_singles.push_back({std::move(topic), std::move(payload), isRetained});
  pump();
}

void Outbox::pump() {
  while (m_underWay < Link::kMaxOnTheirWay && sendNext())
    ++m_underWay;
}

void Outbox::lost() {
  m_underWay = 0;
  for (auto& [topic, retained] : m_retained)
    retained.isSent = false;
  m_values.forget();
}

void Outbox::delivered() {
  if (m_underWay > 0) --m_underWay;
  pump();
}

/** False when there is nothing to send, or no connection. */
bool Outbox::sendNext() {
  if (!m_singles.empty()) {
    const Single& single = m_singles.front();
    if (!m_link.publish(single.topic, single.payload, single.isRetained)) return false;
    m_singles.pop_front();
    return true;
  }
  for (auto& [topic, retained] : m_retained) {
    if (retained.isSent) continue;
    retained.isSent = m_link.publish(cameraTopic(m_guid, topic), retained.payload, true).has_value();
    return retained.isSent;
  }
  return m_values.sendNext(m_link);
}

}  // namespace mqtt
