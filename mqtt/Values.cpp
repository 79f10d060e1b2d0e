#include "mqtt/Values.h"

#include "cli/Json.h"
#include "mqtt/Topics.h"

namespace mqtt {
namespace {

/** A longer value, such as a log, is none for a broker. */
constexpr std::size_t kLongestValue = 4096;

/** The value as it stands in its topic; empty for one that cannot be read now. */
std::string payloadOf(const tmx::Reader::Value& value) {
  const bool isShown = value.hasText && (value.status == 200 || value.status == 202);
  return isShown && value.text.size() <= kLongestValue ? tmx::jsonString(value.text) : std::string();
}

}  // namespace

void Values::forget() {
  for (Entry& entry : m_entries)
    entry.sent = 0;
  m_at = 0;
}

bool Values::sendNext(Link& link) {
  for (; m_at < m_entries.size(); ++m_at) {
    Entry& entry = m_entries[m_at];
    if (entry.value->changed == entry.sent) continue;
    if (!link.publish(valueTopic(m_guid, std::string(entry.value->path)), payloadOf(*entry.value), true)) return false;
    entry.sent = entry.value->changed;
    return true;
  }
  return false;
}

}  // namespace mqtt
