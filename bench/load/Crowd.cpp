#include "bench/load/Crowd.h"

namespace bench::load {
namespace {

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

}  // namespace

Share::Share(const Options& options, Crowd& crowd, int first, int step)
    : m_options(options), m_crowd(crowd), m_first(first), m_step(step) {
  for (int number = first; number < options.agents; number += step)
    m_agents.push_back(std::make_unique<Agent>(m_poll, options, crowd, m_returns, number));
}

void Share::play() {
  while (true) {
    connectWhoIsDue();
    changeWhatIsDue();
    careForAll();
    m_poll.serve();
  }
}

void Share::connectWhoIsDue() {
  const double due = secondsSince(m_crowd.start) * m_options.connections / m_step;
  for (; m_called < m_agents.size() && static_cast<double>(m_called) < due; ++m_called)
    m_agents[m_called]->connect();
  while (!m_returns.empty() && m_returns.begin()->first <= Clock::now())
    m_returns.extract(m_returns.begin()).mapped()->connect();
}

void Share::careForAll() {
  // Each agent once a second, and never all of them at once: who waits for a message would wait for that too.
  const auto due = static_cast<std::size_t>(secondsSince(m_crowd.start) * static_cast<double>(m_agents.size()));
  for (; m_cared < due; ++m_cared)
    m_agents[m_cared % m_agents.size()]->care();
}

void Share::changeWhatIsDue() {
  if (m_round != m_crowd.round) {
    m_round = m_crowd.round;
    m_changed = 0;
  }
  const int rate = m_crowd.rate;
  const Clock::time_point start = m_crowd.changesFrom;
  const double now = secondsSince(start);
  for (; m_changed < static_cast<long>(rate) * m_options.seconds && static_cast<double>(m_changed) / rate < now;
       ++m_changed) {
    const int agent = static_cast<int>(m_changed % m_options.agents);
    if (agent % m_step != m_first) continue;
    // A value tells the moment that it was due, so that a broker or an agent that stalls shows in what waits behind.
    const std::chrono::duration<double> due(static_cast<double>(m_changed) / rate);
    m_agents[static_cast<std::size_t>(agent / m_step)]->change(start +
                                                               std::chrono::duration_cast<Clock::duration>(due));
  }
}

}  // namespace bench::load
