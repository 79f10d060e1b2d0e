#include <cstdio>
#include <optional>
#include <string_view>

#include "cli/Catalogue.h"
#include "cli/Commands.h"
#include "cli/Json.h"

namespace tmx {
namespace {

/** Whether the class may read and write the leaf; the two classes that are not tested may do whatever it can. */
bool isReadWrite(const ApiNode& node, UserClass user) {
  if (node.permission.size() != 6) return false;
  const auto column = static_cast<std::size_t>(user) * 2;
  if (column < 6) return node.permission[column] == 'R' && node.permission[column + 1] == 'W';
  return node.permission.find('R') != std::string::npos && node.permission.find('W') != std::string::npos;
}

/** Whether the path, with its selectors, lies at or below the one that was asked for. */
bool isBelow(std::string_view path, std::string_view asked) {
  if (!path.starts_with(asked)) return false;
  const char next = path.size() == asked.size() ? '.' : path[asked.size()];
  return asked.empty() || next == '.' || next == '(';
}

/** The nodes with every one behind those below it. */
std::vector<ApiNode> childrenFirst(const std::vector<ApiNode>& nodes) {
  std::vector<ApiNode> ordered;
  std::vector<ApiNode> open;
  const auto closeDownTo = [&](std::size_t depth) {
    for (; !open.empty() && open.back().depth >= depth; open.pop_back())
      ordered.push_back(open.back());
  };
  for (const ApiNode& node : nodes) {
    closeDownTo(node.depth);
    open.push_back(node);
  }
  closeDownTo(0);
  return ordered;
}

/** Writing a gain by hand ends an automatic mode, so the mode, which stands above the gain, has to be loaded last. */
std::vector<Item> settingsBelow(const ApiList& list, const std::string& path, UserClass user) {
  std::vector<Item> items;
  for (const ApiNode& node : childrenFirst(list.below(path, false))) {
    if (!isReadWrite(node, user) || !isSetting(node.path)) continue;
    for (const std::string& full : expandSelectors(node.path)) {
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
  ApiList list;
  if (!session.loadList(list)) return kExitRefused;
  const std::vector<Item> items = settingsBelow(list, path, session.options().user);
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
