#include <cstdio>
#include <optional>
#include <string_view>

#include "cli/Commands.h"
#include "cli/Json.h"

namespace tmx {
namespace {

/** Whether the path, with its selectors, lies at or below the one that was asked for. */
bool isBelow(std::string_view path, std::string_view asked) {
  if (!path.starts_with(asked)) return false;
  const char next = path.size() == asked.size() ? '.' : path[asked.size()];
  return asked.empty() || next == '.' || next == '(';
}

/** The nodes with every one behind those below it. */
std::vector<Node> childrenFirst(const std::vector<Node>& nodes) {
  std::vector<Node> ordered;
  std::vector<Node> open;
  const auto closeDownTo = [&](std::size_t depth) {
    for (; !open.empty() && open.back().depth >= depth; open.pop_back())
      ordered.push_back(open.back());
  };
  for (const Node& node : nodes) {
    closeDownTo(node.depth);
    open.push_back(node);
  }
  closeDownTo(0);
  return ordered;
}

/** Writing a gain by hand ends an automatic mode, so the mode, which stands above the gain, has to be loaded last. */
std::vector<Item> settingsBelow(const Description& description, const std::string& path, UserClass user) {
  std::vector<Item> items;
  for (const Node& node : childrenFirst(description.below(path))) {
    if (node.parameter == nullptr || !node.parameter->value("setting", false)) continue;
    if (!mayRead(*node.parameter, user) || !mayWrite(*node.parameter, user)) continue;
    for (const std::string& full : expandSelectors(*node.parameter)) {
      if (isBelow(full, path)) items.push_back(Item::read(full));
    }
  }
  return items;
}

void printSetting(const Session& session, const Answer& answer) {
  const std::string value = session.shown(answer.value);
  if (answer.accepted() && answer.hasValue && value.find('\n') == std::string::npos) {
    std::printf("%s=%s\n", answer.path.c_str(), value.c_str());
  } else if (!session.options().isQuiet) {
    std::printf("# %s: %d %s\n", answer.path.c_str(), answer.status, answer.statusText.c_str());
  }
}

}  // namespace

int runDump(const Session& session, const Arguments& arguments) {
  if (arguments.size() > 1) return usageError("one PATH at most");
  const std::string path = arguments.empty() ? std::string() : arguments.front();
  const std::optional<Description> description = Description::load();
  if (!description) return kExitRefused;
  const std::vector<Item> items = settingsBelow(*description, path, session.options().user);
  if (items.empty()) {
    std::fprintf(stderr, "tmxctl: there is no setting at \"%s\"\n", path.c_str());
    return kExitRefused;
  }
  bool hasValues = false;
  std::optional<JsonArray> json;
  if (session.options().isJson) json.emplace();
  const int result = session.run(items, [&](const std::vector<Answer>& answers) {
    for (const Answer& answer : answers) {
      hasValues = hasValues || answer.accepted();
      if (!json) {
        printSetting(session, answer);
      } else if (answer.accepted()) {
        json->add(JsonObject().text("path", answer.path).text("value", session.shown(answer.value)));
      }
    }
  });
  // Which selectors and features this camera has is known to the daemon alone, so single refusals are no failure.
  return result == kExitRefused && hasValues ? kExitOk : result;
}

}  // namespace tmx
