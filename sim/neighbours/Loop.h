#pragma once

#include <poll.h>

#include <chrono>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace sim {

/**
 * The one poll loop of the program: readable descriptors and due times call back on the only thread. Callbacks may add
 * and remove watches and timers freely. Owned by main and outlives everything that registers here.
 */
class Loop {
 public:
  using Clock = std::chrono::steady_clock;
  using Callback = std::function<void()>;

  /** Calls back whenever the descriptor is readable or its peer has gone, until unwatch(). */
  void watch(int descriptor, Callback callback) {
    m_watches.emplace(++m_lastWatch, Watch{descriptor, std::move(callback)});
  }
  void unwatch(int descriptor);

  /** Calls back once; a callback whose owner may be gone by then must find that out by itself. */
  void after(std::chrono::milliseconds delay, Callback callback) {
    m_timers.emplace(Clock::now() + delay, std::move(callback));
  }

  /** Calls back once, as soon as no descriptor is readable: what was sent before has been dealt with then. */
  void whenIdle(Callback callback) { m_idleCallbacks.push_back(std::move(callback)); }

  void run();
  void stop() { m_running = false; }

 private:
  struct Watch {
    int descriptor;
    Callback callback;
  };

  void serve(const std::vector<pollfd>& polled, const std::vector<unsigned>& numbers);
  void runDueTimers();
  void runIdleCallbacks();
  [[nodiscard]] int waitTime() const;

  bool m_running = true;
  unsigned m_lastWatch = 0;
  /** By age: of two clients that are readable at once, the one that came first has its turn first. */
  std::map<unsigned, Watch> m_watches;
  std::multimap<Clock::time_point, Callback> m_timers;
  std::vector<Callback> m_idleCallbacks;
};

}  // namespace sim
