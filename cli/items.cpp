#include <algorithm>
#include <cstdio>
#include <optional>

#include "cli/Commands.h"
#include "cli/Json.h"

namespace tmx {
namespace {

JsonObject toJson(const Session& session, const Answer& answer) {
  JsonObject object;
  object.text("path", answer.path);
  if (answer.hasValue) object.text("value", session.shown(answer.value));
  object.number("status", answer.status).text("text", answer.statusText);
  if (!answer.hint.empty()) object.text("commit", answer.hint);
  return object;
}

/** The answer; behind a refusal also what would have been taken. */
std::string linesOf(const Session& session, const Answer& answer) {
  if (answer.accepted() || session.options().isRaw) return answer.lines;
  static const std::optional<Description> description = Description::find();
  const Parameter* parameter = description ? description->find(answer.path) : nullptr;
  const std::string why = parameter == nullptr ? "" : reason(*parameter, answer.status);
  return why.empty() ? answer.lines : answer.lines + ": " + why;
}

void print(const Session& session, const Answer& answer) {
  if (!session.options().isQuiet) {
    std::printf("%s\n", linesOf(session, answer).c_str());
  } else if (!answer.accepted()) {
    std::fprintf(stderr, "%s\n", linesOf(session, answer).c_str());
  } else if (answer.hasValue) {
    std::printf("%s\n", session.shown(answer.value).c_str());
  }
}

/** The text in single quotes, as a shell takes it. */
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else {
      result += c;
    }
  }
  return result + "'";
}

/** The command that sends the items, for the user to type. */
std::string commandLine(const Options& options, const std::vector<std::string>& items) {
  std::string line = options.program;
  if (options.isSocketGiven) line += " -s " + quoted(options.socket);
  if (options.user != UserClass::kAdmin) line += std::string(" --as ") + userName(options.user);
  for (const std::string& item : items)
    line += " " + quoted(item);
  return line;
}

std::optional<Item> itemOf(const Session& session, const std::string& argument) {
  const std::size_t equals = argument.find('=');
  if (equals == std::string::npos) return Item::read(argument);
  if (equals == 0) return std::nullopt;
  return Item::write(argument.substr(0, equals), session.sent(std::string_view(argument).substr(equals + 1)));
}

/** Collects the commits that the answers of a run ask for, each once, in their order. */
void collectHints(const std::vector<Answer>& answers, std::vector<std::string>& hints) {
  for (const Answer& answer : answers) {
    if (!answer.hint.empty() && std::find(hints.begin(), hints.end(), answer.hint) == hints.end())
      hints.push_back(answer.hint);
  }
}

}  // namespace

int usageError(const std::string& message) {
  std::fprintf(stderr, "tmxctl: %s\nTry \"tmxctl --help\".\n", message.c_str());
  return kExitUsage;
}

int sendItems(const Session& session, const std::vector<Item>& items) {
  const Options& options = session.options();
  std::vector<std::string> hints;
  std::optional<JsonArray> json;
  if (options.isJson) json.emplace();
  const AnswerSink sink = [&](const std::vector<Answer>& answers) {
    collectHints(answers, hints);
    for (const Answer& answer : answers) {
      if (json) {
        json->add(toJson(session, answer));
      } else {
        print(session, answer);
      }
    }
  };
  const int result = session.run(items, sink);
  if (hints.empty()) return result;
  if (!options.isCommit || result != kExitOk) {
    if (!options.isQuiet) std::fprintf(stderr, "To commit: %s\n", commandLine(options, hints).c_str());
    return result;
  }
  std::vector<Item> commits;
  for (const std::string& hint : hints) {
    const std::size_t equals = hint.find('=');
    commits.push_back(equals == std::string::npos ? Item::read(hint)
                                                  : Item::write(hint.substr(0, equals), hint.substr(equals + 1)));
  }
  hints.clear();
  return session.run(commits, sink);
}

int runItems(const Session& session, const Arguments& arguments) {
  std::vector<Item> items;
  for (const std::string& argument : arguments) {
    const std::optional<Item> item = itemOf(session, argument);
    if (!item) return usageError("\"" + argument + "\": the path is missing");
    items.push_back(*item);
  }
  return sendItems(session, items);
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
