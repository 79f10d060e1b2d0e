#include "sim/sandbox/Client.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>

namespace sim {

namespace {

constexpr char administrator = 0;
constexpr char plainLineEnds = 1;
constexpr std::uint32_t longestAnswer = 1 << 20;

std::string lengthField(std::size_t length) {
  std::string field;
  for (unsigned shift = 0; shift < 32; shift += 8)
    field += static_cast<char>(length >> shift & 0xff);
  return field;
}

std::string readExactly(int descriptor, std::size_t size) {
  std::string data(size, '\0');
  std::size_t done = 0;
  while (done < size) {
    const ssize_t part = read(descriptor, data.data() + done, size - done);
    if (part <= 0) return "";
    done += static_cast<std::size_t>(part);
  }
  return data;
}

}  // namespace

std::string request(const Path& home, const std::string& query, int milliseconds) {
  // A home's path may be longer than a socket address; the way through the directory's descriptor never is.
  const Fd directory(open((home / "tmp").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const Fd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const timeval limit{milliseconds / 1000, milliseconds % 1000 * 1000};
  setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/request", directory.get());
  if (connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return "";

  const std::string body = std::string{administrator, plainLineEnds} + query;
  const std::string frame = lengthField(body.size()) + body;
  if (send(socket.get(), frame.data(), frame.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(frame.size())) return "";
  const std::string field = readExactly(socket.get(), 4);
  std::uint32_t length = 0;
  for (std::size_t byte = field.size(); byte-- > 0;)
    length = length << 8 | static_cast<unsigned char>(field[byte]);
  return length == 0 || length > longestAnswer ? "" : readExactly(socket.get(), length);
}

}  // namespace sim
