#include "web/Gateway.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

#include "cli/Json.h"
#include "web/Body.h"
#include "web/Files.h"

namespace console {
namespace {

/** Beyond them the web server waits. */
constexpr std::size_t kMaxConnections = 128;

constexpr std::string_view kRoot = "/console";
constexpr const char* kJournal = "/run/camera/journal.jsonl";

/** The path below kRoot, as "/api/me"; empty for one that is not below it. */
std::string pathOf(const Request& request) {
  const std::string path = std::string(request.header("SCRIPT_NAME")) + std::string(request.header("PATH_INFO"));
  return path.starts_with(kRoot) ? path.substr(kRoot.size()) : std::string();
}

std::string answersJson(const std::vector<tmx::Answer>& answers, const std::map<std::size_t, std::string>& taken) {
  std::string list;
  for (std::size_t i = 0; i < answers.size(); ++i) {
    const tmx::Answer& answer = answers[i];
    tmx::JsonObject object;
    object.text("path", answer.path).number("status", answer.status).text("text", answer.statusText);
    const auto now = taken.find(i);
    if (answer.hasValue || now != taken.end()) {
      object.text("value", tmx::unescapeValue(answer.hasValue ? answer.value : now->second));
    }
    if (!answer.hint.empty()) object.text("hint", answer.hint);
    list += (list.empty() ? "" : ",\n") + object.str();
  }
  return R"({"answers": [)" + list + "]}\n";
}

}  // namespace

Gateway::Gateway(Reactor& reactor, FileDescriptor server, int opener, std::string page, Catalogue catalogue)
    : m_reactor(reactor),
      m_server(std::move(server)),
      m_page(std::move(page)),
      m_catalogue(std::move(catalogue)),
      m_upstream(reactor, opener),
      m_viewers(reactor, m_upstream) {
  m_upstream.onAnswer([this](bool isAnswered, Clock::duration /*time*/) { m_viewers.noteAnswer(isAnswered); });
  m_reactor.watch(m_server.get(), POLLIN, [this](short /*events*/) { accept(); });
}

void Gateway::accept() {
  FileDescriptor descriptor(accept4(m_server.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (!descriptor.isValid()) return;
  const auto client = std::make_shared<Connection>(
      m_reactor, std::move(descriptor), [this](const Client& who, const Request& request) { serve(who, request); },
      [this](const Connection* who) {
        m_connections.erase(who);
        m_reactor.setEvents(m_server.get(), POLLIN);
      });
  m_connections[client.get()] = client;
  if (m_connections.size() >= kMaxConnections) m_reactor.setEvents(m_server.get(), 0);
}

void Gateway::serve(const Client& client, const Request& request) {
  const auto account = accountOf(request.header("REMOTE_USER"));
  if (!account) return client->answer(refusal(403, "the console is for the accounts admin, operator and user"));
  const std::string path = pathOf(request);
  const std::string_view method = request.header("REQUEST_METHOD");
  if (method == "POST") return post(client, request, *account, path);
  if (method == "GET" || method == "HEAD") return get(client, request, *account, path);
  client->answer(refusal(405, "the console takes GET and POST"));
}

void Gateway::get(const Client& client, const Request& request, const Account& account, const std::string& path) {
  if (path.empty()) {
    client->answer({.status = 301, .type = "", .headers = "Location: /console/\r\n"});
  } else if (path == "/api/me") {
    const bool isSimulated = access(kJournal, R_OK) == 0;
    client->answer(json(tmx::JsonObject()
                            .text("user", account.name)
                            .text("class", className(account.user))
                            .member("simulated", isSimulated ? "true" : "false")
                            .str()));
  } else if (path == "/api/events") {
    if (!m_viewers.add(client, account)) client->answer(refusal(503, "too many pages are open"));
  } else if (path.starts_with("/api/")) {
    client->answer(refusal(405, "only by POST"));
  } else {
    client->answer(fileOf(m_page, path == "/" ? "index.html" : path.substr(1), request.header("HTTP_IF_NONE_MATCH")));
  }
}

void Gateway::post(const Client& client, const Request& request, const Account& account, const std::string& path) {
  // What a form or a script of another site cannot send.
  if (request.header("CONTENT_TYPE") != "application/json" || request.header("HTTP_X_TMX_CONSOLE") != "1") {
    return client->answer(refusal(403, "application/json and the header X-Tmx-Console: 1 are needed"));
  }
  try {
    if (path == "/api/request") return carryOut(client, account, request.body);
    if (path == "/api/view") return look(client, account, request.body);
  } catch (const BadBody& bad) {
    return client->answer(refusal(400, bad.what()));
  }
  client->answer(refusal(404, "there is no such request"));
}

void Gateway::carryOut(const Client& client, const Account& account, const std::string& body) {
  const std::vector<tmx::Item> items = parseItems(body);
  const std::weak_ptr<Connection> waiting = client;
  m_upstream.run(Priority::Person, account.user, items,
                 [this, waiting, items, user = account.user](const auto& answers, const std::string& failure) {
                   if (const Client who = waiting.lock()) answer(who, user, items, answers, failure);
                 });
}

/** What was taken is read behind it; behind a word that starts something there is nothing to read, or nobody to answer.
 */
void Gateway::answer(const Client& client, tmx::UserClass user, const std::vector<tmx::Item>& items,
                     const std::vector<tmx::Answer>& answers, const std::string& failure) {
  if (answers.size() < items.size()) return client->answer(refusal(503, "the camera does not answer: " + failure));
  std::vector<tmx::Item> reads;
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const bool isTaken = items[i].isWrite && answers[i].accepted();
    if (!isTaken || m_catalogue.isCommand(items[i].path, items[i].value)) continue;
    reads.push_back(tmx::Item::read(items[i].path));
    places.push_back(i);
  }
  if (reads.empty()) return client->answer(json(answersJson(answers, {})));
  const std::weak_ptr<Connection> waiting = client;
  m_upstream.run(Priority::Person, user, reads,
                 [waiting, answers, places](const std::vector<tmx::Answer>& now, const std::string& /*failure*/) {
                   std::map<std::size_t, std::string> taken;
                   for (std::size_t i = 0; i < now.size(); ++i) {
                     if (now[i].hasValue && now[i].accepted()) taken[places[i]] = now[i].value;
                   }
                   if (const Client who = waiting.lock()) who->answer(json(answersJson(answers, taken)));
                 });
}

void Gateway::look(const Client& client, const Account& account, const std::string& body) {
  const View view = parseView(body);
  for (const std::string& path : view.paths) {
    if (const char* fault = Viewers::faultOf(path)) return client->answer(refusal(400, path + ": " + fault));
  }
  switch (m_viewers.look(account, view)) {
    case Viewers::Result::Taken:
      return client->answer(nothing());
    case Viewers::Result::NoSuchPage:
      return client->answer(refusal(404, "no page of this account has this id"));
    case Viewers::Result::TooMuch:
      return client->answer(refusal(503, "all pages together look at too much"));
  }
}

}  // namespace console
