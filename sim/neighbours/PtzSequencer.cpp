#include "PtzSequencer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace sim {

namespace {

constexpr std::string_view motion = "camera.motion.";
constexpr std::string_view patrolPath = "camera.motion.auto_patrol(0).";
constexpr std::string_view returnPath = "camera.motion.auto_return.";
constexpr std::string_view encoderReset = "enc_reset";

double secondsBetween(Loop::Clock::time_point from, Loop::Clock::time_point to) {
  return std::chrono::duration<double>(to - from).count();
}

std::string factorText(double factor) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.2f", factor);
  return text.data();
}

/** A value with its one letter of kind in front, as "s120" or "x1.50". */
std::optional<double> valueBehind(char letter, const std::string& text) {
  if (text.empty() || text.front() != letter) return std::nullopt;
  return numberFrom<double>(std::string_view(text).substr(1));
}

bool isSpeed(const std::optional<int>& speed) { return speed && *speed >= 0 && *speed <= 100; }

}  // namespace

PtzSequencer::PtzSequencer(Loop& loop, const std::string& root)
    : Neighbour(loop, "ptzseq", root + "/tmp/ptzseq"),
      m_axes{Axis{"pan", "right", "left", &View::pan, 0, 1918, 400},
             Axis{"tilt", "down", "up", &View::tilt, 0, 1078, 400}, Axis{"zoom", "in", "out", &View::zoom, 1, 8, 1}} {
  m_positions[0] = View{};
}

std::string PtzSequencer::messageName(std::string_view request) const {
  if (request == encoderReset) return std::string(encoderReset);
  return request.find('=') == std::string_view::npos ? "read" : "write";
}

void PtzSequencer::describe(std::string_view request, Journal& line) const { line.text("text", request); }

std::string PtzSequencer::refusal(std::string_view /*request*/, std::optional<int> /*number*/) const { return "ERROR"; }

std::string PtzSequencer::answer(std::string_view request) {
  advance();
  if (request == encoderReset) {
    stopMoves();
    return "OK";
  }
  const auto pair = keyAndValue(std::string(request));
  if (pair) return write(pair->first, pair->second) ? "OK" : "ERROR";
  return read(std::string(request)).value_or("ERROR");
}

/** Makes up for the time since the last message: steady moves, patrol, and the return after a time without moves. */
void PtzSequencer::advance() {
  const Time now = this->now();
  for (Axis& axis : m_axes) {
    if (!axis.moving) continue;
    const double way = axis.fullSpeed * axis.speed / 100 * secondsBetween(m_lastUpdate, now);
    double& place = m_view.*axis.place;
    place = std::clamp(axis.mode == axis.forward ? place + way : place - way, axis.lowest, axis.highest);
    m_lastMove = now;
  }
  m_lastUpdate = now;
  if (m_patrolling) return advancePatrol(now);
  if (!m_returns || secondsBetween(m_lastMove, now) < m_returnSeconds) return;
  m_lastMove = now;
  if (m_returnMode == "home") {
    m_view = *m_positions[0];
  } else {
    startPatrol();
  }
}

/** A step without a duration is no part of the patrol; a patrol of such steps alone stays where it is. */
void PtzSequencer::advancePatrol(Time now) {
  m_lastMove = now;
  const bool empty = std::ranges::all_of(m_patrol, [](const Step& step) { return step.seconds <= 0; });
  while (!empty && m_stepEnd <= now) {
    m_step = (m_step + 1) % m_patrol.size();
    const Step& step = m_patrol[m_step];
    if (step.seconds <= 0) continue;
    m_stepEnd += std::chrono::duration_cast<Loop::Clock::duration>(std::chrono::duration<double>(step.seconds));
    const auto& position = m_positions[static_cast<std::size_t>(step.position)];
    if (position) m_view = *position;
  }
}

void PtzSequencer::startPatrol() {
  m_patrolling = true;
  m_step = m_patrol.size() - 1;
  m_stepEnd = now();
  advancePatrol(m_stepEnd);
}

void PtzSequencer::stopMoves() {
  for (Axis& axis : m_axes)
    axis.moving = false;
  m_patrolling = false;
}

/** The axis of a path and what follows its name, empty for the place itself. */
std::optional<PtzSequencer::AxisItem> PtzSequencer::axisItem(const std::string& path) const {
  for (std::size_t i = 0; i < m_axes.size(); ++i) {
    const std::string own = std::string(motion) + m_axes[i].name;
    if (path == own) return AxisItem{i, ""};
    if (path.starts_with(own + ".")) return AxisItem{i, path.substr(own.size() + 1)};
  }
  return std::nullopt;
}

std::optional<std::string> PtzSequencer::read(const std::string& path) const {
  if (const auto found = axisItem(path)) return readAxis(m_axes[found->axis], found->item);
  if (path == "camera.motion.position.speed") return std::to_string(m_positionSpeed);
  if (path == "camera.motion.auto_patrol(0).status") return m_patrolling ? "start" : "stop";
  if (path == "camera.motion.auto_return.status") return m_returns ? "on" : "off";
  if (path == "camera.motion.auto_return.mode") return m_returnMode;
  if (path == "camera.motion.auto_return.timeout") return std::to_string(m_returnSeconds);
  return std::nullopt;
}

std::optional<std::string> PtzSequencer::readAxis(const Axis& axis, const std::string& item) const {
  const double place = m_view.*axis.place;
  if (item.empty()) return axis.name == "zoom" ? factorText(place) : std::to_string(std::lround(place));
  if (item == "status") return axis.moving ? "start" : "stop";
  if (item == "mode") return axis.mode;
  if (item == "speed") return std::to_string(axis.speed);
  return std::nullopt;
}

bool PtzSequencer::write(const std::string& path, const std::string& value) {
  if (const auto found = axisItem(path)) return writeAxis(m_axes[found->axis], found->item, value);
  if (path == "camera.motion.clickoncenter") return centre(value);
  if (path == "camera.motion.position.speed") return setNumber(m_positionSpeed, value);
  if (path.starts_with(returnPath)) return writeReturn(path.substr(returnPath.size()), value);
  if (path.starts_with(patrolPath)) return writePatrol(path.substr(patrolPath.size()), value);
  return writePosition(path, value);
}

bool PtzSequencer::writeAxis(Axis& axis, const std::string& item, const std::string& value) {
  if (item.empty()) {
    const auto place = valueBehind(axis.name == "zoom" ? 'x' : 's', value);
    if (!place || *place < axis.lowest || *place > axis.highest) return false;
    stopMoves();
    m_view.*axis.place = *place;
    m_lastMove = now();
    return true;
  }
  if (item == "status") {
    if (!setSwitch(axis.moving, value, "start", "stop")) return false;
    m_patrolling = m_patrolling && !axis.moving;
    return true;
  }
  if (item == "mode") {
    if (value != axis.forward && value != axis.backward) return false;
    axis.mode = value;
    return true;
  }
  return item == "speed" && isSpeed(numberFrom<int>(value)) && setNumber(axis.speed, value);
}

bool PtzSequencer::writeReturn(const std::string& item, const std::string& value) {
  if (item == "timeout") return setNumber(m_returnSeconds, value);
  if (item == "mode") {
    if (value != "home" && value != "auto_patrol(0)") return false;
    m_returnMode = value;
    return true;
  }
  m_lastMove = now();
  return item == "status" && (setSwitch(m_returns, value, "on", "off") || setSwitch(m_returns, value, "start", "stop"));
}

/** "status", "position(n)", "position(n).duration", "position(n).speed". */
bool PtzSequencer::writePatrol(const std::string& path, const std::string& value) {
  if (path == "status") {
    if (value == "start") startPatrol();
    if (value == "stop") m_patrolling = false;
    return value == "start" || value == "stop" || value == "save";
  }
  unsigned number = 0;
  int used = 0;
  if (std::sscanf(path.c_str(), "position(%u)%n", &number, &used) != 1 || used == 0 || number >= m_patrol.size()) {
    return false;
  }
  Step& step = m_patrol[number];
  const std::string item = path.substr(static_cast<std::size_t>(used));
  if (item == ".duration") return setNumber(step.seconds, value);
  if (item == ".speed") return setNumber(step.speed, value);
  const auto position = numberFrom<unsigned>(value);
  if (!item.empty() || !position || *position >= m_positions.size()) return false;
  step.position = static_cast<int>(*position);
  return true;
}

/** "camera.position(n).status" with what to do with that preset. */
bool PtzSequencer::writePosition(const std::string& path, const std::string& value) {
  unsigned number = 0;
  int used = 0;
  const int found = std::sscanf(path.c_str(), "camera.position(%u).status%n", &number, &used);
  if (found != 1 || used != static_cast<int>(path.size()) || number >= m_positions.size()) return false;
  auto& position = m_positions[number];
  if (value == "save") {
    position = m_view;
    return true;
  }
  if (value == "initialize") {
    position = number == 0 ? std::optional(View{}) : std::nullopt;
    return true;
  }
  if (value != "goto" || !position) return false;
  stopMoves();
  m_view = *position;
  m_lastMove = now();
  return true;
}

/** "sX-sY": the point that becomes the middle of the picture. */
bool PtzSequencer::centre(const std::string& value) {
  const std::size_t divider = value.find('-');
  if (divider == std::string::npos) return false;
  const auto x = valueBehind('s', value.substr(0, divider));
  const auto y = valueBehind('s', value.substr(divider + 1));
  if (!x || !y || *x > m_axes[0].highest || *y > m_axes[1].highest) return false;
  stopMoves();
  m_view.pan = *x;
  m_view.tilt = *y;
  m_lastMove = now();
  return true;
}

bool PtzSequencer::set(const std::string& key, const std::string& value) {
  if (key == "pan") return setNumber(m_view.pan, value);
  if (key == "tilt") return setNumber(m_view.tilt, value);
  if (key == "time") return setSwitch(m_timeStands, value, "stop", "run");
  return key == "zoom" && setNumber(m_view.zoom, value);
}

void PtzSequencer::show(JsonObject& state) const {
  for (const Axis& axis : m_axes) {
    state.text(axis.name, *readAxis(axis, "")).text(axis.name + ".status", *readAxis(axis, "status"));
    state.text(axis.name + ".mode", axis.mode).number(axis.name + ".speed", axis.speed);
  }
  std::vector<std::string> presets;
  for (std::size_t i = 0; i < m_positions.size(); ++i) {
    if (!m_positions[i]) continue;
    const View& view = *m_positions[i];
    presets.push_back(std::to_string(i) + ": " + std::to_string(std::lround(view.pan)) + "," +
                      std::to_string(std::lround(view.tilt)) + "," + factorText(view.zoom));
  }
  state.list("presets", presets).number("preset_speed", m_positionSpeed);
  state.text("patrol", m_patrolling ? "start" : "stop").number("patrol_step", static_cast<int>(m_step));
  state.text("auto_return", m_returns ? "on" : "off").text("return_mode", m_returnMode);
  state.number("return_timeout", m_returnSeconds);
}

}  // namespace sim
