#include "system/Session.h"

#include <string_view>

#include "config/Config.h"
#include "encoder/EncodeCodes.h"
#include "request/Parameter.h"
#include "request/StatusCode.h"
#include "service/Numbers.h"

namespace System {
namespace {

constexpr int32_t kSendingSlots = 22;

std::string slotPath(const char* direction, int32_t slot) {
  return std::string("system.session.") + direction + "(" + std::to_string(slot) + ").";
}

}  // namespace

int32_t CSession::CSending::CFrom::CFramerate::fetch(const Request& request, std::string& text) {
  const ::Session daemon;
  const int32_t slot = sessionSlot(request.selectors);
  const bool isVideo =
      daemon.getSendingToSession(slot) == "http" || findCodec(daemon.getSendingFromEncode(slot)) != nullptr;
  if (isVideo) text = daemon.getSendingFromFramerate(slot);
  return 0;
}

int32_t CSession::CSending::CFrom::CFramesize::fetch(const Request& request, std::string& text) {
  const std::string answer = ::Session().getSendingFromFramesize(sessionSlot(request.selectors));
  if (answer.empty()) return 0;  // the exchange failed
  const auto channel = parseNumber(answer);
  if (!channel) return -status::kNotValidForResource;
  text = Config::getInstance()->getEncodeConfig(*channel, encode_row::FRAME_SIZE);
  return 0;
}

int32_t CSession::execRead(ExecArgs* args) {
  Parameter& parameter = *args->m_parameter;
  std::string text = "system.session=" + getStatusCode(status::kOk) + parameter.getLineEnd();
  for (const char* path :
       {"system.session.total_bitrate", "system.session.sending_count", "system.session.sending_max"}) {
    text += line(parameter, path);
  }
  if (!Config::getModelName().starts_with("KT-B50")) {
    text += line(parameter, "system.session.receiving_count") + line(parameter, "system.session.receiving_max");
  }
  for (int32_t slot = 1; slot <= kSendingSlots; ++slot) {
    text += sendingLines(parameter, slot);
  }
  return parameter.setMultiLineResponse(text + receivingLines(parameter));
}

std::string CSession::line(const Parameter& asked, const std::string& path) const {
  Parameter parameter;
  const auto user = static_cast<int8_t>(asked.getUserType());
  const auto content = static_cast<int8_t>(asked.getContentType());
  if (parameter.setParameter(user, content, path.c_str()) < 0) return {};

  Selectors selectors{parameter.getAttribute(parameter.getNextLayer())};
  selectors.push_back(parameter.getAttribute(parameter.getNextLayer()));
  int32_t depth = 1;
  CApiBase* node = findInLayers(getNextLayers(), parameter, parameter.getNextLayer(), &depth, &selectors);
  if (node == nullptr) return {};
  ExecArgs args{&parameter, selectors};
  node->execRead(&args);
  return parameter.getResponse();
}

std::string CSession::sendingLines(const Parameter& asked, int32_t slot) const {
  const std::string path = slotPath("sending", slot);
  std::string text;
  for (const char* item : {"bitrate", "to.ip", "to.port", "to.protocol", "to.session", "from.encode"}) {
    text += line(asked, path + item);
  }
  if (findCodec(::Session().getSendingFromEncode(slot)) == nullptr) return text;
  return text + line(asked, path + "from.framerate") + line(asked, path + "from.framesize");
}

std::string CSession::receivingLines(const Parameter& asked) const {
  constexpr int32_t kSlot = 1;
  const std::string path = slotPath("receiving", kSlot);
  std::string text;
  for (const char* item : {"bitrate", "from.ip", "from.port", "from.protocol", "from.session", "to.decode"}) {
    text += line(asked, path + item);
  }
  // The channel has a line, but no node.
  text += path + "to.channel=" + ::Session().getReceivingToChannel(kSlot) + getStatusCode(status::kOk);
  return text + asked.getLineEnd();
}

}  // namespace System
