#include "Lens.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace sim {

namespace {

constexpr int complete = 100;

}  // namespace

Lens::Lens(Loop& loop, std::string path) : m_loop(loop), m_path(std::move(path)) {
  std::ifstream file(m_path);
  int position = 0;
  int direction = 0;
  int filter = 0;
  if (!(file >> position >> direction >> filter)) return;
  m_from = m_target = position;
  m_direction = direction;
  m_filter = filter;
}

void Lens::run(int target, Callback ended) {
  m_from = position();
  m_target = std::clamp(target, 0, lastPosition);
  if (m_target != m_from) m_direction = m_target < m_from ? 0 : 1;
  m_start = Loop::Clock::now();
  m_ended = std::move(ended);
  note((m_from + m_target) / 2);
  const unsigned number = ++m_runNumber;
  m_loop.after(m_runTime, [this, number] {
    if (number == m_runNumber && m_stick != Stick::lens) endRun();
  });
}

void Lens::stop() {
  if (!isRunning()) return;
  m_target = position();
  endRun();
}

void Lens::endRun() {
  m_from = m_target;
  note(m_target);
  ++m_runNumber;
  std::exchange(m_ended, nullptr)();
}

int Lens::position() const { return m_from + (m_target - m_from) * progress() / complete; }

/** A lens that sticks does so half way. */
int Lens::progress() const {
  if (!isRunning()) return complete;
  const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Loop::Clock::now() - m_start);
  const auto percent = m_runTime.count() == 0 ? complete : complete * elapsed.count() / m_runTime.count();
  const int most = m_stick == Stick::lens ? complete / 2 : complete - 1;
  return static_cast<int>(std::min<decltype(percent)>(percent, most));
}

void Lens::moveFilter(int place, Callback arrived) {
  const unsigned number = ++m_moveNumber;
  m_loop.after(m_runTime, [this, number, place, arrived = std::move(arrived)] {
    if (number != m_moveNumber || m_stick == Stick::filter) return;
    setFilter(place);
    arrived();
  });
}

void Lens::put(int position) {
  m_from = m_target = std::clamp(position, 0, lastPosition);
  note(m_target);
}

void Lens::setFilter(int place) {
  m_filter = place;
  note(isRunning() ? (m_from + m_target) / 2 : m_target);
}

/** A lens that is freed arrives. */
void Lens::setStick(Stick stick) {
  const bool isFreed = m_stick == Stick::lens && stick != Stick::lens;
  m_stick = stick;
  if (isFreed && isRunning()) endRun();
}

void Lens::note(int position) const {
  std::ofstream(m_path, std::ios::trunc) << position << ' ' << m_direction << ' ' << m_filter << '\n';
}

}  // namespace sim
