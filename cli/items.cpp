#include <cstdio>
#include <optional>

#include "cli/Commands.h"
#include "cli/Writes.h"

namespace tmx {
namespace {

std::optional<Item> itemOf(const Session& session, const std::string& argument) {
  const std::size_t equals = argument.find('=');
  if (equals == std::string::npos) return Item::read(argument);
  if (equals == 0) return std::nullopt;
  return Item::write(argument.substr(0, equals), session.sent(std::string_view(argument).substr(equals + 1)));
}

}  // namespace

int usageError(const std::string& message) {
  std::fprintf(stderr, "tmxctl: %s\nTry \"tmxctl --help\".\n", message.c_str());
  return kExitUsage;
}

int runItems(const Session& session, const Arguments& arguments) {
  std::vector<Item> items;
  for (const std::string& argument : arguments) {
    const std::optional<Item> item = itemOf(session, argument);
    if (!item) return usageError("\"" + argument + "\": the path is missing");
    items.push_back(*item);
  }
  Writes writes(session);
  int result = writes.send(items);
  if (session.options().isCommit && result == kExitOk) result = writes.commit();
  writes.showCommits();
  return result;
}

int runGet(const Session& session, const Arguments& arguments) {
  if (arguments.empty()) return usageError("get takes paths");
  for (const std::string& argument : arguments) {
    if (argument.find('=') != std::string::npos) return usageError("get takes paths without a value: " + argument);
  }
  return runItems(session, arguments);
}

int runSet(const Session& session, const Arguments& arguments) {
  if (arguments.empty()) return usageError("set takes PATH=VALUE");
  for (const std::string& argument : arguments) {
    if (argument.find('=') == std::string::npos) return usageError("set takes PATH=VALUE: " + argument);
  }
  return runItems(session, arguments);
}

}  // namespace tmx
