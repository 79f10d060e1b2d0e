#include "web/Gateway.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

#include "cli/Json.h"
#include "web/Body.h"
#include "web/Files.h"
#include "web/Journal.h"

namespace console {
namespace {

/** Beyond them the web server waits. */
constexpr std::size_t kMaxConnections = 128;

constexpr std::string_view kRoot = "/console";

/** The path below kRoot, as "/api/me"; empty for one that is not below it. */
std::string pathOf(const Request& request) {
  const std::string path = std::string(request.header("SCRIPT_NAME")) + std::string(request.header("PATH_INFO"));
  return path.starts_with(kRoot) ? path.substr(kRoot.size()) : std::string();
}

}  // namespace

Gateway::Gateway(tmx::Reactor& reactor, FileDescriptor server, int opener, std::string page,
                 const tmx::Catalogue& catalogue, const ConfirmFile& file)
    : m_reactor(reactor),
      m_server(std::move(server)),
      m_page(std::move(page)),
      m_upstream(reactor, opener),
      m_waiting(catalogue),
      m_viewers(reactor, m_upstream, m_waiting, file),
      m_changes(m_upstream, catalogue, m_waiting, file, [this] { m_viewers.tellWaiting(); }),
      m_metrics(m_upstream, m_waiting) {
  m_upstream.onAnswer([this](bool isAnswered, tmx::Clock::duration time) {
    m_metrics.noteAnswer(isAnswered, time);
    m_viewers.noteAnswer(isAnswered);
  });
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
  const auto account = tmx::accountOf(request.header("REMOTE_USER"));
  if (!account) return client->answer(refusal(403, "the console is for the accounts admin, operator and user"));
  const std::string path = pathOf(request);
  const std::string_view method = request.header("REQUEST_METHOD");
  if (method == "POST") return post(client, request, *account, path);
  if (method == "GET" || method == "HEAD") return get(client, request, *account, path);
  client->answer(refusal(405, "the console takes GET and POST"));
}

void Gateway::get(const Client& client, const Request& request, const tmx::Account& account, const std::string& path) {
  if (path.empty()) {
    client->answer({.status = 301, .type = "", .headers = "Location: /console/\r\n"});
  } else if (path == "/api/me") {
    client->answer(json(tmx::JsonObject()
                            .text("user", account.name)
                            .text("class", tmx::className(account.user))
                            .member("simulated", hasJournal() ? "true" : "false")
                            .str()));
  } else if (path == "/api/events") {
    if (!m_viewers.add(client, account)) client->answer(refusal(503, "too many pages are open"));
  } else if (path == "/api/journal") {
    const bool isRefused = account.user == tmx::UserClass::kUser;  // it shows what this class may not read
    client->answer(isRefused ? refusal(403, "not for the class user") : journalBehind(request.header("QUERY_STRING")));
  } else if (path == "/metrics") {
    m_metrics.serve(client);
  } else if (path.starts_with("/api/")) {
    client->answer(refusal(405, "only by POST"));
  } else {
    client->answer(fileOf(m_page, path == "/" ? "index.html" : path.substr(1), request.header("HTTP_IF_NONE_MATCH")));
  }
}

void Gateway::post(const Client& client, const Request& request, const tmx::Account& account, const std::string& path) {
  // What a form or a script of another site cannot send.
  if (request.header("CONTENT_TYPE") != "application/json" || request.header("HTTP_X_TMX_CONSOLE") != "1") {
    return client->answer(refusal(403, "application/json and the header X-Tmx-Console: 1 are needed"));
  }
  try {
    if (path == "/api/request") return m_changes.request(client, account, parseItems(request.body));
    if (path == "/api/apply") return m_changes.apply(client, account, parseApplication(request.body));
    if (path == "/api/confirm") return m_changes.confirm(client, account);
    if (path == "/api/view") return look(client, account, request.body);
  } catch (const tmx::BadBody& bad) {
    return client->answer(refusal(400, bad.what()));
  }
  client->answer(refusal(404, "there is no such request"));
}

void Gateway::look(const Client& client, const tmx::Account& account, const std::string& body) {
  const View view = parseView(body);
  for (const std::string& path : view.paths) {
    if (const char* fault = tmx::Reader::faultOf(path)) return client->answer(refusal(400, path + ": " + fault));
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
