#include "web/Viewers.h"

#include <malloc.h>
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

constexpr tmx::Reader::Periods kPeriods{.usual = 2s, .slow = 10s};
constexpr auto kComparePeriod = 4s;
constexpr auto kSignPeriod = 15s;
constexpr std::size_t kMaxViewers = 64;
constexpr std::size_t kMaxValues = 3000;

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

Viewers::Viewers(tmx::Reactor& reactor, tmx::Upstream& upstream, tmx::Waiting& waiting, const ConfirmFile& file)
    : m_reactor(reactor),
      m_upstream(upstream),
      m_waiting(waiting),
      m_file(file),
      m_reader(reactor, upstream, kPeriods, [this] {
        for (auto& [id, viewer] : m_viewers)
          tell(viewer);
      }) {}

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
  if (m_nextComparison == 0) m_nextComparison = m_reactor.after(0s, [this] { compareWaiting(); });
  return true;
}

Viewers::Result Viewers::look(const tmx::Account& account, const View& view) {
  const auto found = m_viewers.find(view.id);
  if (found == m_viewers.end() || found->second.account.name != account.name) return Result::NoSuchPage;
  Viewer& viewer = found->second;
  std::vector<std::shared_ptr<const tmx::Reader::Value>> values;
  for (const std::string& path : view.paths)
    values.push_back(m_reader.watch(account.user, path));
  std::ranges::sort(values);
  values.erase(std::unique(values.begin(), values.end()), values.end());
  viewer.values = std::move(values);
  viewer.seen = 0;
  if (m_reader.count() > kMaxValues) {
    viewer.values.clear();
    return Result::TooMuch;
  }
  tell(viewer);  // what others look at too is known already
  m_reader.readSoon();
  return Result::Taken;
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
  m_reactor.cancel(std::exchange(m_nextComparison, 0));
  m_reactor.cancel(std::exchange(m_nextSign, 0));
}

void Viewers::compareWaiting() {
  m_nextComparison = m_reactor.after(kComparePeriod, [this] { compareWaiting(); });
  if (std::exchange(m_isComparing, true)) return;
  m_waiting.compare(m_upstream, tmx::UserClass::kAdmin, [this] {
    m_isComparing = false;
    tellWaiting();
    malloc_trim(0);  // what many requests at once took lies between what stays
  });
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
  viewer.seen = m_reader.changes();
  const auto connection = viewer.connection.lock();
  if (isNew && connection) connection->stream(eventText("values", values.str()));
}

void Viewers::tellPending(Viewer& viewer) const {
  const std::string list = m_waiting.list(viewer.account.user);
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
