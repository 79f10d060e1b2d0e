#pragma once

#include <chrono>
#include <map>
#include <string>
#include <string_view>

#include "bench/load/Client.h"

namespace bench::load {

using Clock = std::chrono::steady_clock;
class Agent;
struct Crowd;

/** The GUID of the agent with this number. */
[[nodiscard]] std::string guidOf(int number);

/** A moment as a text of digits, and back; the clock's start for another text. */
[[nodiscard]] std::string stampOf(Clock::time_point moment);
[[nodiscard]] Clock::time_point momentOf(std::string_view stamp);

/** When which agent of a process connects again. */
using Returns = std::multimap<Clock::time_point, Agent*>;

/** The agent of a camera as docs/mqtt.md has it, with values that mean nothing. */
class Agent : public Client {
 public:
  /** @param crowd where it tells how it fares. */
  Agent(Poll& poll, const Options& options, Crowd& crowd, Returns& returns, int number);

  void connect();
  /** Changes one of its values. @param due the moment that the value tells. */
  void change(Clock::time_point due);

 private:
  void connected() override;
  void lost() override;
  void received(const mosquitto_message& message) override;
  void published() override { acknowledged(); }
  void subscribed() override { acknowledged(); }

  void acknowledged();
  /** So that not all values lie in the library's queue at once. */
  void publishMore();
  void publishValue(int value, Clock::time_point moment);

  const Options& m_options;
  Crowd& m_crowd;
  Returns& m_returns;
  int m_number;         ///< from 0 on
  std::string m_topic;  ///< what all its topics begin with
  Clock::time_point m_wanted;
  int m_published = 0;  ///< of its values, on this connection
  int m_unacknowledged = 0;
  int m_changed = 0;
  int m_failures = 0;  ///< since it was ready
  bool m_isReady = false;
};

}  // namespace bench::load
