#include "Loop.h"

#include <poll.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace sim {

void Loop::run() {
  while (m_running) {
    std::vector<pollfd> polled;
    for (const auto& [descriptor, callback] : m_watches)
      polled.push_back({descriptor, POLLIN, 0});
    const int ready = ::poll(polled.data(), polled.size(), waitTime());
    runDueTimers();
    if (ready == 0) runIdleCallbacks();
    if (ready <= 0) continue;
    for (const pollfd& entry : polled) {
      if (entry.revents == 0) continue;
      // A callback before this one may have removed the watch.
      const auto watch = m_watches.find(entry.fd);
      if (watch == m_watches.end()) continue;
      const Callback callback = watch->second;
      callback();
    }
  }
}

void Loop::runDueTimers() {
  const Clock::time_point now = Clock::now();
  while (!m_timers.empty() && m_timers.begin()->first <= now) {
    const Callback callback = std::move(m_timers.begin()->second);
    m_timers.erase(m_timers.begin());
    callback();
  }
}

void Loop::runIdleCallbacks() {
  for (const Callback& callback : std::exchange(m_idleCallbacks, {}))
    callback();
}

int Loop::waitTime() const {
  if (!m_idleCallbacks.empty()) return 0;
  if (m_timers.empty()) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_timers.begin()->first - Clock::now()).count();
  return static_cast<int>(std::clamp<decltype(left)>(left, 0, std::numeric_limits<int>::max()));
}

}  // namespace sim
