#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "tests/camera/Camera.h"

struct mosquitto;

namespace test {

using Json = nlohmann::json;

/** A TCP port of the loopback address that nobody uses. */
[[nodiscard]] int freePort();

/** A fleet's Mosquitto, of its own and with certificates of its own; it keeps nothing when it ends. */
class Broker {
 public:
  Broker();
  ~Broker();
  Broker(const Broker&) = delete;
  Broker& operator=(const Broker&) = delete;

  void start();
  /** Waits until it has gone. */
  void signal(int number);
  void kill();

  [[nodiscard]] int port() const { return m_port; }
  /** The certificate of a name, "operator" or a camera's, without ".pem"; it is made where it is missing. */
  [[nodiscard]] std::string certificate(const std::string& name) const;
  [[nodiscard]] std::string authority() const { return m_folder / "ca.pem"; }
  /** Puts the certificate of this name onto the camera's flash, where kTls finds it. */
  void equip(const Camera& camera, const std::string& name) const;

  /** Lines of a configuration of a camera that is equipped, whose uplink leads here. */
  static constexpr const char* kTls =
      "broker=127.0.0.1:8883\nca=/mnt/flash/mqtt/ca.pem\ncertificate=/mnt/flash/mqtt/certificate.pem\n"
      "key=/mnt/flash/mqtt/key.pem\n";

 private:
  std::filesystem::path m_folder;
  int m_port;
  pid_t m_pid = -1;
};

/** A client with a certificate of the given name, that sees what the broker lets it see of everything. */
class Client {
 public:
  Client(const Broker& broker, const std::string& name);

  /** Hears what has come, and connects anew where the connection is lost. */
  void hear();
  /** Hears until it is so; false where it is not in a time that is longer than anything takes. */
  [[nodiscard]] bool await(const std::function<bool()>& isIt);
  /** Hears until the retained payload of the topic is this one. */
  [[nodiscard]] bool await(const std::string& topic, const std::string& payload);
  void publish(const std::string& topic, const std::string& payload, bool isRetained = false);

  /** The retained payload; empty without one. */
  [[nodiscard]] std::string at(const std::string& topic) const;
  [[nodiscard]] const std::map<std::string, std::string>& topics() const { return m_topics; }
  void forget() { m_topics.clear(); }
  /** Sends a request with an answer topic and waits for the answer; one of another id is left out. */
  Json ask(const std::string& guid, const std::string& id, const Json& items);
  /** The answers so far. */
  std::vector<Json> answers;

 private:
  struct Callbacks;
  struct Destroy {
    void operator()(mosquitto* client) const;
  };
  std::unique_ptr<mosquitto, Destroy> m_client;
  std::map<std::string, std::string> m_topics;
  bool m_isSubscribed = false;
};

}  // namespace test
