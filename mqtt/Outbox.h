#pragma once

#include <deque>
#include <map>
#include <string>
#include <utility>

#include "mqtt/Link.h"
#include "mqtt/Values.h"

namespace mqtt {

/**
 * What goes to the broker, a few messages at once: messages that go once, then what is retained, all of it anew behind
 * each connection, since the broker may have lost its data.
 */
class Outbox {
 public:
  Outbox(Link& link, const std::string& guid) : m_link(link), m_guid(guid), m_values(guid) {}

  [[nodiscard]] Values& values() { return m_values; }

  /** The payload from now on of one of the camera's topics. */
  void retain(const std::string& topic, std::string payload);

  /** Goes once; the oldest is given up where more than 32 wait for a connection. */
  void send(std::string topic, std::string payload, bool isRetained);

  /** Goes on; to be called when values have changed. */
  void pump();

  // To be told of the link.
  void lost();
  void delivered();

 private:
  struct Retained {
    std::string payload;
    bool isSent = false;
  };
  struct Single {
    std::string topic;
    std::string payload;
    bool isRetained;
  };

  [[nodiscard]] bool sendNext();

  Link& m_link;
  std::string m_guid;
  Values m_values;
  std::map<std::string, Retained> m_retained;  ///< by topic
  std::deque<Single> m_singles;
  int m_underWay = 0;
};

}  // namespace mqtt
