#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>

#include "mqtt/Link.h"

namespace mqtt {

/**
 * What goes to the broker: of each retained topic the last payload, all of them anew behind each connection, since the
 * broker may have lost its data; and messages that go once. The topics that wait take no more room than they do anyhow,
 * and few messages are on their way.
 */
class Outbox {
 public:
  explicit Outbox(Link& link) : m_link(link) {}

  /** The topic's payload from now on; an empty one takes it away. */
  void retain(const std::string& topic, std::string payload);

  /** Goes once, in front of what is retained; the oldest is given up where more than 32 wait for a connection. */
  void send(std::string topic, std::string payload, bool isRetained);

  // To be told of the link.
  void connected();
  void lost() { m_underWay = 0; }
  void delivered();

 private:
  struct Retained {
    std::string payload;
    bool isWaiting;
  };
  using Entry = std::map<std::string, Retained>::value_type;
  struct Message {
    std::string topic;
    std::string payload;
    bool isRetained;
  };

  void pump();
  [[nodiscard]] bool sendNext();

  Link& m_link;
  std::map<std::string, Retained> m_retained;  ///< by topic
  std::deque<Entry*> m_waiting;
  std::deque<Message> m_messages;
  int m_underWay = 0;
};

}  // namespace mqtt
