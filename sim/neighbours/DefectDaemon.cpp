#include "DefectDaemon.h"

#include <algorithm>
#include <array>

#include "Bytes.h"

namespace sim {

namespace {

enum Command : unsigned char {
  stopStatic = 0x10,
  startStatic = 0x11,
  stopPattern = 0x12,
  startPattern = 0x13,
  staticStatus = 0x20,
  patternStatus = 0x21,
  staticCount = 0x30,
  patternCount = 0x31
};

struct CommandName {
  unsigned char number;
  std::string_view name;
};

constexpr auto commandNames = std::to_array<CommandName>({
    {stopStatic, "static_stop"},
    {startStatic, "static_start"},
    {stopPattern, "fpn_stop"},
    {startPattern, "fpn_start"},
    {staticStatus, "static_status"},
    {patternStatus, "fpn_status"},
    {staticCount, "static_count"},
    {patternCount, "fpn_count"},
});

constexpr char accepted = 1;
constexpr char declined = 2;
constexpr char completedCode = 0x20;
constexpr char adjustingCode = 0x21;
constexpr char errorCode = 0x22;

unsigned char commandOf(std::string_view request) { return static_cast<unsigned char>(request[0]); }

bool concernsPattern(unsigned char command) {
  constexpr std::array<unsigned char, 4> patternCommands{stopPattern, startPattern, patternStatus, patternCount};
  return std::ranges::find(patternCommands, command) != patternCommands.end();
}

std::string countText(std::uint16_t count) {
  std::string bytes(2, '\0');
  putWord16(bytes, 0, count);
  return bytes;
}

}  // namespace

DefectDaemon::DefectDaemon(Loop& loop, const std::string& root) : Neighbour(loop, "defect", root + "/tmp/dd_request") {}

std::string DefectDaemon::messageName(std::string_view request) const {
  const auto* found = std::ranges::find(commandNames, commandOf(request), &CommandName::number);
  return found == commandNames.end() ? "unknown" : std::string(found->name);
}

void DefectDaemon::describe(std::string_view request, Journal& line) const {
  line.text("command", hexNumber(commandOf(request)));
}

std::string DefectDaemon::answer(std::string_view request) {
  const unsigned char command = commandOf(request);
  Run& run = concernsPattern(command) ? m_pattern : m_static;
  switch (command) {
    case startStatic:
    case startPattern:
      start(run);
      return {accepted, 0};
    case stopStatic:
    case stopPattern:
      if (run.state == "adjusting") end(run, found(run));
      return {accepted, 0};
    case staticStatus:
    case patternStatus:
      return status(run);
    case staticCount:
    case patternCount:
      return countText(found(run));
    default:
      return {declined, 0};
  }
}

/** A status is refused by the error number, an order by the answer that it was not accepted. */
std::string DefectDaemon::refusal(std::string_view request, std::optional<int> number) const {
  const unsigned char command = commandOf(request);
  const char code = static_cast<char>(number.value_or(1));
  if (command == staticStatus || command == patternStatus) return {errorCode, code};
  return {declined, 0};
}

void DefectDaemon::start(Run& run) {
  run.state = "adjusting";
  run.begin = Loop::Clock::now();
  const unsigned number = ++run.number;
  loop().after(std::chrono::milliseconds(m_runMilliseconds), [&run, number] {
    if (number == run.number && run.state == "adjusting") end(run, run.present);
  });
}

void DefectDaemon::end(Run& run, std::uint16_t count) {
  run.state = "completed";
  run.count = count;
}

std::uint16_t DefectDaemon::found(const Run& run) const {
  if (run.state != "adjusting" || m_runMilliseconds == 0) return run.count;
  const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Loop::Clock::now() - run.begin).count();
  return static_cast<std::uint16_t>(run.present * std::min<std::int64_t>(elapsed, m_runMilliseconds) /
                                    m_runMilliseconds);
}

/** A count beyond one byte is told by its own command. */
std::string DefectDaemon::status(const Run& run) const {
  if (run.state == "adjusting") return {adjustingCode, 0};
  if (run.state == "error") return {errorCode, static_cast<char>(run.error)};
  return {completedCode, static_cast<char>(std::min<int>(run.count, 255))};
}

bool DefectDaemon::setRun(Run& run, const std::string& item, const std::string& value) {
  if (item == "_count") return setNumber(run.present, value) && setNumber(run.count, value);
  if (item == "_error") return setNumber(run.error, value);
  if (!item.empty() || (value != "completed" && value != "adjusting" && value != "error")) return false;
  ++run.number;
  run.state = value;
  run.begin = Loop::Clock::now();
  return true;
}

/** "static=adjusting", "static_count=12", "static_error=3", the same with "fpn", "run=MILLISECONDS". */
bool DefectDaemon::set(const std::string& key, const std::string& value) {
  if (key == "run") return setNumber(m_runMilliseconds, value) && m_runMilliseconds >= 0;
  if (key.starts_with("static")) return setRun(m_static, key.substr(6), value);
  return key.starts_with("fpn") && setRun(m_pattern, key.substr(3), value);
}

void DefectDaemon::show(JsonObject& state) const {
  state.text("static", m_static.state).number("static_count", found(m_static)).number("static_error", m_static.error);
  state.text("fpn", m_pattern.state).number("fpn_count", found(m_pattern)).number("fpn_error", m_pattern.error);
  state.number("run", m_runMilliseconds);
}

}  // namespace sim
