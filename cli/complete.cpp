#include <cstdio>
#include <optional>

#include "cli/Commands.h"

namespace tmx {
namespace {

/** Prints what begins with the word, in front of which `front` stands on the command line. */
void offer(const std::string& front, std::string_view word, const std::string& candidate) {
  if (candidate.starts_with(word)) std::printf("%s%s\n", front.c_str(), candidate.c_str());
}

/** What stands behind "path=". */
void offerValues(const Description& description, const std::string& word, std::size_t equals) {
  const Parameter* parameter = description.find(word.substr(0, equals));
  if (parameter == nullptr) return;
  const std::string front = word.substr(0, equals + 1);
  const std::string typed = word.substr(equals + 1);
  if (parameter->contains("takes")) {
    const Parameter& takes = parameter->at("takes");
    for (const char* list : {"words", "numbers", "taken"}) {
      for (const Parameter& value : takes.value(list, Parameter::array()))
        offer(front, typed, value.is_string() ? value.get<std::string>() : value.dump());
    }
    if (takes.value("steps", false)) {
      offer(front, typed, "+");
      offer(front, typed, "-");
    }
  }
  for (const Parameter& command : parameter->value("commands", Parameter::array()))
    offer(front, typed, command.at("word"));
}

/** The selector of a layer among those of the parameters below it; a null pointer for a layer that takes any. */
const Parameter* selectorOf(const std::vector<Node>& below, const std::string& layer) {
  for (const Node& node : below) {
    if (node.parameter == nullptr) continue;
    for (const Parameter& selector : node.parameter->at("selectors"))
      if (selector.at("layer") == layer && selector.at("values").front() != "") return &selector;
    return nullptr;
  }
  return nullptr;
}

/** What stands between the brackets that are open. */
void offerSelectors(const Description& description, const std::string& word, std::size_t bracket) {
  const std::vector<Node> below = description.below(word.substr(0, bracket));
  if (below.empty()) return;
  const Parameter* selector = selectorOf(below, below.front().path);
  if (selector == nullptr) return;
  for (const Parameter& value : selector->at("values"))
    offer(word.substr(0, bracket + 1), word.substr(bracket + 1), value.get<std::string>() + ")");
}

/** The next layer: with a "." where it goes on, with a "(" where it takes a selector, with a "=" where it is written.
 */
void offerLayers(const Description& description, const std::string& word) {
  const std::size_t dot = word.rfind('.');
  const std::string front = dot == std::string::npos ? "" : word.substr(0, dot + 1);
  const std::string typed = word.substr(front.size());
  const std::vector<Node> below = description.below(front.empty() ? "" : front.substr(0, dot));
  const std::size_t depth = front.empty() ? 0 : below.empty() ? 0 : below.front().depth + 1;
  for (std::size_t i = 0; i < below.size(); ++i) {
    const Node& node = below[i];
    if (node.depth != depth) continue;
    const std::string name(node.name());
    const bool hasMore = i + 1 < below.size() && below[i + 1].depth > depth;
    const std::vector<Node> part(below.begin() + static_cast<std::ptrdiff_t>(i), below.end());
    if (selectorOf(part, node.path) != nullptr) offer(front, typed, name + "(");
    if (hasMore) offer(front, typed, name + ".");
    if (node.parameter != nullptr) offer(front, typed, name);
    if (node.parameter != nullptr && node.parameter->contains("takes")) offer(front, typed, name + "=");
  }
}

}  // namespace

int runComplete(const Session& /*session*/, const Arguments& arguments) {
  const std::optional<Description> description = Description::find();
  if (!description) return kExitRefused;
  const std::string word = arguments.empty() ? "" : arguments.front();
  const std::size_t equals = word.find('=');
  const std::size_t bracket = word.rfind('(');
  if (equals != std::string::npos) {
    offerValues(*description, word, equals);
  } else if (bracket != std::string::npos && word.find(')', bracket) == std::string::npos) {
    offerSelectors(*description, word, bracket);
  } else {
    offerLayers(*description, word);
  }
  return kExitOk;
}

}  // namespace tmx
