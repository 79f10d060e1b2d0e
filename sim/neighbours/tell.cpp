#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

#include "sim/common/UnixSocket.h"

/*
 * camera-tell --socket PATH NEIGHBOUR WORD…: sends the words to the neighbours' control socket and prints what comes
 * back. The exit status is 0 only when it was carried out.
 */
namespace {

std::string readLine(int socket) {
  std::string line;
  std::array<char, 4096> buffer{};
  while (line.find('\n') == std::string::npos) {
    const ssize_t count = ::read(socket, buffer.data(), buffer.size());
    if (count <= 0) break;
    line.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return line;
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int firstWord = 3;
  if (argc <= firstWord || std::string(argv[1]) != "--socket") {
    std::fputs("usage: camera-tell --socket PATH NEIGHBOUR WORD...\n", stderr);
    return 2;
  }
  const sim::Descriptor socket = sim::connectTo(argv[2]);
  if (!socket.isOpen()) {
    std::perror(argv[2]);
    return 1;
  }
  std::string line;
  for (int i = firstWord; i < argc; ++i)
    line += (line.empty() ? "" : " ") + std::string(argv[i]);
  line += '\n';
  if (::send(socket.number(), line.data(), line.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(line.size())) {
    std::perror("camera-tell");
    return 1;
  }
  const std::string answer = readLine(socket.number());
  const bool failed = answer.empty() || answer.starts_with("error");
  std::fputs(answer.empty() ? "camera-tell: no answer\n" : answer.c_str(), failed ? stderr : stdout);
  return failed ? 1 : 0;
}
