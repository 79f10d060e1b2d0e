#include "Loop.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace sim {

void Loop::unwatch(int descriptor) {
  std::erase_if(m_watches, [&](const auto& entry) { return entry.second.descriptor == descriptor; });
}

void Loop::run() {
  while (m_running) {
    std::vector<pollfd> polled;
    std::vector<unsigned> numbers;
    for (const auto& [number, watch] : m_watches) {
      polled.push_back({watch.descriptor, POLLIN, 0});
      numbers.push_back(number);
    }
    const int ready = ::poll(polled.data(), polled.size(), waitTime());
    runDueTimers();
    if (ready == 0) runIdleCallbacks();
    if (ready > 0) serve(polled, numbers);
  }
}

void Loop::serve(const std::vector<pollfd>& polled, const std::vector<unsigned>& numbers) {
  for (std::size_t i = 0; i < polled.size(); ++i) {
    if (polled[i].revents == 0) continue;
    // A callback before this one may have removed the watch.
    const auto watch = m_watches.find(numbers[i]);
    if (watch == m_watches.end()) continue;
    const Callback callback = watch->second.callback;
    callback();
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
