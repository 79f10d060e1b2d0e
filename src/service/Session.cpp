#include "service/Session.h"

#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "local/FileDescriptor.h"
#include "local/LittleEndian.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/Numbers.h"

namespace {

constexpr size_t kReadStep = 4096;
/** What the daemon may answer at most; a longer announcement is nonsense. */
constexpr size_t kLongestAnswer = 64 * 1024;

/** Ignores SIGPIPE, and puts the old action back at the end of its life. */
class IgnoredPipeSignal {
 public:
  IgnoredPipeSignal() {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    m_isSet = sigaction(SIGPIPE, &ignore, &m_before) == 0;
  }
  ~IgnoredPipeSignal() {
    if (m_isSet) sigaction(SIGPIPE, &m_before, nullptr);
  }
  IgnoredPipeSignal(const IgnoredPipeSignal&) = delete;
  IgnoredPipeSignal& operator=(const IgnoredPipeSignal&) = delete;

  [[nodiscard]] bool isSet() const { return m_isSet; }

 private:
  struct sigaction m_before {};
  bool m_isSet;
};

FileDescriptor connectServer(const std::string& path) {
  FileDescriptor server(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!server.isValid()) {
    TMX_LOG(LOG_ERR, "socket error(%s)", strerror(errno));
    return {};
  }
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  if (connect(server.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) < 0) {
    TMX_LOG(LOG_ERR, "connect error(%s)", strerror(errno));
    return {};
  }
  return server;
}

/** Length, command, and the payload; the length counts the command's word, so four spare bytes follow a payload. */
bool sendRequest(int server, uint32_t command, std::span<const uint8_t> payload) {
  const auto length = static_cast<uint32_t>(4 + payload.size());
  std::vector<uint8_t> message(8 + (payload.empty() ? 0 : length));
  putWord(message, 0, length);
  putWord(message, 4, command);
  std::copy(payload.begin(), payload.end(), message.begin() + 8);
  return CTmxdUtility::writeData(server, message.data(), message.size()) == static_cast<ssize_t>(message.size());
}

/** Reads in steps, so that memory grows with what arrives and not with what the length promises. */
bool receiveResponse(int server, std::string* text) {
  std::array<uint8_t, 4> head{};
  if (CTmxdUtility::readData(server, head.data(), head.size()) != static_cast<ssize_t>(head.size())) return false;
  size_t remaining = getWord(head, 0);
  if (remaining > kLongestAnswer) {
    TMX_LOG(LOG_ERR, "answer too long(%lu)", static_cast<unsigned long>(remaining));
    return false;
  }
  std::array<char, kReadStep> step{};
  while (remaining > 0) {
    const size_t wanted = std::min(remaining, step.size());
    if (CTmxdUtility::readData(server, step.data(), wanted) != static_cast<ssize_t>(wanted)) return false;
    text->append(step.data(), wanted);
    remaining -= wanted;
  }
  text->resize(std::min(text->find('\0'), text->size()));
  if (text->find_first_of("\r\n") == std::string::npos) return true;
  TMX_LOG(LOG_ERR, "answer of several lines");
  return false;
}

}  // namespace

Session::Session(std::string path) : m_path(std::move(path)) {}

std::string Session::getSessionCount() const {
  int64_t sum = 0;
  for (const char* codec : {"jpeg", "h264", "mpeg4"})
    sum += parseNumber(getCodecCount(codec)).value_or(0);
  return std::to_string(sum);
}

std::string Session::request(uint32_t command) const { return processRequest(command, {}); }

std::string Session::request(uint32_t command, int32_t index) const {
  std::array<uint8_t, 4> payload{};
  putWord(payload, 0, static_cast<uint32_t>(index));
  return processRequest(command, payload);
}

std::string Session::request(uint32_t command, const std::string& text) const {
  return processRequest(command, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

std::string Session::processRequest(uint32_t command, std::span<const uint8_t> payload) const {
  const IgnoredPipeSignal guard;
  if (!guard.isSet()) {
    TMX_LOG(LOG_ERR, "set_signal error");
    return {};
  }
  const FileDescriptor server = connectServer(m_path);
  if (!server.isValid()) {
    TMX_LOG(LOG_ERR, "connect_server");
    return {};
  }
  if (!sendRequest(server.get(), command, payload)) {
    TMX_LOG(LOG_ERR, "send_request");
    return {};
  }
  std::string text;
  if (!receiveResponse(server.get(), &text)) {
    TMX_LOG(LOG_ERR, " recv_response");
    return {};
  }
  return text;
}
