#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <string_view>

#include "cli/Commands.h"
#include "cli/Writes.h"

namespace tmx {
namespace {

/** Reads the lines of a dump, values in their form on the wire. Empty lines and those that begin with "#" say nothing.
 */
bool readLines(std::istream& file, const std::string& name, const Session& session, std::vector<Item>& items) {
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty() || line.front() == '#') continue;
    const std::size_t equals = line.find('=');
    if (equals == 0 || equals == std::string::npos) {
      std::fprintf(stderr, "tmxctl: %s:%d: not of the form PATH=VALUE\n", name.c_str(), number);
      return false;
    }
    items.push_back(Item::write(line.substr(0, equals), session.sent(std::string_view(line).substr(equals + 1))));
  }
  return true;
}

/** The same of the named file, or of standard input for "-"; an exit status. */
int readDump(const std::string& name, const Session& session, std::vector<Item>& items) {
  if (name == "-") return readLines(std::cin, "standard input", session, items) ? kExitOk : kExitUsage;
  std::ifstream file(name);
  if (!file) return usageError(name + ": cannot be opened");
  return readLines(file, name, session, items) ? kExitOk : kExitUsage;
}

using Values = std::map<std::string, std::string>;

/** What the camera shows for the paths, in its form on the wire; what it refuses is left out. */
int readPresent(const Session& session, const std::vector<Item>& items, Values& values) {
  std::vector<Item> reads;
  for (const Item& item : items)
    reads.push_back(Item::read(item.path));
  const int result = session.run(reads, [&](const std::vector<Answer>& answers) {
    for (const Answer& answer : answers)
      if (answer.accepted() && answer.hasValue) values[answer.path] = escapeValue(unescapeValue(answer.value));
  });
  return result == kExitRefused ? kExitOk : result;
}

const char* const kNothing = "(nothing)";

std::string shownOr(const Session& session, const Values& values, const std::string& path) {
  const auto found = values.find(path);
  return found == values.end() ? kNothing : session.shown(found->second);
}

/** What a line of a dump would do; false where it would be refused. */
bool tell(const Session& session, const Description& description, const Values& present, const Item& item) {
  const Parameter* parameter = description.find(item.path);
  const std::string value = session.shown(item.value);
  std::string verdict;
  bool isTaken = true;
  if (parameter == nullptr) {
    verdict = "there is no such parameter";
    isTaken = false;
  } else if (!mayWrite(*parameter, session.options().user)) {
    verdict = "refused: " + rightsInWords(*parameter);
    isTaken = false;
  } else if (judge(*parameter, item.value) == Verdict::kRefused) {
    verdict = "refused: takes " + takenInWords(*parameter);
    isTaken = false;
  } else if (present.contains(item.path) && present.at(item.path) == item.value) {
    verdict = "the same";
  } else {
    verdict = "instead of " + shownOr(session, present, item.path);
    if (judge(*parameter, item.value) == Verdict::kOpen) verdict += ", if it is " + takenInWords(*parameter);
  }
  std::printf("%s=%s: %s\n", item.path.c_str(), value.c_str(), verdict.c_str());
  return isTaken;
}

int dryRun(const Session& session, const std::vector<Item>& items) {
  const std::optional<Description> description = Description::load();
  if (!description) return kExitRefused;
  Values present;
  int result = readPresent(session, items, present);
  for (const Item& item : items) {
    if (!tell(session, *description, present, item)) result = std::max<int>(result, kExitRefused);
  }
  return result;
}

/** Streams, recordings, detection, masks and the analog output are measured by what the encoders are set to. */
bool isMeasure(const Item& item) { return withoutSelectors(item.path).starts_with("encode."); }

/** What was refused keeps every later commit from running. */
int load(const Session& session, std::vector<Item> items) {
  if (!session.isSendable(items)) return kExitUsage;
  const auto rest = std::stable_partition(items.begin(), items.end(), isMeasure);
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
  std::vector<Item> items;
  if (const int result = readDump(arguments.front(), session, items); result != kExitOk) return result;
  return session.options().isDryRun ? dryRun(session, items) : load(session, std::move(items));
}

int runDiff(const Session& session, const Arguments& arguments) {
  if (arguments.empty() || arguments.size() > 2) return usageError("diff takes one FILE or two");
  std::vector<Item> items;
  if (const int result = readDump(arguments.front(), session, items); result != kExitOk) return result;
  Values before;
  for (const Item& item : items)
    before[item.path] = item.value;
  Values after;
  if (arguments.size() == 1) {
    if (const int result = readPresent(session, items, after); result != kExitOk) return result;
  } else {
    items.clear();
    if (const int result = readDump(arguments.back(), session, items); result != kExitOk) return result;
    for (const Item& item : items)
      after[item.path] = item.value;
  }
  Values all = before;
  all.insert(after.begin(), after.end());
  int result = kExitOk;
  for (const auto& [path, value] : all) {
    const std::string left = shownOr(session, before, path);
    const std::string right = shownOr(session, after, path);
    if (left == right) continue;
    std::printf("%s: %s -> %s\n", path.c_str(), left.c_str(), right.c_str());
    result = kExitRefused;
  }
  return result;
}

}  // namespace tmx
