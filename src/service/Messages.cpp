#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "config/Initialising.h"
#include "local/FileDescriptor.h"
#include "local/UnixDomain.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/Exchange.h"

namespace {

constexpr const char* kGpioSocket = "/tmp/gpio";
constexpr const char* kPtzseqSocket = "/tmp/ptzseq";
constexpr size_t kMaxPtzseqReply = 512;
constexpr time_t kPtzseqTimeout = 5;  // seconds, for each direction

int32_t writeGpio(FileDescriptor* socket, const GpioMessage& request) {
  switch (sendMessage(socket, kGpioSocket, request.toBytes())) {
    case Sending::NoSocket:
      TMX_LOG(LOG_ERR, "%s:%d::create sock error", __func__, __LINE__);
      return -1;
    case Sending::NotConnected:
      TMX_LOG(LOG_ERR, "%s : %d : connect /tmp/gpio error", __func__, __LINE__);
      return -1;
    case Sending::NotWritten:
      TMX_LOG(LOG_ERR, "%s : %d : send data to gpio error", __func__, __LINE__);
      return -1;
    case Sending::Done:
      break;
  }
  return 0;
}

enum class Direction { Read, Write };

/** As select: above 0 when the socket is ready, 0 when the time is over. */
int waitFor(Direction direction, int socket) {
  fd_set sockets;
  FD_ZERO(&sockets);
  FD_SET(socket, &sockets);
  timeval timeout{.tv_sec = kPtzseqTimeout, .tv_usec = 0};
  const bool isRead = direction == Direction::Read;
  return select(socket + 1, isRead ? &sockets : nullptr, isRead ? nullptr : &sockets, nullptr, &timeout);
}

int32_t sendText(int socket, const std::string& request) {
  if (waitFor(Direction::Write, socket) <= 0) {
    TMX_LOG(LOG_ERR, "%s : %d : [ptzseq] send timeout[%s]", __func__, __LINE__, request.c_str());
    return -1;
  }
  const ssize_t count = send(socket, request.data(), request.size(), 0);
  if (count == static_cast<ssize_t>(request.size())) return 0;
  TMX_LOG(LOG_ERR, "%s : %d : [ptzseq] send request error[%s], [retval:%ld], [length:%d]", __func__, __LINE__,
          request.c_str(), static_cast<long>(count), static_cast<int>(request.size()));
  return -1;
}

/** A sequencer that let one message of a start time out is sent the others, and not waited for: 5 s each would add up.
 */
bool isGivenUp = false;

int32_t receiveText(int socket, const std::string& request, std::string* reply) {
  isGivenUp = isGivenUp && isInitialising();
  if (isGivenUp) return -1;
  const int ready = waitFor(Direction::Read, socket);
  if (ready < 0) {
    TMX_LOG(LOG_ERR, "%s : %d : [ptzseq] select error[%s]", __func__, __LINE__, request.c_str());
    return -1;
  }
  if (ready == 0) {
    isGivenUp = isInitialising();
    TMX_LOG(LOG_ERR, "%s : %d : [ptzseq] response timeout[%s]", __func__, __LINE__, request.c_str());
    return -1;
  }
  std::array<char, kMaxPtzseqReply> buffer{};
  const ssize_t count = recv(socket, buffer.data(), buffer.size(), 0);
  if (count <= 0) {
    TMX_LOG(LOG_ERR, "%s : %d : [ptzseq] recv error[%s]", __func__, __LINE__, request.c_str());
    return -1;
  }
  reply->assign(buffer.data(), strnlen(buffer.data(), static_cast<size_t>(count)));
  return 0;
}

int32_t exchangeText(int socket, const std::string& request, std::string* reply) {
  if (UnixDomain::connectServ(socket, kPtzseqSocket) < 0) return -1;
  if (sendText(socket, request) < 0) return -1;
  return receiveText(socket, request, reply);
}

}  // namespace

int32_t CTmxdUtility::sendGPIO(const GpioMessage& request, GpioMessage* reply) {
  FileDescriptor socket;
  if (writeGpio(&socket, request) < 0) return -1;
  GpioMessage::Bytes bytes{};
  if (read(socket.get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
    TMX_LOG(LOG_ERR, "%s : %d : read data from gpio error", __func__, __LINE__);
    return -1;
  }
  *reply = GpioMessage::fromBytes(bytes);
  return reply->acknowledges(request) ? 0 : -1;
}

int32_t CTmxdUtility::sendGPIO(const GpioMessage& request) {
  FileDescriptor socket;
  return writeGpio(&socket, request);
}

int32_t CTmxdUtility::sendPtzseq(const std::string& request, std::string* reply) {
  FileDescriptor socket(UnixDomain::createClientSocket());
  if (!socket.isValid()) return -1;
  const int32_t result = exchangeText(socket.get(), request, reply);
  if (close(socket.release()) < 0) {
    TMX_LOG(LOG_ERR, "%s : %d : socket close error (%s)", __func__, __LINE__, strerror(errno));
  }
  return result;
}
