#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "Loop.h"

namespace sim {

/**
 * The lens with its focus drive and the infrared cut filter. A run moves the lens evenly and takes its time; a stop
 * leaves it where it is. What sticks never arrives. Both stay where they are when the power goes: a file says where
 * they are found then, the lens of a run half way. Owned by the GPIO daemon.
 */
class Lens {
 public:
  static constexpr int lastPosition = 2000;
  enum class Stick { nothing, lens, filter };
  using Callback = std::function<void()>;

  Lens(Loop& loop, std::string path);

  /** Starts a run; calls back at its end, whether it arrived or was stopped. */
  void run(int target, Callback ended);
  void stop();
  [[nodiscard]] bool isRunning() const { return m_ended != nullptr; }
  [[nodiscard]] int position() const;
  /** Percent of the run. */
  [[nodiscard]] int progress() const;
  [[nodiscard]] int direction() const { return m_direction; }

  /** Moves the filter; calls back when it has arrived. */
  void moveFilter(int place, Callback arrived);
  [[nodiscard]] int filter() const { return m_filter; }

  // By hand, at once.
  void put(int position);
  void setFilter(int place);
  void setDirection(int direction) { m_direction = direction; }
  void setRunTime(int milliseconds) { m_runTime = std::chrono::milliseconds(milliseconds); }
  [[nodiscard]] int runTime() const { return static_cast<int>(m_runTime.count()); }
  void setStick(Stick stick);
  [[nodiscard]] Stick stick() const { return m_stick; }

 private:
  void endRun();
  /** Notes where the lens is found if the power goes now. */
  void note(int position) const;

  Loop& m_loop;
  std::string m_path;
  std::chrono::milliseconds m_runTime{300};
  Stick m_stick = Stick::nothing;

  int m_from = 500;
  int m_target = 500;
  int m_direction = 1;
  int m_filter = 1;
  Loop::Clock::time_point m_start;
  Callback m_ended;
  unsigned m_runNumber = 0;
  unsigned m_moveNumber = 0;
};

}  // namespace sim
