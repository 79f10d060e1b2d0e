#include "Gpio.h"

#include <algorithm>

namespace sim {

namespace {

constexpr std::size_t messageSize = 16;
constexpr int acknowledgement = 99;
constexpr int lastPosition = 2000;

struct Command {
  int number;
  std::string_view name;
  bool answered;
};

constexpr auto commands = std::to_array<Command>({
    {0, "init_done", false},      {9, "filter", true},      {10, "focus_assist", false},   {16, "counter", true},
    {17, "set_counter", false},   {20, "switch", true},     {30, "focus_step", false},     {31, "focus_auto", false},
    {32, "night_offset", false},  {33, "factory", false},   {34, "ir_start", false},       {35, "adjust_mode", false},
    {40, "focus_kind", true},     {41, "focus_idle", true}, {42, "focus_direction", true}, {43, "focus_position", true},
    {45, "focus_progress", true}, {50, "mic_gain", true},   {51, "mic_power", true},       {52, "halfduplex", true},
    {53, "loopback", true},
});

constexpr Command unknown{-1, "unknown", true};
constexpr int firstAudioCommand = 50;

const Command& commandOf(std::string_view request) {
  const auto* found = std::ranges::find(commands, signed32(request, 0), &Command::number);
  return found == commands.end() ? unknown : *found;
}

std::string reply(int acknowledge, int command, int value) {
  std::string bytes(messageSize, '\0');
  putSigned32(bytes, 0, acknowledge);
  putSigned32(bytes, 4, command);
  putSigned32(bytes, 8, value);
  return bytes;
}

const char* filterWord(int filter) { return filter == 0 ? "night" : "day"; }

}  // namespace

Gpio::Gpio(Loop& loop, const std::string& root, Pins& pins)
    : Neighbour(loop, "gpio", root + "/tmp/gpio"), m_pins(pins), m_reporter(loop, root + "/tmp/request") {}

std::size_t Gpio::requestSize(std::string_view bytes) const { return bytes.size() < messageSize ? 0 : messageSize; }

std::string Gpio::messageName(std::string_view request) const { return std::string(commandOf(request).name); }

void Gpio::describe(std::string_view request, Journal& line) const {
  line.number("command", signed32(request, 0));
  line.number("a", signed32(request, 4)).number("b", signed32(request, 8)).number("c", signed32(request, 12));
}

std::string Gpio::answer(std::string_view request) {
  const int command = signed32(request, 0);
  order(command, signed32(request, 4), signed32(request, 8));
  if (!commandOf(request).answered) return "";
  return reply(acknowledgement, command, query(command, signed32(request, 4)));
}

std::string Gpio::refusal(std::string_view request, std::optional<int> number) const {
  if (!commandOf(request).answered) return "";
  return reply(number.value_or(0), signed32(request, 0), 0);
}

int Gpio::query(int command, int first) const {
  switch (command) {
    case 9:
      return m_filter;
    case 16:
      return first >= 0 && first < static_cast<int>(m_counters.size()) ? m_counters[static_cast<std::size_t>(first)]
                                                                       : 0;
    case 20:
      return m_switch;
    case 40:
      return m_kind;
    case 41:
      return m_running ? 0 : 1;
    case 42:
      return m_direction;
    case 43:
      return m_position;
    case 45:
      return progress();
    default:
      return 0;
  }
}

void Gpio::order(int command, int first, int second) {
  switch (command) {
    case 0:
      return report("camera.focus.gpiofrom.status=stop");
    case 10:
      m_assist = first;
      return;
    case 17:
      if (first >= 0 && first < static_cast<int>(m_counters.size()))
        m_counters[static_cast<std::size_t>(first)] = second;
      return;
    case 30:
      m_direction = first < 0 ? 0 : 1;
      return startRun(0, m_position + first);
    case 31:
      return runAuto(first);
    case 32:
      m_nightOffset = first;
      return startRun(0, m_position);
    case 33:
      return startRun(0, m_factoryPosition);
    case 34:
      return startRun(0, m_position);
    case 35:
      m_adjustMode = first;
      if (first == 1) startRun(0, m_position);
      return;
    case firstAudioCommand:
    case firstAudioCommand + 1:
    case firstAudioCommand + 2:
    case firstAudioCommand + 3:
      m_audio[static_cast<std::size_t>(command - firstAudioCommand)] = first;
      return;
    default:
      return;
  }
}

void Gpio::runAuto(int mode) {
  constexpr std::array<int, 4> kinds{0, 1, 5, 6};
  if (mode < 0 || mode >= static_cast<int>(kinds.size())) return;
  if (mode == 0) return endRun();
  startRun(kinds[static_cast<std::size_t>(mode)], m_sharpPosition);
}

void Gpio::startRun(int kind, int target) {
  m_kind = kind;
  m_position = std::clamp(target, 0, lastPosition);
  ++m_counters[1];
  m_running = true;
  m_runStart = Loop::Clock::now();
  const unsigned number = ++m_runNumber;
  loop().after(std::chrono::milliseconds(m_runMilliseconds), [this, number] {
    if (number == m_runNumber) endRun();
  });
}

void Gpio::endRun() {
  if (!m_running) return;
  m_running = false;
  report("camera.focus.gpiofrom.status=" + m_result);
}

int Gpio::progress() const {
  constexpr int complete = 100;
  if (!m_running || m_runMilliseconds == 0) return complete;
  const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Loop::Clock::now() - m_runStart).count();
  return static_cast<int>(std::min<decltype(elapsed)>(complete * elapsed / m_runMilliseconds, complete - 1));
}

bool Gpio::setFilter(const std::string& value) {
  const int before = m_filter;
  if (!setNumber(m_filter, value)) return false;
  if (before == m_filter) return true;
  ++m_counters[0];
  report(std::string("camera.focus.gpiofrom.check_status=") + filterWord(m_filter));
  report(std::string("camera.focus.gpiofrom.icr_status=") + filterWord(m_filter));
  return true;
}

void Gpio::report(const std::string& text) {
  if (m_reports) m_reporter.report(text);
}

bool Gpio::set(const std::string& key, const std::string& value) {
  if (key == "icr") return setFilter(value);
  if (key == "switch") return setNumber(m_switch, value);
  if (key == "kind") return setNumber(m_kind, value);
  if (key == "direction") return setNumber(m_direction, value);
  if (key == "position") return setNumber(m_position, value);
  if (key == "factory") return setNumber(m_factoryPosition, value);
  if (key == "sharp") return setNumber(m_sharpPosition, value);
  if (key == "ir_counter") return setNumber(m_counters[0], value);
  if (key == "run_counter") return setNumber(m_counters[1], value);
  if (key == "led_counter") return setNumber(m_counters[2], value);
  if (key == "run") return setNumber(m_runMilliseconds, value) && m_runMilliseconds >= 0;
  if (key == "report") return setSwitch(m_reports, value, "on", "off");
  if (key == "result") {
    m_result = value;
    return true;
  }
  return m_pins.set(key, value);
}

void Gpio::show(JsonObject& state) const {
  state.number("icr", m_filter).number("switch", m_switch);
  state.number("ir_counter", m_counters[0]).number("run_counter", m_counters[1]).number("led_counter", m_counters[2]);
  state.text("drive", m_running ? "running" : "idle").number("kind", m_kind).number("progress", progress());
  state.number("direction", m_direction).number("position", m_position).number("factory", m_factoryPosition);
  state.number("sharp", m_sharpPosition).number("assist", m_assist).number("night_offset", m_nightOffset);
  state.number("adjust_mode", m_adjustMode).number("run", m_runMilliseconds).text("result", m_result);
  state.number("mic_gain", m_audio[0]).number("mic_power", m_audio[1]).number("halfduplex", m_audio[2]);
  state.number("loopback", m_audio[3]).text("report", m_reports ? "on" : "off");
}

}  // namespace sim
