#include "tests/camera/Description.h"

#include <algorithm>
#include <fstream>
#include <limits>

namespace test {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kNotUnderstood = 451;
constexpr int kInvalidRange = 457;

std::string shown(double number) {
  std::string text = std::to_string(number);
  text.erase(text.find_last_not_of('0') + 1);
  return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

/** Both ends, and one beyond each that a number of 32 bits can be. */
void drawRange(double low, double high, int outside, std::vector<Drawn>& values) {
  values.push_back({shown(low)});
  values.push_back({shown(high)});
  if (low > std::numeric_limits<int32_t>::min()) values.push_back({shown(low - 1), outside});
  if (high < std::numeric_limits<int32_t>::max()) values.push_back({shown(high + 1), outside});
}

void drawSteps(const Json& takes, std::vector<Drawn>& values) {
  if (!takes["steps"]) return;
  values.push_back({"+"});
  values.push_back({"-"});
}

void drawList(const Json& takes, std::vector<Drawn>& values) {
  int next = 0;
  for (const int number : takes["numbers"]) {
    values.push_back({std::to_string(number)});
    next = std::max(next, number) + 1;
  }
  values.push_back({std::to_string(next), kInvalidRange});
  values.push_back({"x", kNotUnderstood});
  drawSteps(takes, values);
}

void drawText(const Json& takes, std::vector<Drawn>& values) {
  const size_t longest = takes["longest"];
  constexpr size_t kLongestRequest = 900;  // a path stands in front
  if (!takes.contains("taken")) {
    values.push_back({std::string(std::max(takes["shortest"].get<size_t>(), size_t{1}), 'a')});
    values.push_back({std::string(std::min(longest, kLongestRequest), 'a')});
  }
  if (longest < kLongestRequest) values.push_back({std::string(longest + 1, 'a'), takes["longer"]});
  const std::string forbidden = takes["forbidden"];
  for (const char c : forbidden)
    values.push_back({std::string("a") + c, kNotUnderstood});
}

}  // namespace

const Json& description() {
  static const Json json = Json::parse(std::ifstream(TMX_DESCRIPTION));
  return json;
}

std::vector<Drawn> draw(const Json& parameter) {
  const Json& takes = parameter["takes"];
  const std::string kind = takes["kind"];
  std::vector<Drawn> values;
  if (kind == "words") {
    for (const std::string word : takes["words"])
      values.push_back({word});
    values.push_back({values.front().value + "x", kNotUnderstood});
  } else if (kind == "number") {
    drawRange(takes["low"], takes["high"], takes["outside"], values);
    values.push_back({"x", takes["other"]});
    drawSteps(takes, values);
  } else if (kind == "list") {
    drawList(takes, values);
  } else if (kind == "decimal") {
    drawRange(takes["low"], takes["high"], kInvalidRange, values);
    values.push_back({"x", kNotUnderstood});
  } else if (kind == "hexadecimal") {
    const size_t digits = takes["digits"];
    values = {{std::string(digits, 'a')}, {std::string(digits + 1, 'a'), kInvalidRange}, {"x", kNotUnderstood}};
  } else if (kind == "text") {
    drawText(takes, values);
  }
  for (const std::string value : takes.value("taken", Json::array()))
    values.push_back({value});
  for (const std::string value : takes.value("refused", Json::array()))
    values.push_back({value, takes["other"]});
  return values;
}

}  // namespace test
