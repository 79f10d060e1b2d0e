#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace tmx {

using Clock = std::chrono::steady_clock;

/** One thread's loop: calls who waits for a descriptor or for a moment. */
class Reactor {
 public:
  using Ready = std::function<void(short events)>;
  using Timer = std::uint64_t;

  /** Watches a descriptor for poll()'s events, in the place of what was said of it before. */
  void watch(int descriptor, short events, Ready ready);
  /** Changes the events of a descriptor that is watched; errors and the other end's leaving are always heard of. */
  void setEvents(int descriptor, short events);
  /** To be called before the descriptor is closed. */
  void forget(int descriptor);

  /** Calls once, behind the given time. The result is never 0. */
  Timer after(std::chrono::milliseconds time, std::function<void()> due);
  /** Nothing happens where it is over, or 0. */
  void cancel(Timer timer);

  /** Serves for ever. */
  [[noreturn]] void run();

 private:
  struct Watch {
    std::uint64_t serial;  ///< a descriptor closed and opened again in one round is another one
    short events;
    std::shared_ptr<Ready> ready;
  };
  struct Due {
    Clock::time_point at;
    std::function<void()> call;
  };

  void runTimers();
  [[nodiscard]] int untilNextTimer() const;

  std::map<int, Watch> m_watches;
  std::map<Timer, Due> m_timers;
  std::uint64_t m_serial = 0;
};

}  // namespace tmx
