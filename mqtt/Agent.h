#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/Catalogue.h"
#include "access/Reactor.h"
#include "access/Reader.h"
#include "access/Requests.h"
#include "access/Upstream.h"
#include "access/Waiting.h"
#include "mqtt/Config.h"
#include "mqtt/FlashWatch.h"
#include "mqtt/Link.h"
#include "mqtt/Orders.h"
#include "mqtt/Outbox.h"
#include "mqtt/Topics.h"

namespace mqtt {

/** Whether the configuration has the path's value published; some may not be read again and again. */
[[nodiscard]] bool isPublished(const Config& config, const tmx::Traits& parameter, const std::string& path);

/** One camera at a broker, docs/mqtt.md. */
class Agent {
 public:
  /**
   * @param opener see tmx::startOpener().
   * @param paths which values are published.
   * @param description the file that the catalogue was loaded from.
   */
  Agent(tmx::Reactor& reactor, int opener, const Config& config, const tmx::Catalogue& catalogue,
        std::vector<std::string> paths, std::string description);

  /** Says that the camera is away, and ends the connection. */
  void close();

 private:
  /** What is there once the camera has told who it is. */
  struct Connection {
    Connection(Agent& agent, const std::string& guid);
    Link link;
    Outbox outbox;
    Orders orders;
  };

  void introduce();
  void begin(const std::vector<tmx::Answer>& answers);
  void connected();
  void announce();
  [[nodiscard]] std::string address() const;
  void tellValues();
  void compareSoon();
  void compare();
  [[nodiscard]] std::string topic(const std::string& end) const { return cameraTopic(m_guid, end); }

  tmx::Reactor& m_reactor;
  const Config& m_config;
  const tmx::Catalogue& m_catalogue;
  std::vector<std::string> m_paths;
  std::string m_description;
  tmx::Account m_account;
  tmx::Upstream m_upstream;
  tmx::Waiting m_waiting;
  tmx::Requests m_requests;
  tmx::Reader m_reader;
  std::optional<FlashWatch> m_flash;
  std::string m_guid;
  std::string m_model;
  std::string m_version;
  std::string m_port;  ///< of the camera's encrypted web server
  std::unique_ptr<Connection> m_connection;
  bool m_answers = true;
  std::uint64_t m_told = 0;  ///< the change of a value that was handed on
  int m_comparisons = 0;     ///< that are still to be made
  tmx::Reactor::Timer m_nextComparison = 0;
};

}  // namespace mqtt
