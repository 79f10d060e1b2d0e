#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <vector>

#include "bench/load/Agent.h"

namespace bench::load {

/** What the processes that play agents share with the one that leads them. */
struct Crowd {
  Clock::time_point start = Clock::now();        ///< when the first agent connects
  std::atomic<int> ready = 0;                    ///< agents whose values are all acknowledged
  std::atomic<long> acknowledged = 0;            ///< messages
  std::atomic<long> lost = 0;                    ///< connections that ended or did not come about
  std::array<double, kMostAgents> waits{};       ///< seconds from an agent's call for a connection until ready
  std::atomic<int> round = 0;                    ///< of changes; what follows holds for this one
  std::atomic<int> rate = 0;                     ///< changes a second
  std::atomic<Clock::time_point> changesFrom{};  ///< when the first change is due
};

/** Plays every so manieth agent in this process until it is ended. */
class Share {
 public:
  /** @param first the first of its agents. @param step what lies between two of them. */
  Share(const Options& options, Crowd& crowd, int first, int step);

  [[noreturn]] void play();

 private:
  void connectWhoIsDue();
  void careForAll();
  void changeWhatIsDue();

  const Options& m_options;
  Crowd& m_crowd;
  int m_first;
  int m_step;
  Poll m_poll;
  Returns m_returns;
  std::vector<std::unique_ptr<Agent>> m_agents;
  std::size_t m_called = 0;  ///< agents that have connected once
  std::size_t m_cared = 0;   ///< how often an agent was cared for, of all agents together
  int m_round = 0;
  long m_changed = 0;  ///< in this round, by all processes
};

}  // namespace bench::load
