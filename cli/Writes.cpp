#include "cli/Writes.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "cli/Description.h"

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

const std::optional<Description>& description() {
  static const std::optional<Description> found = Description::find();
  return found;
}

/** Commits in the order in which they are run: those that interrupt nobody, the web server's, the camera's. */
enum class Interrupted { Nothing, WebServer, Camera };

Interrupted interruptedBy(const std::string& commit) {
  const std::string what = description() ? description()->stops(commit) : "";
  if (what == "the camera") return Interrupted::Camera;
  return what == "the web server" ? Interrupted::WebServer : Interrupted::Nothing;
}

/** The answer; behind a refusal also what would have been taken, or who may. */
std::string linesOf(const Session& session, const Answer& answer) {
  const Parameter* parameter = description() ? description()->find(answer.path) : nullptr;
  if (answer.accepted() || parameter == nullptr || session.options().isRaw) return answer.lines;
  const std::string why = reason(*parameter, answer.status);
  return why.empty() ? answer.lines : answer.lines + ": " + why;
}

Item commitOf(const std::string& hint) {
  const std::size_t equals = hint.find('=');
  return equals == std::string::npos ? Item::read(hint) : Item::write(hint.substr(0, equals), hint.substr(equals + 1));
}

}  // namespace

Writes::Writes(const Session& session) : m_session(session) {
  if (session.options().isJson) m_json.emplace();
}

int Writes::send(const std::vector<Item>& items) {
  return m_session.run(items, [this](const std::vector<Answer>& answers) {
    for (const Answer& answer : answers)
      take(answer);
  });
}

int Writes::sendAgain(std::vector<Item> items) {
  while (true) {
    std::vector<Item> refused;
    std::vector<Answer> refusals;
    auto item = items.cbegin();
    const int result = m_session.run(items, [&](const std::vector<Answer>& answers) {
      for (const Answer& answer : answers) {
        if (answer.accepted()) {
          take(answer);
        } else {
          refused.push_back(*item);
          refusals.push_back(answer);
        }
        ++item;
      }
    });
    if (result != kExitRefused || refused.size() == items.size()) {
      for (const Answer& answer : refusals)
        take(answer);
      return result;
    }
    items = std::move(refused);
  }
}

int Writes::commit() {
  const std::vector<std::string> waiting = std::exchange(m_waiting, {});
  int result = kExitOk;
  m_count = &m_commits;
  for (const Interrupted what : {Interrupted::Nothing, Interrupted::WebServer, Interrupted::Camera}) {
    std::vector<Item> commits;
    for (const std::string& hint : waiting) {
      if (interruptedBy(hint) != what) continue;
      if (result == kExitOk) {
        commits.push_back(commitOf(hint));
      } else {
        m_waiting.push_back(hint);
      }
    }
    // One protocol of the web server is closed only once the other is open. Elsewhere a refusal drops what waited.
    result = std::max(result, what == Interrupted::WebServer ? sendAgain(commits) : send(commits));
  }
  m_count = &m_items;
  return result;
}

void Writes::take(const Answer& answer) {
  ++(answer.accepted() ? m_count->accepted : m_count->refused);
  const bool isKnown = std::find(m_waiting.begin(), m_waiting.end(), answer.hint) != m_waiting.end();
  if (m_count == &m_items && !answer.hint.empty() && !isKnown) m_waiting.push_back(answer.hint);
  if (m_json) {
    m_json->add(toJson(m_session, answer));
  } else {
    print(answer);
  }
}

void Writes::print(const Answer& answer) const {
  if (!m_session.options().isQuiet) {
    std::printf("%s\n", linesOf(m_session, answer).c_str());
  } else if (!answer.accepted()) {
    std::fprintf(stderr, "%s\n", linesOf(m_session, answer).c_str());
  } else if (answer.hasValue) {
    std::printf("%s\n", m_session.shown(answer.value).c_str());
  }
}

void Writes::showCommits() const {
  const Options& options = m_session.options();
  if (m_waiting.empty() || options.isQuiet) return;
  std::string line = options.program;
  if (options.isSocketGiven) line += " -s " + quoted(options.socket);
  if (options.user != UserClass::kAdmin) line += std::string(" --as ") + userName(options.user);
  for (const std::string& hint : m_waiting)
    line += " " + quoted(hint);
  std::fprintf(stderr, "To commit: %s\n", line.c_str());
}

void Writes::showCount(std::size_t lines) const {
  if (m_session.options().isQuiet) return;
  std::string text = std::to_string(lines) + " lines: " + std::to_string(m_items.accepted) + " accepted, " +
                     std::to_string(m_items.refused) + " refused";
  const std::size_t unanswered = lines - m_items.accepted - m_items.refused;
  if (unanswered > 0) text += ", " + std::to_string(unanswered) + " not answered";
  text += "; " + std::to_string(m_commits.accepted + m_commits.refused) + " commits";
  if (m_commits.refused > 0) text += ", " + std::to_string(m_commits.refused) + " refused";
  if (!m_waiting.empty()) text += ", " + std::to_string(m_waiting.size()) + " wait";
  std::fprintf(stderr, "%s\n", text.c_str());
}

}  // namespace tmx
