#include "tests/camera/Console.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <chrono>

namespace test {
namespace {

/** Longer than anything takes to be told of. */
constexpr std::chrono::seconds kPatience{20};

Console::Headers headersOf(const std::string& account, const std::string& method, const std::string& path) {
  const std::size_t question = std::min(path.find('?'), path.size());
  return {{"SCGI", "1"},
          {"REQUEST_METHOD", method},
          {"SCRIPT_NAME", "/console"},
          {"PATH_INFO", path.substr(0, question)},
          {"QUERY_STRING", path.substr(std::min(question + 1, path.size()))},
          {"REMOTE_USER", account}};
}

void sendAll(int socket, std::string_view bytes) {
  static_cast<void>(send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL));
}

}  // namespace

int Console::connect() const {
  // The camera's /run is in its own root.
  const std::string path =
      "/proc/" + std::to_string(std::atoi(m_camera.read("run/init.pid").c_str())) + "/root/run/console.socket-0";
  const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  if (::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return client;
  close(client);
  return -1;
}

std::string Console::exchange(std::string_view bytes) const {
  const int client = connect();
  sendAll(client, bytes);
  shutdown(client, SHUT_WR);
  std::string answer;
  std::array<char, 65536> buffer{};
  for (ssize_t count = 0; (count = recv(client, buffer.data(), buffer.size(), 0)) > 0;)
    answer.append(buffer.data(), static_cast<std::size_t>(count));
  close(client);
  return answer;
}

std::string Console::frame(const Headers& headers, const std::string& body) {
  std::string block = std::string("CONTENT_LENGTH") + '\0' + std::to_string(body.size()) + '\0';
  for (const auto& [name, value] : headers)
    block += name + '\0' + value + '\0';
  return std::to_string(block.size()) + ":" + block + "," + body;
}

Console::Answer Console::ask(const Headers& headers, const std::string& body) const {
  const int client = connect();
  sendAll(client, frame(headers, body));
  std::string text;
  std::array<char, 65536> buffer{};
  for (ssize_t count = 0; (count = recv(client, buffer.data(), buffer.size(), 0)) > 0;)
    text.append(buffer.data(), static_cast<std::size_t>(count));
  close(client);
  const std::size_t end = text.find("\r\n\r\n");
  if (!text.starts_with("Status: ") || end == std::string::npos) return {};
  return {std::atoi(text.c_str() + 8), text.substr(0, end), text.substr(end + 4)};
}

Console::Answer Console::get(const std::string& account, const std::string& path) const {
  return ask(headersOf(account, "GET", path));
}

Console::Answer Console::post(const std::string& account, const std::string& path, const Json& body) const {
  Headers headers = headersOf(account, "POST", path);
  headers.insert(headers.end(), {{"CONTENT_TYPE", "application/json"}, {"HTTP_X_TMX_CONSOLE", "1"}});
  return ask(headers, body.dump());
}

Page::Page(const Console& console, std::string account)
    : m_console(console), m_account(std::move(account)), m_socket(console.connect()) {
  const timeval limit{kPatience.count(), 0};
  setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  sendAll(m_socket, Console::frame(headersOf(m_account, "GET", "/api/events"), ""));
  m_id = await("hello", [](const Json&) { return true; }).value("id", "");
}

Page::~Page() { close(m_socket); }

int Page::look(const Texts& paths) const {
  return m_console.post(m_account, "/api/view", {{"id", m_id}, {"paths", paths}}).status;
}

Json Page::await(const std::string& event, const std::function<bool(const Json&)>& isIt) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  std::string name;
  std::string data;
  Json last;
  while (next(name, data, end)) {
    if (name != event) continue;
    last = Json::parse(data, nullptr, false);
    if (isIt(last)) return last;
  }
  ADD_FAILURE() << "no such event \"" << event << "\"; the last was " << last;
  return {};
}

bool Page::next(std::string& event, std::string& data, std::chrono::steady_clock::time_point limit) {
  std::array<char, 65536> buffer{};
  while (true) {
    const std::size_t begin = m_bytes.find("event: ");
    const std::size_t end = begin == std::string::npos ? begin : m_bytes.find("\n\n", begin);
    if (end != std::string::npos) {
      const std::size_t line = m_bytes.find('\n', begin);
      event = m_bytes.substr(begin + 7, line - begin - 7);
      data = m_bytes.substr(line + 7, end - line - 7);
      m_bytes.erase(0, end);
      return true;
    }
    if (std::chrono::steady_clock::now() >= limit) return false;
    const ssize_t count = recv(m_socket, buffer.data(), buffer.size(), 0);
    if (count <= 0) return false;
    m_bytes.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace test
