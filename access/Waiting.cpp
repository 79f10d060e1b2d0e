#include "access/Waiting.h"

#include <algorithm>
#include <utility>

#include "cli/Json.h"

namespace tmx {
namespace {

constexpr std::size_t kMaxWritten = 200;

// How a read shows what waits.
constexpr const char* kLive = "live";      // in force and shown
constexpr const char* kShown = "shown";    // not in force, shown
constexpr const char* kHidden = "hidden";  // not in force, not shown

/** A scene is written by its number, as the one in force; it is read without, since a number selects it for all
 * clients. */
std::string shownAt(const std::string& path) {
  const std::string_view scene = "camera.scene(";
  return path.starts_with(scene) ? "camera.scene" + path.substr(path.find(')') + 1) : path;
}

}  // namespace

void Waiting::note(const Account& account, const Item& item, const Answer& answer, const Reads& reads) {
  const std::string typed = unescapeValue(item.value);
  if (m_catalogue.findCommand(item.path, typed) != nullptr) {
    std::erase_if(m_written, [&](const auto& entry) { return entry.second.commit == item.text(); });
    return;
  }
  const std::string path = shownAt(item.path);
  const auto known = m_written.extract(path);
  const std::optional<std::string> before = known.empty() ? reads.before : known.mapped().before;
  const std::optional<std::string>& now = reads.now;
  const Traits* parameter = m_catalogue.find(path);
  if (answer.hint.empty() || parameter == nullptr || m_written.size() >= kMaxWritten) return;
  const Row* place = m_catalogue.findRow(path);
  const std::optional<std::string> row = place == nullptr ? std::nullopt : Rows().text(*place);
  if (parameter->isForceful && parameter->showsStored && row && now && shows(*now, *row)) {
    m_differences.erase(path);  // what was stored is in force again
    return;
  }
  if (!parameter->isForceful && before == item.value) return;  // put back before it was in force
  const bool showsOld = before ? now == before : now != item.value;
  m_written[path] = {.typed = typed,
                     .by = account.name,
                     .live = unescapeValue(now.value_or("")),
                     .before = before,
                     .row = row,
                     .commit = answer.hint,
                     .kind = parameter->isForceful ? kLive
                             : showsOld            ? kHidden
                                                   : kShown,
                     .at = Clock::now()};
}

void Waiting::noteRestart() {
  m_written.clear();
  m_differences.clear();
}

void Waiting::compare(Upstream& upstream, UserClass user, std::function<void()> done) {
  std::vector<Item> reads;
  m_catalogue.forEachComparable([&](const std::string& path) { reads.push_back(Item::read(path)); });
  for (const auto& [path, written] : m_written) {
    if (written.kind != kHidden && !m_catalogue.find(path)->showsStored) reads.push_back(Item::read(path));
  }
  upstream.run(
      Priority::Reader, user, reads,
      [done = std::move(done)](const auto& /*answers*/, const std::string& /*failure*/) { done(); },
      [this, begin = Clock::now()](const std::vector<Answer>& answers) { take(answers, begin); });
}

void Waiting::take(const std::vector<Answer>& answers, Clock::time_point begin) {
  Rows rows;
  for (const Answer& answer : answers) {
    if (!m_catalogue.find(answer.path)->showsStored) {
      takeWritten(answer, begin);
      continue;
    }
    const std::optional<std::string> stored = rows.text(*m_catalogue.findRow(answer.path));
    if (!answer.hasValue || !answer.accepted() || !stored) continue;
    const auto known = m_differences.find(answer.path);
    if (!shows(answer.value, *stored)) {
      const int rounds = known == m_differences.end() ? 1 : known->second.rounds + 1;
      m_differences[answer.path] = {unescapeValue(answer.value), *stored, rounds};
      continue;
    }
    if (known != m_differences.end()) m_differences.erase(known);
    const auto written = m_written.find(answer.path);
    const bool isGone = written != m_written.end() && written->second.kind != kHidden && written->second.at < begin;
    if (isGone) m_written.erase(written);
  }
  // Whose row has changed was taken over, by whomever.
  std::erase_if(m_written, [&](const auto& entry) {
    const Row* row = m_catalogue.findRow(entry.first);
    const std::optional<std::string> now = row == nullptr ? std::nullopt : rows.text(*row);
    return entry.second.at < begin && entry.second.row && now && *now != *entry.second.row;
  });
}

/** Where flash does not tell, what was there in front of the write does: a refused commit may have brought it back. */
void Waiting::takeWritten(const Answer& answer, Clock::time_point begin) {
  const auto written = m_written.find(answer.path);
  if (written == m_written.end() || written->second.at >= begin || !answer.hasValue) return;
  written->second.live = unescapeValue(answer.value);
  if (written->second.before == answer.value) m_written.erase(written);
}

/** One round may have met a save that was under way. */
bool Waiting::isShown(const Difference& difference) { return difference.rounds > 1; }

std::string Waiting::list(UserClass user) const {
  std::string text;
  const auto add = [&](const std::string& path, const auto& makeEntry) {
    if (!m_catalogue.find(path)->isReadable.at(static_cast<std::size_t>(user))) return;
    text += (text.empty() ? "" : ", ") + makeEntry();
  };
  for (const auto& [path, written] : m_written) {
    const auto difference = m_differences.find(path);
    const bool differs = difference != m_differences.end();
    add(path, [&, &path = path, &written = written] {
      return entry(path, written, differs ? &difference->second : nullptr);
    });
  }
  for (const auto& [path, difference] : m_differences) {
    if (m_written.contains(path) || !isShown(difference)) continue;
    add(path, [&, &path = path, &difference = difference] { return entry(path, difference); });
  }
  return "[" + text + "]";
}

std::size_t Waiting::count() const {
  const auto isFound = [this](const auto& entry) { return !m_written.contains(entry.first) && isShown(entry.second); };
  return m_written.size() + static_cast<std::size_t>(std::ranges::count_if(m_differences, isFound));
}

std::string Waiting::entry(const std::string& path, const Written& written, const Difference* difference) const {
  const std::string& live = difference != nullptr ? difference->live : written.live;
  std::optional<std::string> stored = written.before;
  if (written.row && m_catalogue.find(path)->showsStored) stored = written.row;
  if (difference != nullptr) stored = difference->stored;
  JsonObject object;
  object.text("path", path).text("live", live).text("typed", written.typed).text("by", written.by);
  if (stored) object.text("stored", unescapeValue(*stored));
  if (written.kind != kHidden && live != written.typed) object.text("taken", live);
  return withCommit(object, written.kind, written.commit);
}

std::string Waiting::entry(const std::string& path, const Difference& difference) const {
  JsonObject object;
  object.text("path", path).text("live", difference.live).text("stored", unescapeValue(difference.stored));
  return withCommit(object, m_catalogue.find(path)->isForceful ? kLive : kShown, m_catalogue.commitOf(path));
}

std::string Waiting::withCommit(JsonObject& object, const char* kind, const std::string& commit) const {
  object.text("kind", kind).text("commit", commit);
  if (const std::string stops = m_catalogue.stops(commit); !stops.empty()) object.text("stops", stops);
  return object.str();
}

}  // namespace tmx
