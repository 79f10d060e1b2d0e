#include <cstdio>
#include <map>
#include <string>
#include <thread>

#include "cli/Commands.h"
#include "cli/Json.h"

namespace tmx {
namespace {

void print(const Session& session, const Answer& answer) {
  const std::string value = session.shown(answer.value);
  if (session.options().isJson) {
    JsonObject object;
    object.text("path", answer.path);
    if (answer.hasValue) object.text("value", value);
    std::printf("%s\n", object.number("status", answer.status).str().c_str());
  } else if (!answer.accepted()) {
    std::printf("%s\n", answer.lines.c_str());
  } else {
    std::printf("%s%s%s\n", session.options().isQuiet ? "" : answer.path.c_str(), session.options().isQuiet ? "" : "=",
                value.c_str());
  }
}

}  // namespace

int runWatch(const Session& session, const Arguments& arguments) {
  if (arguments.empty()) return usageError("watch takes paths");
  std::vector<Item> items;
  for (const std::string& path : arguments) {
    if (path.find('=') != std::string::npos) return usageError("watch takes paths without a value: " + path);
    items.push_back(Item::read(path));
  }
  std::map<std::string, std::string> last;
  while (true) {
    const int result = session.run(items, [&](const std::vector<Answer>& answers) {
      for (const Answer& answer : answers) {
        std::string& known = last[answer.path];
        if (known == answer.lines) continue;
        known = answer.lines;
        print(session, answer);
      }
    });
    std::fflush(stdout);
    // Whoever watches a camera restart wants to see it come back, but a socket that never answered is a mistake.
    if (result == kExitUsage || (result == kExitNoConnection && last.empty())) return result;
    std::this_thread::sleep_for(session.options().interval);
  }
}

}  // namespace tmx
