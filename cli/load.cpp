#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string_view>

#include "cli/Catalogue.h"
#include "cli/Commands.h"
#include "cli/Writes.h"

namespace tmx {
namespace {

/** Reads the lines of a dump. Empty lines and those that begin with "#" say nothing. */
bool readItems(std::istream& file, const char* name, const Session& session, std::vector<Item>& items) {
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty() || line.front() == '#') continue;
    const std::size_t equals = line.find('=');
    if (equals == 0 || equals == std::string::npos) {
      std::fprintf(stderr, "tmxctl: %s:%d: not of the form PATH=VALUE\n", name, number);
      return false;
    }
    items.push_back(Item::write(line.substr(0, equals), session.sent(std::string_view(line).substr(equals + 1))));
  }
  return true;
}

/** What was refused keeps every later commit from running. */
int load(const Session& session, std::vector<Item> items) {
  if (!session.isSendable(items)) return kExitUsage;
  const auto rest = std::stable_partition(items.begin(), items.end(), [](const Item& i) { return isMeasure(i.path); });
  Writes writes(session);
  int result = kExitOk;
  for (const auto& part : {std::vector<Item>(items.begin(), rest), std::vector<Item>(rest, items.end())}) {
    if (result != kExitNoConnection) result = std::max(result, writes.sendAgain(part));
    if (session.options().isCommit && result == kExitOk) result = writes.commit();
  }
  writes.showCommits();
  writes.showCount(items.size());
  return result;
}

}  // namespace

int runLoad(const Session& session, const Arguments& arguments) {
  if (arguments.size() != 1) return usageError("load takes one FILE, or \"-\" for standard input");
  const char* name = arguments.front().c_str();
  std::vector<Item> items;
  if (arguments.front() == "-") {
    if (!readItems(std::cin, "standard input", session, items)) return kExitUsage;
  } else {
    std::ifstream file(arguments.front());
    if (!file) return usageError(arguments.front() + ": cannot be opened");
    if (!readItems(file, name, session, items)) return kExitUsage;
  }
  return load(session, std::move(items));
}

}  // namespace tmx
