#include "bench/SessionDaemon.h"

#include <chrono>
#include <fstream>

#include "bench/Socket.h"
#include "cli/Client.h"

namespace bench {
namespace {

/** The bytes behind "raw" of a journal line. */
std::string rawBytes(const std::string& line) {
  constexpr std::string_view kKey = "\"raw\":\"";
  std::string bytes;
  size_t at = line.find(kKey);
  if (at == std::string::npos) return bytes;
  for (at += kKey.size(); at + 1 < line.size() && line[at] != '"'; at += 2) {
    bytes += static_cast<char>(std::stoi(line.substr(at, 2), nullptr, 16));
  }
  return bytes;
}

}  // namespace

SessionDaemon::SessionDaemon(std::string socket, const std::string& journal, long start) : m_socket(std::move(socket)) {
  std::ifstream lines(journal);
  lines.seekg(start);
  for (std::string line; std::getline(lines, line);) {
    if (line.find("\"who\":\"session\"") != std::string::npos) m_requests.push_back(rawBytes(line));
  }
}

bool SessionDaemon::exchange(const std::string& request) const {
  const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_un address = addressOf(m_socket);
  char length[tmx::kLengthSize] = {};
  bool isDone = connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                send(fd, request.data(), request.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(request.size()) &&
                readAll(fd, length, sizeof length);
  if (isDone) {
    std::string text(tmx::frameLength(length), '\0');
    isDone = readAll(fd, text.data(), text.size());
  }
  close(fd);
  return isDone;
}

Cost SessionDaemon::exchangeAll(int times) const {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < times; ++i) {
    for (const std::string& request : m_requests) {
      if (!exchange(request)) return {-1, 0};
    }
  }
  return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / times, 0};
}

}  // namespace bench
