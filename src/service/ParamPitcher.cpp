#include "service/ParamPitcher.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <string_view>
#include <utility>

#include "config/Config.h"
#include "local/UnixDomain.h"
#include "request/Log.h"
#include "request/StatusCode.h"
#include "service/Exchange.h"

namespace {

/** The commands of the recorder daemon. */
enum Command : int32_t {
  kGet = 0,
  kPut = 1,
  kRestart = 4,
  kStatus = 6,
  kLed = 8,
  kImageMode = 9,
  kBootInfo = 10,
  kEncoderChange = 12,
};

constexpr int32_t kColorMode = 8;
constexpr int32_t kMonochromeMode = 9;

/** The lamps in the order of their numbers; each has one for on and, behind it, one for off. */
constexpr std::array<std::string_view, 4> kLamps = {"stealth", "identify", "green", "orange"};

ParamPacket makePacket(Command command, int32_t id = 0) {
  ParamPacket packet;
  packet.setCmd(command);
  packet.setId(id);
  return packet;
}

}  // namespace

ParamPitcher::ParamPitcher(std::string path) : m_path(std::move(path)) {}

int32_t ParamPitcher::getInt(int32_t id) const {
  ParamPacket packet = makePacket(kGet, id);
  if (!exchange(&packet)) return -status::kInternalError;
  return packet.nCmd() == ParamPacket::kSuccess ? packet.nValue() : packet.nId();
}

std::string ParamPitcher::getString(int32_t id, int32_t* result) const {
  ParamPacket packet = makePacket(kGet, id);
  if (!exchange(&packet)) {
    *result = -status::kInternalError;
    return {};
  }
  if (packet.nCmd() != ParamPacket::kSuccess) {
    *result = packet.nId();
    return {};
  }
  *result = status::kOk;
  return packet.text();
}

int32_t ParamPitcher::putInt(int32_t id, int32_t value) const {
  ParamPacket packet = makePacket(kPut, id);
  packet.setValue(value);
  return put(&packet);
}

int32_t ParamPitcher::putIntArg(int32_t id, int32_t value) const {
  ParamPacket packet = makePacket(kPut, id);
  packet.setArg(1);
  packet.setValue(value);
  return exchange(&packet) ? packet.nId() : -status::kInternalError;
}

int32_t ParamPitcher::putString(int32_t id, const std::string& text) const {
  ParamPacket packet = makePacket(kPut, id);
  packet.setText(text);
  return put(&packet);
}

int32_t ParamPitcher::putRestart(int32_t rule) const {
  ParamPacket packet = makePacket(kRestart);
  packet.setValue(rule);
  if (notifyChange(&packet) < 0) return -status::kInternalError;
  if (packet.nCmd() == ParamPacket::kSuccess) return status::kOk;
  if (packet.nCmd() == ParamPacket::kRefused) return -status::kMethodNotAllowed;
  TMX_LOG(LOG_ERR, "%s: receive failed(nCmd=%ld)", __func__, static_cast<long>(packet.nCmd()));
  return -status::kInternalError;
}

int32_t ParamPitcher::getStatus() const {
  ParamPacket packet = makePacket(kStatus);
  return exchange(&packet) ? packet.nId() : -status::kInternalError;
}

int32_t ParamPitcher::putLedCommand(const std::string& name, const std::string& state) const {
  const auto lamp = std::find(kLamps.begin(), kLamps.end(), name) - kLamps.begin();
  return notify(kLed, static_cast<int32_t>(2 * lamp) + (state == "on" ? 0 : 1));
}

int32_t ParamPitcher::putImageMode(const std::string& word) const {
  if (word == "color") return notify(kImageMode, kColorMode);
  if (word == "bw") return notify(kImageMode, kMonochromeMode);
  return -status::kInternalError;
}

int32_t ParamPitcher::putBootInfo(int32_t flag) const { return notify(kBootInfo, flag, Config::getModelName()); }

int32_t ParamPitcher::putEncoderChange() const { return notify(kEncoderChange, 0); }

bool ParamPitcher::exchange(ParamPacket* packet) const {
  return notifyChange(packet) == 0 && packet->nCmd() != ParamPacket::kFailure;
}

int32_t ParamPitcher::put(ParamPacket* packet) const {
  if (!exchange(packet)) return -status::kInternalError;
  return packet->nCmd() == ParamPacket::kSuccess ? status::kOk : packet->nId();
}

int32_t ParamPitcher::notify(int32_t command, int32_t argument, const std::string& text) const {
  ParamPacket packet;
  packet.setCmd(command);
  packet.setArg(argument);
  packet.setText(text);
  return notifyChange(&packet) == 0 ? status::kOk : -status::kInternalError;
}

int32_t ParamPitcher::notifyChange(ParamPacket* packet) const {
  assert(packet != nullptr);
  auto& bytes = packet->bytes();
  FileDescriptor socket;
  switch (sendMessage(&socket, m_path, bytes)) {
    case Sending::NoSocket:
      TMX_LOG(LOG_ERR, "[%s:%d] cannot create socket", __func__, __LINE__);
      return -1;
    case Sending::NotConnected:
      TMX_LOG(LOG_ERR, "[%s:%d] connect to /tmp/localrec failed", __func__, __LINE__);
      return -1;
    case Sending::NotWritten:
      TMX_LOG(LOG_ERR, "[%s:%d] write to /tmp/localrec failed", __func__, __LINE__);
      return -1;
    case Sending::Done:
      break;
  }
  if (read(socket.get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
    TMX_LOG(LOG_ERR, "[%s:%d] read from /tmp/localrec failed", __func__, __LINE__);
    return -1;
  }
  const int32_t descriptor = socket.release();
  if (UnixDomain::closeClientSocket(descriptor) < 0) {
    TMX_LOG(LOG_ERR, "[%s:%d] close socket(%ld) failed", __func__, __LINE__, static_cast<long>(descriptor));
  }
  return 0;
}
