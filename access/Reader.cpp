#include "access/Reader.h"

#include "cli/Description.h"

namespace tmx {
namespace {

using namespace std::chrono_literals;

/** Two rounds are never exactly a period apart. */
constexpr auto kTolerance = 100ms;
/** So that a round takes little memory. */
constexpr std::size_t kAtOnce = 60;

/** What takes the daemon time, or changes with each read. */
bool isSlow(std::string_view path) {
  const std::string bare = withoutSelectors(path);
  return bare == "system.hardware.cpu.utilization" || bare == "system.session" || bare == "system.log" ||
         bare == "system.model" || bare == "system.date" || bare.starts_with("application.audioplay.") ||
         bare.starts_with("system.session.sending.") || bare.starts_with("system.session.receiving.");
}

}  // namespace

const char* Reader::faultOf(std::string_view path) {
  if (withoutSelectors(path) == "storage.disk.check") return "each read of it tests the card";
  // Behind it "camera.scene.status=save" would mean this scene, for everybody.
  if (path.starts_with("camera.scene(")) return "a path that names a scene selects it, for all clients";
  return nullptr;
}

std::shared_ptr<const Reader::Value> Reader::watch(UserClass user, const std::string& path) {
  auto& [key, known] = *m_values.try_emplace({user, path}).first;
  std::shared_ptr<Value> value = known.lock();
  if (!value) known = value = std::make_shared<Value>(Value{.user = user, .path = key.second, .isSlow = isSlow(path)});
  return value;
}

std::size_t Reader::count() {
  std::erase_if(m_values, [](const auto& entry) { return entry.second.expired(); });
  return m_values.size();
}

void Reader::readIn(std::chrono::milliseconds time) {
  if (m_isUnderWay) {
    m_isReadAgain = true;
    return;
  }
  m_reactor.cancel(m_nextRead);
  m_nextRead = m_reactor.after(time, [this] { readAll(); });
}

void Reader::readAll() {
  m_nextRead = 0;
  m_isReadAgain = false;
  if (count() == 0) return;
  for (const auto& [key, known] : m_values) {
    const std::shared_ptr<Value> value = known.lock();
    if (isDue(*value)) m_due.push_back(value);
  }
  m_isUnderWay = true;
  readNext();
}

bool Reader::isDue(const Value& value) const {
  if (value.status == 0 || (!value.isSlow && value.read < m_refreshed)) return true;
  return Clock::now() - value.read >= (value.isSlow ? m_periods.slow : m_periods.usual) - kTolerance;
}

/** Some values of one class; behind the last of a class it is told. */
void Reader::readNext() {
  if (m_due.empty()) {
    m_isUnderWay = false;
    return readIn(m_isReadAgain ? 0ms : m_periods.usual);
  }
  const UserClass user = m_due.back()->user;
  std::vector<std::shared_ptr<Value>> values;
  std::vector<Item> items;
  while (!m_due.empty() && m_due.back()->user == user && items.size() < kAtOnce) {
    items.push_back(Item::read(m_due.back()->path));
    values.push_back(std::move(m_due.back()));
    m_due.pop_back();
  }
  m_upstream.run(Priority::Reader, user, items,
                 [this, values = std::move(values), asked = Clock::now()](const std::vector<Answer>& answers,
                                                                          const std::string& failure) {
                   for (std::size_t i = 0; i < answers.size(); ++i)
                     take(*values[i], answers[i], asked);
                   if (!failure.empty()) m_due.clear();
                   if (m_due.empty() || m_due.back()->user != values.front()->user) m_heard();
                   readNext();
                 });
}

void Reader::take(Value& value, const Answer& answer, Clock::time_point asked) {
  value.read = asked;
  std::string text = unescapeValue(answer.value);
  if (value.status == answer.status && value.hasText == answer.hasValue && value.text == text) return;
  value.status = answer.status;
  value.hasText = answer.hasValue;
  value.text = std::move(text);
  value.changed = ++m_changes;
}

}  // namespace tmx
