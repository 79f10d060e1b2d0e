#include "web/Viewers.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <optional>
#include <utility>

#include "cli/Description.h"
#include "cli/Json.h"
#include "web/Guard.h"

namespace console {
namespace {

using namespace std::chrono_literals;

constexpr auto kPeriod = 2s;
constexpr auto kSlowPeriod = 10s;
constexpr auto kComparePeriod = 4s;
constexpr auto kSignPeriod = 15s;
constexpr std::size_t kMaxViewers = 64;
constexpr std::size_t kMaxValues = 3000;

/** What takes the daemon time, or changes with each read. */
bool isSlow(std::string_view path) {
  const std::string bare = tmx::withoutSelectors(path);
  return bare == "system.hardware.cpu.utilization" || bare == "system.session" || bare == "system.log" ||
         bare == "system.model" || bare.starts_with("application.audioplay.");
}

std::string newId() {
  std::array<unsigned char, 16> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) return {};
  std::string id;
  for (const unsigned char byte : bytes) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", unsigned{byte});
    id += digits.data();
  }
  return id;
}

std::string eventText(const std::string& event, const std::string& data) {
  return "event: " + event + "\ndata: " + data + "\n\n";
}

std::string cameraEvent(bool answers) { return tmx::JsonObject().member("answers", answers ? "true" : "false").str(); }

}  // namespace

bool Viewers::add(const std::shared_ptr<Connection>& connection, const tmx::Account& account) {
  const std::string id = newId();
  if (m_viewers.size() >= kMaxViewers || id.empty()) return false;
  m_viewers[id] = {.id = id, .account = account, .connection = connection};
  connection->onLeave([this, id] { remove(id); });
  connection->beginStream();
  connection->stream(eventText("hello", tmx::JsonObject().text("id", id).str()));
  if (!m_answers) connection->stream(eventText("camera", cameraEvent(false)));
  tellPending(m_viewers[id]);
  if (m_isConfirmTold) {
    connection->stream(eventText("confirm", confirmText()));
  } else {
    tellWaiting();
  }
  if (m_nextSign == 0) m_nextSign = m_reactor.after(kSignPeriod, [this] { keepAlive(); });
  readSoon(0s);
  return true;
}

Viewers::Result Viewers::look(const tmx::Account& account, const View& view) {
  const auto found = m_viewers.find(view.id);
  if (found == m_viewers.end() || found->second.account.name != account.name) return Result::NoSuchPage;
  Viewer& viewer = found->second;
  std::vector<std::shared_ptr<Value>> values;
  for (const std::string& path : view.paths)
    values.push_back(value(account.user, path));
  std::ranges::sort(values);
  values.erase(std::unique(values.begin(), values.end()), values.end());
  viewer.values = std::move(values);
  viewer.seen = 0;
  std::erase_if(m_values, [](const auto& entry) { return entry.second.expired(); });
  if (m_values.size() > kMaxValues) {
    viewer.values.clear();
    return Result::TooMuch;
  }
  tell(viewer);  // what others look at too is known already
  readSoon(0s);
  return Result::Taken;
}

const char* Viewers::faultOf(std::string_view path) {
  if (tmx::withoutSelectors(path) == "storage.disk.check") return "each read of it tests the card";
  // Behind it "camera.scene.status=save" would mean this scene, for everybody.
  if (path.starts_with("camera.scene(")) return "a path that names a scene selects it, for all clients";
  return nullptr;
}

void Viewers::tellWaiting() {
  for (auto& [id, viewer] : m_viewers)
    tellPending(viewer);
  const bool isWaiting = m_file.exists();
  if (std::exchange(m_isConfirmTold, isWaiting) != isWaiting)
    streamToAll(eventText("confirm", isWaiting ? confirmText() : "null"));
}

void Viewers::noteAnswer(bool isAnswered) {
  if (std::exchange(m_answers, isAnswered) == isAnswered) return;
  if (!isAnswered) m_waiting.noteRestart();
  streamToAll(eventText("camera", cameraEvent(isAnswered)));
  tellWaiting();
}

void Viewers::remove(const std::string& id) {
  m_viewers.erase(id);
  if (!m_viewers.empty()) return;
  m_compared = {};
  m_reactor.cancel(std::exchange(m_nextRead, 0));
  m_reactor.cancel(std::exchange(m_nextSign, 0));
  m_values.clear();
}

std::shared_ptr<Viewers::Value> Viewers::value(tmx::UserClass user, const std::string& path) {
  std::weak_ptr<Value>& known = m_values[{user, path}];
  std::shared_ptr<Value> value = known.lock();
  if (!value) known = value = std::make_shared<Value>(Value{.user = user, .path = path, .isSlow = isSlow(path)});
  return value;
}

void Viewers::readSoon(std::chrono::milliseconds time) {
  if (m_underWay > 0) {
    m_isReadAgain = true;
    return;
  }
  m_reactor.cancel(m_nextRead);
  m_nextRead = m_reactor.after(time, [this] { readAll(); });
}

void Viewers::readAll() {
  m_nextRead = 0;
  m_isReadAgain = false;
  for (const tmx::UserClass user : {tmx::UserClass::kAdmin, tmx::UserClass::kOperator, tmx::UserClass::kUser})
    readOf(user);
  compareWaiting();
}

void Viewers::readOf(tmx::UserClass user) {
  std::vector<std::shared_ptr<Value>> values;
  std::vector<tmx::Item> items;
  for (const auto& [key, known] : m_values) {
    const std::shared_ptr<Value> value = known.lock();
    if (!value || value->user != user) continue;
    const auto period = value->isSlow ? kSlowPeriod : kPeriod;
    if (value->status != 0 && tmx::Clock::now() - value->read < period - 100ms) continue;
    values.push_back(value);
    items.push_back(tmx::Item::read(value->path));
  }
  if (values.empty()) return;
  ++m_underWay;
  m_upstream.run(
      tmx::Priority::Reader, user, items,
      [this](const auto& /*answers*/, const std::string& /*failure*/) {
        for (auto& [id, viewer] : m_viewers)
          tell(viewer);
        endRound();
      },
      [this, values, next = std::size_t{0}](const std::vector<tmx::Answer>& answers) mutable {
        for (const tmx::Answer& answer : answers)
          take(*values[next++], answer);
      });
}

void Viewers::compareWaiting() {
  if (tmx::Clock::now() - m_compared < kComparePeriod) {
    if (m_underWay == 0) readSoon(kPeriod);
    return;
  }
  m_compared = tmx::Clock::now();
  ++m_underWay;
  m_waiting.compare(m_upstream, [this] {
    tellWaiting();
    endRound();
  });
}

void Viewers::endRound() {
  --m_underWay;
  if (m_underWay == 0 && !m_viewers.empty()) readSoon(m_isReadAgain ? 0s : kPeriod);
}

void Viewers::take(Value& value, const tmx::Answer& answer) {
  value.read = tmx::Clock::now();
  std::string text = tmx::unescapeValue(answer.value);
  if (value.status == answer.status && value.hasText == answer.hasValue && value.text == text) return;
  value.status = answer.status;
  value.hasText = answer.hasValue;
  value.text = std::move(text);
  value.changed = ++m_changes;
}

/** A new view is told as a whole, once all of it has been read. */
void Viewers::tell(Viewer& viewer) const {
  if (std::ranges::any_of(viewer.values, [](const auto& value) { return value->changed == 0; })) return;
  tmx::JsonObject values;
  bool isNew = false;
  for (const auto& value : viewer.values) {
    if (value->changed <= viewer.seen) continue;
    tmx::JsonObject shown;
    shown.number("status", value->status);
    if (value->hasText) shown.text("value", value->text);
    values.member(value->path, shown.str());
    isNew = true;
  }
  viewer.seen = m_changes;
  const auto connection = viewer.connection.lock();
  if (isNew && connection) connection->stream(eventText("values", values.str()));
}

void Viewers::tellPending(Viewer& viewer) const {
  const std::string list = m_waiting.list(viewer.account.user == tmx::UserClass::kUser);
  const std::size_t hash = std::hash<std::string>()(list);
  const auto connection = viewer.connection.lock();
  if (std::exchange(viewer.pending, hash) != hash && connection) connection->stream(eventText("pending", list));
}

std::string Viewers::confirmText() const {
  const std::optional<Applied> change = m_file.read();
  if (!change) return "null";
  std::string items;
  for (const Applied::Item& item : change->items) {
    items += (items.empty() ? "" : ", ") +
             tmx::JsonObject().text("path", item.path).text("old", item.before).text("new", item.after).str();
  }
  return tmx::JsonObject()
      .text("by", change->account.name)
      .number("seconds", secondsLeft(kConfirmTime))
      .member("items", "[" + items + "]")
      .str();
}

void Viewers::keepAlive() {
  m_nextSign = m_reactor.after(kSignPeriod, [this] { keepAlive(); });
  streamToAll(": \n\n");
}

void Viewers::streamToAll(std::string_view text) const {
  for (const auto& [id, viewer] : m_viewers) {
    if (const auto connection = viewer.connection.lock()) connection->stream(text);
  }
}

}  // namespace console
