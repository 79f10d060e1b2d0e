#pragma once

#include <vector>

#include "bench/load/Agent.h"

namespace bench::load {

/** Who subscribes to the values of all agents, and asks them. */
class Observer : public Client {
 public:
  Observer(Poll& poll, const Options& options);

  /** Connects and subscribes, and does so again when it lost the connection. */
  void connect();
  /** Asks the agent with this number for one value. */
  void ask(int number);
  /** Like Client's, and comes back when it is time to. */
  void care();

  /** What has arrived since the last reset. */
  struct Arrivals {
    long retained = 0;
    std::vector<double> changes;  ///< seconds from the moment that the value tells
    std::vector<double> answers;  ///< seconds from the request
  };
  [[nodiscard]] const Arrivals& arrivals() const { return m_arrivals; }
  void reset() { m_arrivals = {}; }

 private:
  void connected() override;
  void lost() override;
  void received(const mosquitto_message& message) override;

  const Options& m_options;
  Arrivals m_arrivals;
  Clock::time_point m_return = Clock::time_point::max();
};

}  // namespace bench::load
