#include "Fault.h"

#include <algorithm>
#include <array>
#include <utility>

namespace sim {

namespace {

constexpr auto names = std::to_array<std::pair<std::string_view, Fault::Kind>>({
    {"none", Fault::Kind::none},
    {"silent", Fault::Kind::silent},
    {"short", Fault::Kind::cut},
    {"garbage", Fault::Kind::garbage},
    {"refuse", Fault::Kind::refuse},
    {"slow", Fault::Kind::slow},
    {"early", Fault::Kind::early},
    {"leave", Fault::Kind::leave},
    {"endless", Fault::Kind::endless},
    {"huge", Fault::Kind::huge},
    {"drip", Fault::Kind::drip},
});

const auto* findName(std::string_view word) {
  return std::ranges::find(names, word, [](const auto& entry) { return entry.first; });
}

}  // namespace

std::string faultName(Fault::Kind kind) {
  const auto* found = std::ranges::find(names, kind, [](const auto& entry) { return entry.second; });
  return std::string(found->first);
}

bool isFaultName(const std::string& word) { return findName(word) != names.end(); }

std::optional<Fault> parseFault(const Words& words) {
  if (words.empty() || !isFaultName(words.front())) return std::nullopt;
  Fault fault{findName(words.front())->second, std::nullopt, ""};
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (words[i].starts_with("for=")) {
      fault.message = words[i].substr(4);
    } else if (fault.number = numberFrom<int>(words[i]); !fault.number) {
      return std::nullopt;
    }
  }
  if (fault.kind == Fault::Kind::drip && !fault.number) fault.number = 1000;
  const bool isTimed = fault.kind == Fault::Kind::slow || fault.kind == Fault::Kind::drip;
  if (isTimed && fault.number.value_or(-1) < 0) return std::nullopt;
  return fault;
}

}  // namespace sim
