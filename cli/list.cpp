#include <array>
#include <cstdio>
#include <optional>

#include "cli/Commands.h"
#include "cli/Json.h"

namespace tmx {
namespace {

struct Level {
  const char* name;
  std::size_t readPosition;
};

/** The classes that the permission string speaks of; the two others pass every test of it. */
constexpr std::array<Level, 3> kLevels = {{{"administrator", 0}, {"operator", 2}, {"user", 4}}};

/** What the two positions of one class grant, in words. */
const char* rights(const std::string& permission, std::size_t readPosition) {
  const bool reads = permission.size() > readPosition && permission[readPosition] == 'R';
  const bool writes = permission.size() > readPosition + 1 && permission[readPosition + 1] == 'W';
  if (reads && writes) return "reads and writes";
  if (reads) return "reads";
  return writes ? "writes" : "no access";
}

int notInList(const std::string& path) {
  std::fprintf(stderr, "tmxctl: %s: there is no such parameter in the list\n", path.c_str());
  return kExitRefused;
}

/** Loads the list and selects the nodes below the one path that the command may have been given. */
int selectNodes(const Session& session, const Arguments& arguments, bool withShortNames, std::vector<ApiNode>& nodes) {
  if (arguments.size() > 1) return usageError("one PATH at most");
  const std::string path = arguments.empty() ? std::string() : arguments.front();
  ApiList list;
  if (!session.loadList(list)) return kExitRefused;
  nodes = list.below(path, withShortNames);
  return nodes.empty() ? notInList(path) : kExitOk;
}

JsonObject toJson(const ApiNode& node) {
  JsonObject object;
  object.text("path", node.path).text("permission", node.permission).text("class", node.className);
  return object;
}

/** True when a node of the same depth follows before one that stands higher. */
bool hasSibling(const std::vector<ApiNode>& nodes, std::size_t index) {
  for (std::size_t i = index + 1; i < nodes.size() && nodes[i].depth >= nodes[index].depth; ++i) {
    if (nodes[i].depth == nodes[index].depth) return true;
  }
  return false;
}

void showLeaf(const ApiNode& node) {
  std::printf("  permission     %s\n  class          %s\n", node.permission.c_str(), node.className.c_str());
  for (const Level& level : kLevels)
    std::printf("  %-13s  %s\n", level.name, rights(node.permission, level.readPosition));
  std::printf("  onvif, debug   not tested\n");
}

void showChildren(const std::vector<ApiNode>& below) {
  const char* title = "  below it      ";
  for (const ApiNode& node : below) {
    if (node.depth != below.front().depth + 1) continue;
    std::printf("%s %.*s\n", title, static_cast<int>(node.name().size()), node.name().data());
    title = "                ";
  }
}

}  // namespace

int runTree(const Session& session, const Arguments& arguments) {
  std::vector<ApiNode> nodes;
  if (const int result = selectNodes(session, arguments, false, nodes); result != kExitOk) return result;
  std::vector<std::string> indents;  // what stands in front of the children of each depth
  const std::size_t top = nodes.front().depth;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const ApiNode& node = nodes[i];
    const std::size_t depth = node.depth - top;
    const bool isRoot = depth == 0;
    const bool isLast = !hasSibling(nodes, i);
    indents.resize(depth);
    const std::string indent = isRoot ? std::string() : indents.back();
    const std::string name = isRoot ? node.path : std::string(node.name());
    std::printf("%s%s%s%s%s\n", indent.c_str(),
                isRoot   ? ""
                : isLast ? "└── "
                         : "├── ",
                name.c_str(), node.isLeaf() ? "  " : "", node.permission.c_str());
    indents.push_back(isRoot ? "" : indent + (isLast ? "    " : "│   "));
  }
  return kExitOk;
}

int runList(const Session& session, const Arguments& arguments) {
  std::vector<ApiNode> nodes;
  if (const int result = selectNodes(session, arguments, true, nodes); result != kExitOk) return result;
  std::optional<JsonArray> json;
  if (session.options().isJson) json.emplace();
  for (const ApiNode& node : nodes) {
    if (!node.isLeaf()) continue;
    if (json) {
      json->add(toJson(node));
    } else if (session.options().isQuiet) {
      std::printf("%s\n", node.path.c_str());
    } else {
      std::printf("%s  %s\n", node.permission.c_str(), node.path.c_str());
    }
  }
  return kExitOk;
}

int runShow(const Session& session, const Arguments& arguments) {
  if (arguments.empty()) return usageError("show takes paths");
  ApiList list;
  if (!session.loadList(list)) return kExitRefused;
  std::optional<JsonArray> json;
  if (session.options().isJson) json.emplace();
  int result = kExitOk;
  for (const std::string& path : arguments) {
    const ApiNode* node = list.find(path);
    if (node == nullptr) {
      result = notInList(path);
    } else if (json) {
      json->add(toJson(*node));
    } else {
      std::printf("%s\n", node->path.c_str());
      if (node->isLeaf()) showLeaf(*node);
      showChildren(list.below(path));
    }
  }
  return result;
}

}  // namespace tmx
