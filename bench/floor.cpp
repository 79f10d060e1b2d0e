// The floor under the daemon's times: the same work on the socket and nothing else. Accepts one connection after the
// other, reads 4 bytes of length and as many bytes as they say, writes both back, closes. With "--frame" each answer
// waits for one frame to the DSP, as it does where a request changes the picture.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "bench/Socket.h"
#include "cli/Client.h"
#include "platform/zr_com.h"

namespace {

/** Room for the longest frame. */
constexpr std::size_t kMostBytes = tmx::kLengthSize + 2 + tmx::kMaxText;

void serve(int fd, bool sendsFrame) {
  char frame[kMostBytes];
  if (!bench::readAll(fd, frame, tmx::kLengthSize)) return;
  const std::size_t length = tmx::frameLength(frame);
  if (length > sizeof frame - tmx::kLengthSize || !bench::readAll(fd, frame + tmx::kLengthSize, length)) return;
  unsigned char image[12] = {0x60, 1};
  if (sendsFrame && zr_set_va_data(image) != 0) std::perror("zr_set_va_data");
  if (send(fd, frame, tmx::kLengthSize + length, MSG_NOSIGNAL) < 0) std::perror("send");
}

}  // namespace

int main(int argc, char** argv) {
  const bool sendsFrame = argc == 3 && std::string_view(argv[2]) == "--frame";
  const std::string_view path = argc == 2 || sendsFrame ? argv[1] : "";
  if (path.empty() || path.size() >= sizeof sockaddr_un::sun_path) {
    std::fputs("usage: tmx_floor SOCKET [--frame]\n", stderr);
    return 2;
  }
  const sockaddr_un address = bench::addressOf(path);
  const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (server < 0 || bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(server, SOMAXCONN) != 0) {
    std::perror(argv[1]);
    return 1;
  }
  while (true) {
    const int client = accept(server, nullptr, nullptr);
    if (client < 0) continue;
    serve(client, sendsFrame);
    close(client);
  }
}
