#pragma once

#include <mosquitto.h>

#include <cstdint>
#include <string>

#include "bench/load/Options.h"

namespace bench::load {

/** An epoll descriptor. */
class Poll {
 public:
  Poll();
  Poll(const Poll&) = delete;
  Poll& operator=(const Poll&) = delete;
  ~Poll();
  /** Serves the clients whose sockets are ready; waits a millisecond at most when there is none. */
  void serve() const;
  [[nodiscard]] int descriptor() const { return m_descriptor; }

 private:
  int m_descriptor;
};

/** One connection with a broker: MQTT 3.1.1, a clean session, everything that it publishes with QoS 1. */
class Client {
 public:
  /** @param security stays the caller's. */
  Client(Poll& poll, std::string id, const Security& security);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  virtual ~Client();

  /**
   * Begins to connect, without anything of an earlier connection; connected() or lost() follows.
   * @param willTopic where the last will goes, retained; empty: nowhere.
   * @throws std::runtime_error when the library refuses, for the certificate's sake as a rule.
   */
  void connect(const Address& address, const std::string& willTopic = "", const std::string& will = "");
  /** Does what time asks for, pings for one: to be called once a second. */
  void care();
  /** Deals with what epoll reports. */
  void serve(std::uint32_t events);

 protected:
  virtual void connected() = 0;
  /** The connection is gone, or did not come about. */
  virtual void lost() = 0;
  virtual void received(const mosquitto_message& message) = 0;
  /** The broker has acknowledged a message. */
  virtual void published() {}
  virtual void subscribed() {}

  void publish(const std::string& topic, const std::string& payload, bool isRetained);
  void subscribe(const std::string& topic, int quality);

 private:
  void secure();
  void setCallbacks();
  /** The library may tell the end of a connection more than once. */
  void end();
  /** Has epoll wait for what the library waits for. */
  void update();

  Poll& m_poll;
  std::string m_id;
  const Security& m_security;
  mosquitto* m_mosquitto;
  int m_descriptor = -1;
  std::uint32_t m_events = 0;
  bool m_isOpen = false;
  bool m_hasWritten = false;  ///< whether the socket has been ready for it
};

}  // namespace bench::load
