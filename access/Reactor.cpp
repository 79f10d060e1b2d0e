#include "access/Reactor.h"

#include <poll.h>

#include <algorithm>
#include <vector>

namespace tmx {

void Reactor::watch(int descriptor, short events, Ready ready) {
  m_watches[descriptor] = {++m_serial, events, std::make_shared<Ready>(std::move(ready))};
}

void Reactor::setEvents(int descriptor, short events) { m_watches.at(descriptor).events = events; }

void Reactor::forget(int descriptor) { m_watches.erase(descriptor); }

Reactor::Timer Reactor::after(std::chrono::milliseconds time, std::function<void()> due) {
  m_timers[++m_serial] = {Clock::now() + time, std::move(due)};
  return m_serial;
}

void Reactor::cancel(Timer timer) { m_timers.erase(timer); }

void Reactor::run() {
  std::vector<pollfd> descriptors;
  std::vector<std::uint64_t> serials;
  while (true) {
    descriptors.clear();
    serials.clear();
    for (const auto& [descriptor, watch] : m_watches) {
      descriptors.push_back({descriptor, watch.events, 0});
      serials.push_back(watch.serial);
    }
    if (poll(descriptors.data(), descriptors.size(), untilNextTimer()) > 0) {
      for (std::size_t i = 0; i < descriptors.size(); ++i) {
        if (descriptors[i].revents == 0) continue;
        const auto watch = m_watches.find(descriptors[i].fd);
        if (watch == m_watches.end() || watch->second.serial != serials[i]) continue;
        const std::shared_ptr<Ready> ready = watch->second.ready;  // it may forget itself
        (*ready)(descriptors[i].revents);
      }
    }
    runTimers();
  }
}

void Reactor::runTimers() {
  const auto now = Clock::now();
  std::vector<Timer> due;
  for (const auto& [timer, what] : m_timers) {
    if (what.at <= now) due.push_back(timer);
  }
  for (const Timer timer : due) {
    auto what = m_timers.extract(timer);  // an earlier one may have cancelled it
    if (!what.empty()) what.mapped().call();
  }
}

int Reactor::untilNextTimer() const {
  if (m_timers.empty()) return -1;
  const auto next = std::min_element(m_timers.begin(), m_timers.end(),
                                     [](const auto& a, const auto& b) { return a.second.at < b.second.at; });
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(next->second.at - Clock::now()).count();
  return static_cast<int>(std::max<decltype(rest)>(rest, 0));
}

}  // namespace tmx
