#include "sim/sandbox/Uplink.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstring>

#include "sim/sandbox/Doors.h"

namespace sim {

namespace {

constexpr int insidePort = 8883;  // an encrypted broker's

/** A message of one byte with room for a descriptor beside it. */
struct Parcel {
  char byte = 0;
  iovec part{&byte, 1};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
  msghdr message{};

  Parcel() {
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
  }
};

void send(const Fd& channel, int descriptor) {
  Parcel parcel;
  cmsghdr* header = CMSG_FIRSTHDR(&parcel.message);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(sizeof descriptor);
  std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
  must(sendmsg(channel.get(), &parcel.message, MSG_NOSIGNAL) == 1, "hand the uplink out");
}

/** Invalid when the sender has ended before it sent one. */
Fd receive(const Fd& channel) {
  Parcel parcel;
  int descriptor = -1;
  if (recvmsg(channel.get(), &parcel.message, MSG_CMSG_CLOEXEC) != 1) return Fd();
  const cmsghdr* header = CMSG_FIRSTHDR(&parcel.message);
  if (header != nullptr && header->cmsg_type == SCM_RIGHTS)
    std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
  return Fd(descriptor);
}

/** The supervisor's lock and its pipes must not live on in this process. */
void closeAllBut(const Fd& channel) {
  const auto kept = static_cast<unsigned>(channel.get());
  if (kept > STDERR_FILENO + 1) close_range(STDERR_FILENO + 1, kept - 1, 0);
  close_range(kept + 1, ~0U, 0);
}

}  // namespace

Uplink::Uplink(const std::string& place) {
  const sockaddr_in address = parseAddress(place);
  std::array<int, 2> ends{};
  must(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0, "make the uplink");
  m_channel = Fd(ends[0]);
  const Fd outside(ends[1]);
  m_server = fork();
  must(m_server >= 0, "fork");
  if (m_server != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  prctl(PR_SET_NAME, "uplink");
  closeAllBut(outside);
  std::vector<Door> doors(1);
  doors[0].listener = receive(outside);
  doors[0].reach = [address] { return connectTo(address); };
  if (doors[0].listener.valid()) serve(doors);
  _exit(1);
}

Uplink::~Uplink() {
  kill(m_server, SIGKILL);
  waitpid(m_server, nullptr, 0);
}

void Uplink::open() const { send(m_channel, listenAt(loopback(insidePort)).get()); }

}  // namespace sim
