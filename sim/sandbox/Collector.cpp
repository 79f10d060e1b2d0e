#include "sim/sandbox/Collector.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

namespace sim {

namespace {

constexpr std::array<const char*, 8> priorities{"emerg", "alert", "crit", "err", "warning", "notice", "info", "debug"};
constexpr std::size_t timeLength = 16;  // "Nov 22 21:31:06 " as the C library writes it

/** Takes "<11>" off the head of a message; the name of its priority. */
const char* takePriority(std::string_view& message) {
  unsigned value = 6;
  const std::size_t end = message.find('>');
  if (message.starts_with('<') && end != std::string_view::npos) {
    std::from_chars(message.data() + 1, message.data() + end, value);
    message.remove_prefix(end + 1);
  }
  return priorities[value & 7];
}

std::string formatLine(std::string_view message, pid_t sender) {
  const char* priority = takePriority(message);
  const std::string_view time = message.substr(0, timeLength);
  message.remove_prefix(time.size());
  const std::size_t colon = message.find(": ");
  std::string tag(message.substr(0, colon));
  std::string text(colon == std::string_view::npos ? "" : message.substr(colon + 2));
  if (tag.find('[') == std::string::npos) tag += "[" + std::to_string(sender) + "]";
  while (!text.empty() && (text.back() == '\n' || text.back() == '\0'))
    text.pop_back();
  for (char& letter : text) {
    if (letter == '\n') letter = ' ';
  }
  return std::string(time) + "camera " + tag + ": <" + priority + "> " + text + "\n";
}

}  // namespace

Collector::Collector()
    : m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)),
      m_file(open("/var/log/messages", O_WRONLY | O_APPEND | O_CLOEXEC)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strcpy(address.sun_path, "/dev/log");
  const int on = 1;
  const bool bound = bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                     setsockopt(m_socket.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof on) == 0;
  if (!bound || !m_file.valid()) die("serve /dev/log");
}

void Collector::collect() const {
  std::array<char, 8192> text{};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
  while (true) {
    iovec part{text.data(), text.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = recvmsg(m_socket.get(), &message, 0);
    if (size < 0) return;
    ucred sender{};
    if (const cmsghdr* header = CMSG_FIRSTHDR(&message); header != nullptr && header->cmsg_type == SCM_CREDENTIALS) {
      std::memcpy(&sender, CMSG_DATA(header), sizeof sender);
    }
    const std::string line = formatLine({text.data(), static_cast<std::size_t>(size)}, sender.pid);
    [[maybe_unused]] const ssize_t written = write(m_file.get(), line.data(), line.size());
  }
}

}  // namespace sim
