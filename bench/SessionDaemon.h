#pragma once

#include <string>
#include <vector>

#include "bench/Statistics.h"

namespace bench {

/** A bare client of the session daemon that repeats the exchanges which one request of the daemon's made. */
class SessionDaemon {
 public:
  /** @param journal the camera's journal; what stands in it from `start` on is what is repeated. */
  SessionDaemon(std::string socket, const std::string& journal, long start);

  [[nodiscard]] std::size_t exchanges() const { return m_requests.size(); }
  /** The cost of all the exchanges, one connection each. */
  [[nodiscard]] Cost exchangeAll(int times) const;

 private:
  [[nodiscard]] bool exchange(const std::string& request) const;

  std::string m_socket;
  std::vector<std::string> m_requests;
};

}  // namespace bench
