#include "Detection.h"

#include <algorithm>
#include <array>

namespace sim {

namespace {

constexpr std::size_t packetSize = 68;
constexpr std::size_t textPlace = 4;

struct Kind {
  int number;
  std::string_view name;
};

constexpr auto kinds = std::to_array<Kind>({
    {1, "motion.status"},
    {2, "motion.level"},
    {3, "motion.area"},
    {17, "tamper.status"},
    {18, "tamper.level"},
    {19, "tamper.temporal"},
    {26, "tamper.aspect"},
    {27, "tamper.agc_mode"},
    {28, "tamper.blc_type"},
    {29, "tamper.senseup"},
    {30, "tamper.reference"},
    {31, "tamper.blc_area"},
    {33, "audio1.status"},
    {34, "audio1.level"},
    {35, "audio1.temporal"},
    {42, "audio2.status"},
    {43, "audio2.level"},
    {44, "audio2.temporal"},
});

std::optional<std::string> nameOf(int kind) {
  const auto* found = std::ranges::find(kinds, kind, &Kind::number);
  return found == kinds.end() ? std::nullopt : std::optional<std::string>(found->name);
}

std::string reply(int result, const std::string& text) {
  std::string bytes(packetSize, '\0');
  putSigned32(bytes, 0, result);
  return bytes.replace(textPlace, text.size(), text);
}

}  // namespace

Detection::Detection(Loop& loop, const std::string& root)
    : Neighbour(loop, "detection", root + "/tmp/detection_request") {}

std::size_t Detection::requestSize(std::string_view bytes) const { return bytes.size() < packetSize ? 0 : packetSize; }

std::string Detection::messageName(std::string_view request) const {
  return nameOf(signed32(request, 0)).value_or("unknown");
}

void Detection::describe(std::string_view request, Journal& line) const {
  line.number("kind", signed32(request, 0)).text("text", textAt(request, textPlace));
}

std::string Detection::answer(std::string_view request) {
  const std::string text = textAt(request, textPlace);
  m_settings[signed32(request, 0)] = text;
  return reply(0, text);
}

std::string Detection::refusal(std::string_view request, std::optional<int> number) const {
  return reply(number.value_or(1), textAt(request, textPlace));
}

void Detection::show(JsonObject& state) const {
  for (const auto& [kind, text] : m_settings)
    state.text(nameOf(kind).value_or(std::to_string(kind)), text);
}

}  // namespace sim
