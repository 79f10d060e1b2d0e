#include "service/ParamPitcherDetection.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "local/LittleEndian.h"
#include "request/Log.h"
#include "request/StatusCode.h"
#include "service/Exchange.h"

ParamPitcherDetection::ParamPitcherDetection(std::string path) : m_path(std::move(path)) {}

int32_t ParamPitcherDetection::putString(int32_t kind, const std::string& text) const {
  const std::string cut = text.substr(0, kMaxText);
  Packet packet{};
  putWord(packet, 0, static_cast<uint32_t>(kind));
  std::copy(cut.begin(), cut.end(), packet.begin() + 4);
  TMX_LOG(LOG_DEBUG, "%s:%d:: detect send(%ld:%s)", __func__, __LINE__, static_cast<long>(kind), cut.c_str());
  if (notifyChange(&packet) < 0) return -status::kInternalError;
  const auto result = static_cast<int32_t>(getWord(packet, 0));
  if (result != 0) return -status::kInternalError;
  TMX_LOG(LOG_DEBUG, "%s:%d:: detect send success(res:%ld)\n", __func__, __LINE__, static_cast<long>(result));
  return status::kOk;
}

int32_t ParamPitcherDetection::notifyChange(Packet* packet) const {
  FileDescriptor socket;
  switch (sendMessage(&socket, m_path, *packet)) {
    case Sending::NoSocket:
      TMX_LOG(LOG_ERR, "[%s:%d] cannot create socket", __func__, __LINE__);
      return -1;
    case Sending::NotConnected:
      TMX_LOG(LOG_ERR, "[%s:%d] connect to (%s) failed", __func__, __LINE__, m_path.c_str());
      return -1;
    case Sending::NotWritten:
      TMX_LOG(LOG_ERR, "[%s:%d] write to /tmp/detection_request failed", __func__, __LINE__);
      return -1;
    case Sending::Done:
      break;
  }
  // A short answer counts: only the number in front is asked for. The log names the recorder's socket, as ever.
  if (read(socket.get(), packet->data(), packet->size()) >= 0) return 0;
  TMX_LOG(LOG_ERR, "[%s:%d] read from /tmp/localrec failed", __func__, __LINE__);
  return -1;
}
