#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "access/Reactor.h"
#include "access/Upstream.h"
#include "access/Waiting.h"
#include "cli/Item.h"
#include "web/Connection.h"

namespace console {

/** What a monitoring system asks for, in Prometheus' text form. Whoever asks within 2 s of another gets the same. */
class Metrics {
 public:
  Metrics(tmx::Upstream& upstream, tmx::Waiting& waiting) : m_upstream(upstream), m_waiting(waiting) {}

  void serve(const std::shared_ptr<Connection>& client);

  /** To be told of each request to the daemon. */
  void noteAnswer(bool isAnswered, tmx::Clock::duration time);

 private:
  void take(const std::vector<tmx::Answer>& answers);
  [[nodiscard]] std::string text() const;
  [[nodiscard]] std::string requestTimes() const;

  tmx::Upstream& m_upstream;
  tmx::Waiting& m_waiting;
  std::vector<std::weak_ptr<Connection>> m_clients;  ///< who waits for what is being read
  std::vector<std::string> m_values;                 ///< as they are read, empty where one cannot be
  tmx::Clock::time_point m_read = {};
  static constexpr std::array<double, 10> kBounds{0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.5, 2, 10};  // seconds
  std::array<std::uint64_t, kBounds.size()> m_counts{};  ///< of the requests up to each bound
  std::uint64_t m_requests = 0;
  double m_seconds = 0;  ///< that they took
};

}  // namespace console
