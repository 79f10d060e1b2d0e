#include "local/ModelFeature.h"

#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr const char* kModelFile = "/mnt/flash/model.conf";

std::string_view trim(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view cutLine(std::string_view* text) {
  const size_t end = text->find('\n');
  const std::string_view line = text->substr(0, end);
  text->remove_prefix(end == std::string_view::npos ? text->size() : end + 1);
  return line;
}

}  // namespace

ModelFeature::Flags ModelFeature::parse(std::string_view text) {
  Flags flags{};
  std::array<bool, kCount> isDecided{};
  while (!text.empty()) {
    const std::string_view line = cutLine(&text);
    const size_t sign = line.find('=');
    if (sign == std::string_view::npos) continue;
    const std::string_view key = trim(line.substr(0, sign));
    const bool isOn = trim(line.substr(sign + 1)) == "TRUE";
    for (size_t i = 1; i < kCount; ++i) {
      if (isDecided[i] || key.find(name(static_cast<Feature>(i))) == std::string_view::npos) continue;
      isDecided[i] = true;
      flags[i] = isOn;
    }
  }
  return flags;
}

ModelFeature::ModelFeature() {
  std::ifstream file(kModelFile);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  m_flags = parse(text);
}

bool ModelFeature::has(Feature feature) {
  static const ModelFeature model;
  return model.m_flags[static_cast<size_t>(feature)];
}
