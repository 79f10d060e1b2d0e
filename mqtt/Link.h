#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "access/Reactor.h"
#include "mqtt/Config.h"

struct mosquitto;
struct mosquitto_message;

namespace mqtt {

/** A retained message. */
struct Message {
  std::string topic;
  std::string payload;
};

/**
 * The connection to a broker, made again whenever it is lost: MQTT 3.1.1, a session that ends with its connection, QoS
 * 1 both ways. Nothing of it waits but the look-up of the broker's name.
 */
class Link {
 public:
  /** @param will what the broker publishes, retained, where the connection ends without a word. */
  Link(tmx::Reactor& reactor, const Broker& broker, std::string clientId, Message will);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  /** Begins; what is to be heard of must have been said before. */
  void open();

  void onConnected(std::function<void()> heard) { m_connected = std::move(heard); }
  /** Nothing that was on its way will be heard of again. */
  void onLost(std::function<void(const std::string& why)> heard) { m_lost = std::move(heard); }
  void onMessage(std::function<void(std::string_view topic, std::string_view payload, bool isRetained)> heard) {
    m_message = std::move(heard);
  }
  /** The broker has it. */
  void onDelivered(std::function<void(int id)> heard) { m_delivered = std::move(heard); }

  /**
   * Sends a message. The caller has at most kMaxOnTheirWay of them that were not delivered.
   *
   * @return its number; nothing while there is no connection.
   */
  [[nodiscard]] std::optional<int> publish(const std::string& topic, std::string_view payload, bool isRetained);
  /** A broker that refuses it loses the connection. */
  void subscribe(const std::string& topic);

  /** This machine's address on the way to the broker; empty without a connection. */
  [[nodiscard]] std::string localAddress() const;

  /** Publishes a last message, waits for its delivery, for a second at most, and ends the connection for good. */
  void close(const Message& last);

  static constexpr int kMaxOnTheirWay = 20;

 private:
  struct Callbacks;
  [[nodiscard]] int configure();
  void watch();
  void step(short events);
  void check(int error);
  void keepAlive();
  void stand();
  void lose(const std::string& why);
  void say(int level, const std::string& what);
  [[nodiscard]] std::string reason(int error) const;
  void forget();
  [[nodiscard]] std::chrono::milliseconds nextPause();

  tmx::Reactor& m_reactor;
  Broker m_broker;
  std::string m_clientId;
  Message m_will;
  std::function<void()> m_connected;
  std::function<void(const std::string&)> m_lost;
  std::function<void(std::string_view, std::string_view, bool)> m_message;
  std::function<void(int)> m_delivered;

  struct Destroy {
    void operator()(mosquitto* client) const;
  };
  std::unique_ptr<mosquitto, Destroy> m_client;  ///< one for each try
  int m_socket = -1;                             ///< the client's, while it is watched
  bool m_isConnected = false;
  std::string m_failure;            ///< why the connection cannot go on, where the library does not end it
  std::string m_words;              ///< the last error in the words of the library
  std::set<std::string> m_said;     ///< what was logged since a connection stood
  int m_tries = 0;                  ///< since a connection stood
  tmx::Reactor::Timer m_limit = 0;  ///< of a try, then the time for which a connection must stand
  tmx::Reactor::Timer m_next = 0;   ///< the next try, then the next check of the connection
};

}  // namespace mqtt
