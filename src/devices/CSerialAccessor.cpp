#include "devices/CSerialAccessor.h"

#include <unistd.h>

#include <algorithm>

#include "local/LittleEndian.h"
#include "local/UnixDomain.h"
#include "request/Log.h"
#include "request/StatusCode.h"

namespace {

constexpr int32_t kOnlyPort = 1;
constexpr uint32_t kChangeSetting = 1;

// Where the fields stand in a request.
constexpr size_t kCommandAt = 0;
constexpr size_t kPortAt = 4;
constexpr size_t kBaudAt = 8;
constexpr size_t kDataBitsAt = 12;
constexpr size_t kParityAt = 16;
constexpr size_t kParitySize = 8;
constexpr size_t kStopBitsAt = 24;

constexpr size_t kCodeAt = 4;

}  // namespace

CSerialAccessor::CSerialAccessor(int32_t port, const std::string& path)
    : m_port(kOnlyPort), m_socket(UnixDomain::createClientSocket()) {
  if (port != kOnlyPort) TMX_LOG(LOG_ERR, "forced serialnum 1");
  if (m_socket.isValid() && UnixDomain::connectServ(m_socket.get(), path) < 0) m_socket.reset();
}

CSerialAccessor::Request CSerialAccessor::makeRequest(const SerialSettings& settings) const {
  Request request{};
  putWord(request, kCommandAt, kChangeSetting);
  putWord(request, kPortAt, static_cast<uint32_t>(m_port));
  putWord(request, kBaudAt, static_cast<uint32_t>(settings.baud));
  putWord(request, kDataBitsAt, static_cast<uint32_t>(settings.dataBits));
  std::copy_n(settings.parity.begin(), std::min(settings.parity.size(), kParitySize), request.begin() + kParityAt);
  putWord(request, kStopBitsAt, static_cast<uint32_t>(settings.stopBits));
  return request;
}

int32_t CSerialAccessor::changeSettings(const SerialSettings& settings) const {
  const Request request = makeRequest(settings);
  if (write(m_socket.get(), request.data(), request.size()) != static_cast<ssize_t>(request.size())) {
    TMX_LOG(LOG_ERR, "write to seriald err");
    return -status::kInternalError;
  }
  std::array<uint8_t, kReplySize> reply{};
  if (read(m_socket.get(), reply.data(), reply.size()) != static_cast<ssize_t>(reply.size())) {
    TMX_LOG(LOG_ERR, "read from seriald err");
    return -status::kInternalError;
  }
  if (getWord(reply, 0) == 0) return 0;
  const auto code = static_cast<int32_t>(getWord(reply, kCodeAt));
  return code > 0 ? -code : -status::kInternalError;
}
