#include "mqtt/Agent.h"

#include <malloc.h>

#include <algorithm>
#include <array>
#include <utility>

#include "cli/Description.h"
#include "cli/Json.h"
#include "mqtt/Discovery.h"
#include "mqtt/Topics.h"

namespace mqtt {
namespace {

using namespace std::chrono_literals;

/** What is changed on the camera is on the broker within two seconds. */
constexpr tmx::Reader::Periods kPeriods{.usual = 1500ms, .slow = 60s};
constexpr auto kIntroduction = 2s;
constexpr auto kComparison = 1s;
/** What differs in one comparison alone may be a save that is under way. */
constexpr int kComparisons = 2;
constexpr std::array<const char*, 4> kAboutPaths{"system.guid", "system.model", "system.software.revision",
                                                 "network.https(configuration).port"};

bool isBelow(std::string_view path, std::string_view head) {
  return path.starts_with(head) && (path.size() == head.size() || path[head.size()] == '.');
}

}  // namespace

bool isPublished(const Config& config, const tmx::Traits& parameter, const std::string& path) {
  if (!parameter.isReadable.at(static_cast<std::size_t>(config.user)) || tmx::Reader::faultOf(path) != nullptr)
    return false;
  return config.values.empty() || std::ranges::any_of(config.values, [&](const std::string& head) {
           return isBelow(path, head) || isBelow(tmx::withoutSelectors(path), head);
         });
}

Agent::Connection::Connection(Agent& agent, const std::string& guid)
    : link(agent.m_reactor, agent.m_config.broker, guid, {.topic = agent.topic("online"), .payload = "false"}),
      outbox(link, guid),
      orders(agent.m_requests, agent.m_account, guid,
             [this](const std::string& topic, const std::string& payload) { outbox.send(topic, payload, false); }) {}

Agent::Agent(tmx::Reactor& reactor, int opener, const Config& config, const tmx::Catalogue& catalogue,
             std::vector<std::string> paths, std::string description)
    : m_reactor(reactor),
      m_config(config),
      m_catalogue(catalogue),
      m_paths(std::move(paths)),
      m_description(std::move(description)),
      m_account{.name = "mqtt", .user = config.user},
      m_upstream(reactor, opener),
      m_waiting(catalogue),
      m_requests(m_upstream, catalogue, m_waiting),
      m_reader(reactor, m_upstream, kPeriods, [this] { tellValues(); }) {
  m_upstream.onAnswer([this](bool isAnswered, tmx::Clock::duration /*time*/) {
    if (std::exchange(m_answers, isAnswered) == isAnswered) return;
    if (!isAnswered) m_waiting.noteRestart();
    if (m_connection) compareSoon();
  });
  introduce();
}

void Agent::close() {
  if (m_connection) m_connection->link.close({.topic = topic("online"), .payload = "false"});
}

/** Who the camera is, as soon as the daemon tells it. */
void Agent::introduce() {
  std::vector<tmx::Item> reads;
  reads.reserve(kAboutPaths.size());
  for (const char* path : kAboutPaths)
    reads.push_back(tmx::Item::read(path));
  m_upstream.run(tmx::Priority::Person, m_account.user, reads,
                 [this](const std::vector<tmx::Answer>& answers, const std::string& failure) {
                   if (failure.empty() && answers.front().hasValue) return begin(answers);
                   m_reactor.after(kIntroduction, [this] { introduce(); });
                 });
}

void Agent::begin(const std::vector<tmx::Answer>& answers) {
  m_guid = answers[0].value;
  m_model = tmx::unescapeValue(answers[1].value);
  m_version = tmx::unescapeValue(answers[2].value);
  m_port = answers[3].value;
  m_connection = std::make_unique<Connection>(*this, m_guid);
  Link& link = m_connection->link;
  link.onConnected([this] { connected(); });
  link.onLost([this](const std::string& /*why*/) { m_connection->outbox.lost(); });
  link.onDelivered([this](int /*id*/) { m_connection->outbox.delivered(); });
  link.onMessage([this](std::string_view where, std::string_view payload, bool isRetained) {
    if (where == topic("request") && !isRetained) m_connection->orders.take(payload);
  });
  link.open();
  for (const std::string& path : std::exchange(m_paths, {}))
    m_connection->outbox.values().add(m_reader.watch(m_account.user, path));
  m_reader.readSoon();
  m_flash.emplace(m_reactor, m_catalogue.files(), [this] {
    m_reader.refresh();
    compareSoon();
  });
  compareSoon();
}

void Agent::connected() {
  m_connection->link.subscribe(topic("request"));
  Outbox& outbox = m_connection->outbox;
  outbox.retain("about",
                tmx::JsonObject().text("model", m_model).text("version", m_version).text("address", address()).str());
  outbox.retain("online", "true");
  if (!m_config.discovery.empty()) announce();
  outbox.pump();
}

/** Made anew for each connection: it is long, and nobody else needs it. */
void Agent::announce() {
  const Device device{
      .guid = m_guid, .model = m_model, .version = m_version, .address = address(), .user = m_account.user};
  const auto isOnBroker = [this](const std::string& path) {
    return isPublished(m_config, *m_catalogue.find(path), path);
  };
  m_connection->outbox.send(m_config.discovery + "/device/" + m_guid + "/config",
                            discovery(m_description, device, isOnBroker), true);
  malloc_trim(0);  // what that took in between
}

/** Where the camera's console answers: as configured, or where the broker is reached from. */
std::string Agent::address() const {
  if (!m_config.address.empty()) return m_config.address;
  const std::string host = m_connection->link.localAddress();
  return (host.find(':') == std::string::npos ? host : "[" + host + "]") + ":" + m_port;
}

void Agent::tellValues() {
  if (std::exchange(m_told, m_reader.changes()) == m_reader.changes()) return;
  m_connection->outbox.values().changed();
  m_connection->outbox.pump();
  compareSoon();
}

void Agent::compareSoon() {
  m_comparisons = kComparisons;
  if (m_nextComparison == 0) m_nextComparison = m_reactor.after(kComparison, [this] { compare(); });
}

/** Nothing waits anew while nothing changes, neither a value nor flash. */
void Agent::compare() {
  --m_comparisons;
  m_waiting.compare(m_upstream, m_account.user, [this] {
    m_connection->outbox.retain("pending", m_waiting.list(m_account.user));
    m_nextComparison = m_comparisons > 0 ? m_reactor.after(kComparison, [this] { compare(); }) : 0;
    if (m_nextComparison == 0) malloc_trim(0);  // what connecting and much that changed at once took
  });
}

}  // namespace mqtt
