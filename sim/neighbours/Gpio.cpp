#include "Gpio.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

constexpr std::size_t messageSize = 16;
constexpr int acknowledgement = 99;

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

constexpr auto sticks = std::to_array<std::pair<std::string_view, Lens::Stick>>(
    {{"off", Lens::Stick::nothing}, {"lens", Lens::Stick::lens}, {"filter", Lens::Stick::filter}});

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

std::string_view stickWord(Lens::Stick stick) {
  return std::ranges::find(sticks, stick, [](const auto& known) { return known.second; })->first;
}

const char* filterWord(int filter) { return filter == 0 ? "night" : "day"; }

}  // namespace

Gpio::Gpio(Loop& loop, const std::string& root, Pins& pins)
    : Neighbour(loop, "gpio", root + "/tmp/gpio"),
      m_pins(pins),
      m_reporter(loop, root + "/tmp/request"),
      m_picturePath(root + "/run/camera/picture"),
      m_lens(loop, root + "/run/camera/lens") {}

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
      return m_lens.filter();
    case 16:
      return first >= 0 && first < static_cast<int>(m_counters.size()) ? m_counters[static_cast<std::size_t>(first)]
                                                                       : 0;
    case 20:
      return m_switch;
    case 40:
      return m_kind;
    case 41:
      return m_lens.isRunning() ? 0 : 1;
    case 42:
      return m_lens.direction();
    case 43:
      return m_lens.position();
    case 45:
      return m_lens.progress();
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
      return startRun(0, m_lens.position() + first);
    case 31:
      return runAuto(first);
    case 32:
      m_nightOffset = first;
      return startRun(0, m_lens.position());
    case 33:
      return startRun(0, m_factoryPosition);
    case 34:
      return startRun(0, m_lens.position());
    case 35:
      m_adjustMode = first;
      if (first == 1) startRun(0, m_lens.position());
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
  if (mode == 0) return m_lens.stop();
  startRun(kinds[static_cast<std::size_t>(mode)], m_sharpPosition);
}

void Gpio::startRun(int kind, int target) {
  m_kind = kind;
  count(1);
  m_lens.run(target, [this] { report("camera.focus.gpiofrom.status=" + m_result); });
}

bool Gpio::setFilter(const std::string& value) {
  int place = m_lens.filter();
  if (!setNumber(place, value)) return false;
  if (place == m_lens.filter()) return true;
  m_lens.setFilter(place);
  count(0);
  report(std::string("camera.focus.gpiofrom.check_status=") + filterWord(place));
  report(std::string("camera.focus.gpiofrom.icr_status=") + filterWord(place));
  return true;
}

/** The move is announced, takes its time, and is reported. */
void Gpio::follow(int filter) {
  if (filter == m_lens.filter()) return;
  report(std::string("camera.focus.gpiofrom.check_status=") + filterWord(filter));
  m_lens.moveFilter(filter, [this, filter] {
    count(0);
    report(std::string("camera.focus.gpiofrom.icr_status=") + filterWord(filter));
  });
}

bool Gpio::setFollow(const std::string& value) {
  bool follows = false;
  if (!setSwitch(follows, value, "on", "off")) return false;
  m_picture.reset();
  if (follows) m_picture = std::make_unique<PictureLine>(loop(), m_picturePath, [this](int filter) { follow(filter); });
  return true;
}

bool Gpio::setStick(const std::string& value) {
  const auto* found = std::ranges::find(sticks, value, [](const auto& stick) { return stick.first; });
  if (found == sticks.end()) return false;
  m_lens.setStick(found->second);
  return true;
}

bool Gpio::setLens(const std::string& key, const std::string& value) {
  int number = 0;
  if (!setNumber(number, value)) return false;
  if (key == "direction") {
    m_lens.setDirection(number);
  } else {
    m_lens.put(number);
  }
  return true;
}

bool Gpio::setRunTime(const std::string& value) {
  int milliseconds = 0;
  if (!setNumber(milliseconds, value) || milliseconds < 0) return false;
  m_lens.setRunTime(milliseconds);
  return true;
}

void Gpio::report(const std::string& text) {
  if (m_reports) m_reporter.report(text);
}

bool Gpio::set(const std::string& key, const std::string& value) {
  if (key == "icr") return setFilter(value);
  if (key == "switch") return setNumber(m_switch, value);
  if (key == "kind") return setNumber(m_kind, value);
  if (key == "direction" || key == "position") return setLens(key, value);
  if (key == "factory") return setNumber(m_factoryPosition, value);
  if (key == "sharp") return setNumber(m_sharpPosition, value);
  if (key == "ir_counter") return setNumber(m_counters[0], value);
  if (key == "run_counter") return setNumber(m_counters[1], value);
  if (key == "led_counter") return setNumber(m_counters[2], value);
  if (key == "run") return setRunTime(value);
  if (key == "follow") return setFollow(value);
  if (key == "stick") return setStick(value);
  if (key == "report") return setSwitch(m_reports, value, "on", "off");
  if (key == "result") {
    m_result = value;
    return true;
  }
  return m_pins.set(key, value);
}

void Gpio::show(JsonObject& state) const {
  state.number("icr", m_lens.filter()).number("switch", m_switch);
  state.number("ir_counter", m_counters[0]).number("run_counter", m_counters[1]).number("led_counter", m_counters[2]);
  state.text("drive", m_lens.isRunning() ? "running" : "idle").number("kind", m_kind);
  state.number("progress", m_lens.progress()).number("direction", m_lens.direction());
  state.number("position", m_lens.position()).number("factory", m_factoryPosition);
  state.number("sharp", m_sharpPosition).number("assist", m_assist).number("night_offset", m_nightOffset);
  state.number("adjust_mode", m_adjustMode).number("run", m_lens.runTime()).text("result", m_result);
  state.text("follow", m_picture ? "on" : "off").text("stick", stickWord(m_lens.stick()));
  state.number("mic_gain", m_audio[0]).number("mic_power", m_audio[1]).number("halfduplex", m_audio[2]);
  state.number("loopback", m_audio[3])
      .text("report", m_reports ? "on" : "off")
      .number("waiting", static_cast<int>(m_reporter.waiting()));
}

}  // namespace sim
