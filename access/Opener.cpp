#include "access/Opener.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "access/Privileges.h"
#include "cli/Client.h"

namespace tmx {
namespace {

/** The longest wait for a place among those whom the daemon has not served yet. */
constexpr std::chrono::seconds kPatience{30};

union ControlMessage {
  cmsghdr header;
  std::array<char, CMSG_SPACE(sizeof(int))> bytes;
};

/** Sends the descriptor, or, where there is none, the error. */
bool hand(int client, int descriptor, int error) {
  iovec part{&error, sizeof error};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  ControlMessage control{};
  if (descriptor >= 0) {
    message.msg_control = control.bytes.data();
    message.msg_controllen = control.bytes.size();
    cmsghdr* header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof descriptor);
    std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
  }
  return sendmsg(client, &message, MSG_NOSIGNAL) >= 0;
}

[[noreturn]] void serve(int client, const std::string& socket, const char* name) {
  prctl(PR_SET_NAME, name);
  std::signal(SIGTERM, SIG_IGN);  // ends with who has started it
  if (!dropCapabilities()) _exit(1);
  char asked = 0;
  while (read(client, &asked, sizeof asked) == sizeof asked) {
    const FileDescriptor connection(connectTo(socket, kPatience));
    if (!hand(client, connection.get(), connection.isValid() ? 0 : errno)) break;
  }
  _exit(0);
}

}  // namespace

FileDescriptor startOpener(const std::string& socket, const char* name) {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return {};
  FileDescriptor ours(ends[0]);
  const FileDescriptor theirs(ends[1]);
  const pid_t pid = fork();
  if (pid < 0) return {};
  if (pid == 0) {
    ours.reset();
    close(STDIN_FILENO);  // may be a socket of somebody who waits for its end
    serve(theirs.get(), socket, name);
  }
  return ours;
}

bool requestConnection(int opener) {
  const char ask = 0;
  return send(opener, &ask, sizeof ask, MSG_NOSIGNAL) == sizeof ask;
}

FileDescriptor takeConnection(int opener) {
  int error = EPIPE;
  iovec part{&error, sizeof error};
  ControlMessage control{};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = control.bytes.data();
  message.msg_controllen = control.bytes.size();
  const bool isWhole = recvmsg(opener, &message, MSG_CMSG_CLOEXEC) == sizeof error;
  FileDescriptor connection;
  const cmsghdr* header = isWhole ? CMSG_FIRSTHDR(&message) : nullptr;
  if (header != nullptr && header->cmsg_type == SCM_RIGHTS) {
    int descriptor = -1;
    std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
    connection.reset(descriptor);
  }
  errno = isWhole ? error : EPIPE;
  return connection;
}

}  // namespace tmx
