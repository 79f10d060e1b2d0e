#include <cstdio>
#include <optional>

#include "cli/Commands.h"
#include "cli/Json.h"

namespace tmx {
namespace {

int notThere(const std::string& path) {
  std::fprintf(stderr, "tmxctl: %s: there is no such parameter\n", path.c_str());
  return kExitRefused;
}

/** "RWRWR-": the rights of administrator, operator and user. */
std::string permission(const Parameter& parameter) {
  std::string text;
  for (const auto& [name, pair] : parameter.at("rights").items())
    text += pair.get<std::string>();
  return text;
}

/** Loads the description and selects the nodes below the one path that the command may have been given. */
int selectNodes(std::optional<Description>& description, const Arguments& arguments, std::vector<Node>& nodes) {
  if (arguments.size() > 1) return usageError("one PATH at most");
  const std::string path = arguments.empty() ? std::string() : arguments.front();
  description = Description::load();
  if (!description) return kExitRefused;
  nodes = description->below(path);
  return nodes.empty() ? notThere(path) : kExitOk;
}

/** True when a node of the same depth follows before one that stands higher. */
bool hasSibling(const std::vector<Node>& nodes, std::size_t index) {
  for (std::size_t i = index + 1; i < nodes.size() && nodes[i].depth >= nodes[index].depth; ++i) {
    if (nodes[i].depth == nodes[index].depth) return true;
  }
  return false;
}

void line(const char* title, const std::string& text) {
  if (!text.empty()) std::printf("  %-9s  %s\n", title, text.c_str());
}

void showSelectors(const Parameter& parameter) {
  for (const Parameter& selector : parameter.at("selectors")) {
    std::string text = selector.at("layer").get<std::string>() + "(" + selector.at("text").get<std::string>() + ")";
    if (selector.contains("without")) text += ", without brackets " + selector.at("without").get<std::string>();
    if (selector.contains("needs")) text += ", only with " + selector.at("needs").get<std::string>();
    line("selector", text);
  }
}

void showParameter(const Parameter& parameter) {
  std::printf("  %s\n", parameter.at("summary").get<std::string>().c_str());
  line("takes", takenInWords(parameter));
  line("default", parameter.value("default", ""));
  showSelectors(parameter);
  for (const Parameter& condition : parameter.value("conditions", Parameter::array()))
    line(condition.at("of") == "writes" ? "written" : "served", "only " + condition.at("text").get<std::string>());
  line("in force", parameter.value("when", ""));
  if (parameter.contains("commitStops")) line("stops", parameter.at("commitStops"));
  line("rights", rightsInWords(parameter));
}

void showChildren(const std::vector<Node>& below) {
  const char* title = "below it";
  for (const Node& node : below) {
    if (node.depth != below.front().depth + 1) continue;
    std::printf("  %-9s  %.*s\n", title, static_cast<int>(node.name().size()), node.name().data());
    title = "";
  }
}

/** Whether the class of --as may read and write the path here and now, and why not. */
int showAccess(const Session& session, const Parameter& parameter, const std::string& path) {
  const UserClass user = session.options().user;
  int result = kExitOk;
  std::string text = mayRead(parameter, user) ? "" : "may not read: " + rightsInWords(parameter);
  if (text.empty()) {
    const auto tell = [&](const std::vector<Answer>& answers) {
      const Answer& answer = answers.front();
      text = answer.accepted() ? "may read" : "cannot read: " + answer.lines.substr(answer.lines.find('&') + 1);
      const std::string why = answer.accepted() ? "" : reason(parameter, answer.status);
      if (!why.empty()) text += ": " + why;
    };
    result = session.run({Item::read(path)}, tell);
  }
  line(userName(user), text);
  line("", mayWrite(parameter, user) ? "may write" : "may not write: " + rightsInWords(parameter));
  return result;
}

}  // namespace

int runTree(const Session& /*session*/, const Arguments& arguments) {
  std::optional<Description> description;
  std::vector<Node> nodes;
  if (const int result = selectNodes(description, arguments, nodes); result != kExitOk) return result;
  std::vector<std::string> indents;  // what stands in front of the children of each depth
  const std::size_t top = nodes.front().depth;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const Node& node = nodes[i];
    const std::size_t depth = node.depth - top;
    const bool isRoot = depth == 0;
    const bool isLast = !hasSibling(nodes, i);
    indents.resize(depth);
    const std::string indent = isRoot ? std::string() : indents.back();
    const char* branch = isRoot ? "" : isLast ? "└── " : "├── ";
    const std::string rights = node.parameter == nullptr ? "" : "  " + permission(*node.parameter);
    std::printf("%s%s%s%s\n", indent.c_str(), branch, (isRoot ? node.path : std::string(node.name())).c_str(),
                rights.c_str());
    indents.push_back(isRoot ? "" : indent + (isLast ? "    " : "│   "));
  }
  return kExitOk;
}

int runList(const Session& session, const Arguments& arguments) {
  std::optional<Description> description;
  std::vector<Node> nodes;
  if (const int result = selectNodes(description, arguments, nodes); result != kExitOk) return result;
  std::optional<JsonArray> json;
  if (session.options().isJson) json.emplace();
  for (const Node& node : nodes) {
    if (node.parameter == nullptr) continue;
    if (json) {
      json->add(JsonObject().text("path", node.path).text("permission", permission(*node.parameter)));
    } else if (session.options().isQuiet) {
      std::printf("%s\n", node.path.c_str());
    } else {
      std::printf("%s  %s\n", permission(*node.parameter).c_str(), node.path.c_str());
    }
  }
  return kExitOk;
}

int runShow(const Session& session, const Arguments& arguments) {
  if (arguments.empty()) return usageError("show takes paths");
  const std::optional<Description> description = Description::load();
  if (!description) return kExitRefused;
  int result = kExitOk;
  for (const std::string& path : arguments) {
    const std::vector<Node> below = description->below(path);
    const Parameter* parameter = description->find(path);
    if (below.empty()) {
      result = notThere(path);
    } else if (session.options().isJson && parameter != nullptr) {
      std::printf("%s\n", parameter->dump(1).c_str());
    } else {
      std::printf("%s\n", path.c_str());
      if (parameter != nullptr) showParameter(*parameter);
      if (parameter != nullptr && session.options().isUserGiven) {
        result = std::max(result, showAccess(session, *parameter, path));
      }
      showChildren(below);
    }
  }
  return result;
}

}  // namespace tmx
