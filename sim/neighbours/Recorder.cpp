#include "Recorder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

#include "RecorderIds.h"

namespace sim {

namespace {

constexpr std::size_t packetSize = 1012;
constexpr std::size_t argumentAt = 4;
constexpr std::size_t idAt = 8;
constexpr std::size_t valueAt = 12;

constexpr int success = 2;
constexpr int refused = 3;
constexpr int failed = 5;
constexpr int okStatus = 200;
constexpr int notAllowed = 405;

enum Command { get = 0, put_ = 1, restart = 4, status = 6, led = 8, image = 9, bootInfo = 10, encoderChange = 12 };

struct CommandName {
  int number;
  std::string_view name;
};

constexpr auto commandNames = std::to_array<CommandName>({
    {get, "get"},
    {put_, "put"},
    {restart, "restart"},
    {status, "status"},
    {led, "led"},
    {image, "image_mode"},
    {bootInfo, "boot_info"},
    {encoderChange, "encoder_change"},
});

/** Two arguments each: on, then off. */
constexpr std::array<std::string_view, 4> ledNames{"stealth", "identify", "green", "orange"};

constexpr int imageColor = 8;

std::string packet(int command, int id) {
  std::string bytes(packetSize, '\0');
  putSigned32(bytes, 0, command);
  putSigned32(bytes, idAt, id);
  return bytes;
}

bool isPrintable(const std::string& text) {
  return !text.empty() && std::ranges::all_of(text, [](unsigned char c) { return c >= 0x80 || std::isprint(c) != 0; });
}

std::string ledName(int argument) {
  const auto index = static_cast<std::size_t>(argument) / 2;
  if (argument < 0 || index >= ledNames.size()) return "unknown";
  return std::string(ledNames[index]);
}

bool isPassword(std::uint32_t id) { return recorderIdName(id).ends_with(".password"); }

std::string hidden(const std::string& text) { return std::string(text.size(), '*'); }

const char* ledState(int argument) { return argument % 2 == 0 ? "on" : "off"; }

}  // namespace

Recorder::Recorder(Loop& loop, const std::string& root, Pins& pins)
    : Neighbour(loop, "recorder", root + "/tmp/localrec"), m_pins(pins), m_rules(m_values, root + "/run/camera/clock") {
  m_pins.onInput = [this](const std::string& word) { m_rules.happened(word); };
}

std::size_t Recorder::requestSize(std::string_view bytes) const { return bytes.size() < packetSize ? 0 : packetSize; }

std::string Recorder::messageName(std::string_view request) const {
  const auto* found = std::ranges::find(commandNames, signed32(request, 0), &CommandName::number);
  return found == commandNames.end() ? "unknown" : std::string(found->name);
}

std::string Recorder::recorded(std::string_view request) const {
  std::string shown(request);
  if (signed32(request, 0) == put_ && isPassword(word32(request, idAt))) {
    const std::string text = textAt(request, valueAt);
    shown.replace(valueAt, text.size(), hidden(text));
  }
  return shown;
}

void Recorder::describe(std::string_view request, Journal& line) const {
  const int command = signed32(request, 0);
  const int argument = signed32(request, argumentAt);
  line.number("command", command).number("arg", argument);
  if (command == led) line.text("led", ledName(argument)).text("state", ledState(argument));
  if (command == get || command == put_) {
    const std::uint32_t id = word32(request, idAt);
    line.text("id", hexNumber(id)).text("name", recorderIdName(id));
  }
  if (command == put_ || command == restart) line.number("value", signed32(request, valueAt));
  const std::string text = textAt(request, valueAt);
  if ((command == put_ || command == bootInfo) && isPrintable(text)) line.text("text", text);
}

std::string Recorder::answer(std::string_view request) {
  const int argument = signed32(request, argumentAt);
  const std::uint32_t id = word32(request, idAt);
  std::string reply = packet(success, okStatus);
  switch (signed32(request, 0)) {
    case get: {
      const std::string value = valueOf(id);
      return reply.replace(valueAt, value.size(), value);
    }
    case put_:
      put(id, request.substr(valueAt));
      return reply;
    case restart:
      m_lastRestart = signed32(request, valueAt);
      m_rules.restart(m_lastRestart);
      return reply;
    case status:
      return packet(success, m_status);
    case led:
      m_leds[ledName(argument)] = argument % 2 == 0;
      return reply;
    case image:
      m_imageMode = argument == imageColor ? "color" : "bw";
      return reply;
    case bootInfo:
      m_model = textAt(request, valueAt);
      m_imageMode = argument == 0 ? "bw" : "color";
      return reply;
    case encoderChange:
      return reply;
    default:
      return packet(failed, 0);
  }
}

/** With 5 a failure; any other number N is a refusal with the status N, 405 without a number. */
std::string Recorder::refusal(std::string_view /*request*/, std::optional<int> number) const {
  if (number == failed) return packet(failed, 0);
  return packet(refused, -number.value_or(notAllowed));
}

/** The level of pin P of group 1 has P in the four bits above the lowest. */
bool* Recorder::pinOf(std::uint32_t id) const {
  for (std::uint32_t pin = 0; pin < m_pins.input.size(); ++pin) {
    const std::uint32_t field = (pin + 1) << 4;
    if (id == (0x131401 | field)) return &m_pins.input[pin];
    if (id == (0x151401 | field)) return &m_pins.output[pin];
  }
  return nullptr;
}

std::string Recorder::valueOf(std::uint32_t id) const {
  if (const bool* pin = pinOf(id)) {
    std::string word(4, '\0');
    putWord32(word, 0, *pin ? 1 : 0);
    return word;
  }
  return m_values.bytes(id);
}

void Recorder::put(std::uint32_t id, std::string_view value) {
  if (bool* pin = pinOf(id)) {
    *pin = signed32(value, 0) != 0;
  } else {
    m_values.put(id, value);
  }
}

/** A pin, "status=N", "now=monday-120000" or "now=clock", or "0x210200=TEXT" with "#5" for a number. */
bool Recorder::set(const std::string& key, const std::string& value) {
  if (key == "status") return setNumber(m_status, value);
  if (key == "now") {
    const auto moment = parseWeekTime(value);
    m_rules.setNow(moment);
    return moment.has_value() || value == "clock";
  }
  if (!key.starts_with("0x")) return m_pins.set(key, value);
  std::uint32_t id = 0;
  const auto [end, fault] = std::from_chars(key.data() + 2, key.data() + key.size(), id, 16);
  if (fault != std::errc{} || end != key.data() + key.size() || value.size() > packetSize - valueAt - 4) return false;
  std::string bytes = value + std::string(4, '\0');
  if (value.starts_with('#')) {
    const auto number = numberFrom<std::int32_t>(std::string_view(value).substr(1));
    if (!number) return false;
    bytes.assign(4, '\0');
    putSigned32(bytes, 0, *number);
  }
  put(id, bytes);
  return true;
}

void Recorder::show(JsonObject& state) const {
  const auto level = [](bool made) { return made ? "make" : "break"; };
  state.text("pin1", level(m_pins.input[0])).text("pin2", level(m_pins.input[1]));
  state.text("out1", level(m_pins.output[0])).text("out2", level(m_pins.output[1]));
  state.number("status", m_status).number("last_restart", m_lastRestart);
  state.text("model", m_model).text("image_mode", m_imageMode);
  for (const auto& [name, on] : m_leds)
    state.text(name, on ? "on" : "off");
  for (const auto& [id, value] : m_values.all()) {
    const bool isSecret = isPassword(id);
    const std::string text = isSecret ? hidden(textAt(value, 0)) : textAt(value, 0);
    const bool isText = isSecret || (text.size() > 1 && isPrintable(text));
    state.text(hexNumber(id), isText ? text : std::to_string(signed32(value, 0)));
  }
}

}  // namespace sim
