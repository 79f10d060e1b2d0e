#include "network/Destination.h"

#include <arpa/inet.h>

#include <array>
#include <cctype>
#include <cstdlib>
#include <vector>

#include "config/Initialising.h"
#include "request/Log.h"
#include "service/NetworkRows.h"
#include "service/Numbers.h"
#include "service/Session.h"

namespace Network {

using network_rows::active;
using namespace stream_destination;

namespace {

constexpr int32_t kSessionSlots = 22;

int32_t numberOf(const Selectors& selectors) { return selectorNumber(selectors, 1, 1); }

int32_t saveNetwork() {
  return Config::getInstance()->save(Family::Network) == Config::kDone ? 0 : -status::kInternalError;
}

/** The stream is as it is to be; the file may not have it yet. */
int32_t saveWhereDue(Row row) { return Config::getInstance()->isSaved(row) ? 0 : saveNetwork(); }

bool isMulticastV4(const uint8_t* address) { return (address[0] & 0xf0) == 0xe0; }

/** ff0x and ff1x, by the first four characters of the text. */
bool isMulticastV6(const std::string& text) {
  const std::string front = text.substr(0, 4);
  for (const unsigned char character : front) {
    if (std::isxdigit(character) == 0) return false;
  }
  const long group = std::strtol(front.c_str(), nullptr, 16);
  return front.size() == 4 && (group & 0xffe0) == 0xff00;
}

std::vector<LiveStream> liveStreams() {
  const Session daemon;
  std::vector<LiveStream> streams;
  for (int32_t slot = 1; slot <= kSessionSlots; ++slot) {
    LiveStream stream{.rate = daemon.getSendingBitrate(slot), .type = {}, .protocol = {}};
    if (stream.rate == "0") continue;
    stream.type = daemon.getSendingFromEncode(slot);
    stream.protocol = daemon.getSendingToProtocol(slot);
    streams.push_back(stream);
  }
  return streams;
}

}  // namespace

int32_t CDestination::CHost::isMulticast(Request& request) {
  std::array<uint8_t, sizeof(in6_addr)> address{};
  const bool isV6 = request.value.find(':') != std::string::npos;
  const int result = inet_pton(isV6 ? AF_INET6 : AF_INET, request.value.c_str(), address.data());
  if (result < 0) {
    TMX_LOG(LOG_ERR, "inet_pton(%m)");
    return -status::kInternalError;
  }
  const bool isAccepted = result > 0 && (isV6 ? isMulticastV6(request.value) : isMulticastV4(address.data()));
  return isAccepted ? 0 : -status::kNotUnderstood;
}

int32_t CDestination::CFramerate::sendsPictures(const Selectors& selectors) {
  const int32_t number = numberOf(selectors);
  if (number > kVideoDestinations) return -status::kNotUnderstood;
  const std::string type = Config::getInstance()->getEncodeConfig(number - 1, encode_row::ENCTYPE_CH);
  return type == "jpeg" ? 0 : -status::kForbidden;
}

int32_t CDestination::CFramerate::isRate(Request& request) {
  const auto rate = parseFloat(request.value);
  if (!rate || request.value.find_first_not_of("-.0123456789") != std::string::npos) return -status::kNotUnderstood;
  return *rate == 0 || *rate < -30 || *rate > 30 ? -status::kInvalidRange : 0;
}

int32_t CDestination::CStatus::execWrite(ExecArgs* args) {
  Parameter& parameter = *args->m_parameter;
  const std::string command = parameter.getValue();
  const int32_t result = RuleEngine::write(rule, *args);
  if (result < 0 || command == "save") return result;
  return RuleEngine::answerValue(parameter, command == "start" ? "on" : "off");
}

int32_t CDestination::CStatus::state(const Request& request, std::string& text) {
  text = network_rows::isOn(rows(numberOf(request.selectors)).status) ? "on" : "off";
  return 0;
}

int32_t CDestination::CStatus::stop(Request& request) {
  const int32_t number = numberOf(request.selectors);
  const network_row::Row row = rows(number).status;
  CUserConfig::getInstance()->set(row, "off");
  if (active(row) == "off") return saveWhereDue(row);
  Config::getInstance()->set(row, "off");
  return sender(number).stop() < 0 ? -status::kInternalError : saveNetwork();
}

int32_t CDestination::CStatus::start(Request& request) {
  const int32_t number = numberOf(request.selectors);
  const network_row::Row row = rows(number).status;
  CUserConfig::getInstance()->set(row, "on");
  if (active(row) == "on" && !isInitialising()) return saveWhereDue(row);
  if (const int32_t refused = checkBandwidth(number); refused < 0) return refused;
  Config::getInstance()->set(row, "on");
  const int32_t result = m_restartDestd(number);
  if (result == 0) return saveNetwork();
  TMX_LOG(LOG_ERR, "restartDestd error(%ld)", static_cast<long>(result));
  Config::getInstance()->set(row, "off");
  const int32_t saved = saveNetwork();
  return saved < 0 ? saved : -status::kPreconditionFailed;
}

/** The bandwidth is looked at for pictures alone, and only where the camera is to keep their rate. */
int32_t CDestination::CStatus::checkBandwidth(int32_t number) {
  const Config& config = *Config::getInstance();
  if (number > kVideoDestinations) return 0;
  const std::string type = config.getEncodeConfig(number - 1, encode_row::ENCTYPE_CH);
  if (!isEncoderType(type)) return -status::kInternalError;
  if (type != "jpeg" || active(network_row::HTTP_CONFIG_STREAMING_PRIORITY) != "framerate") return 0;
  return hasBandwidth(config, number, liveStreams()) ? 0 : -status::kNotEnoughBandwidth;
}

int32_t CDestination::CStatus::m_restartDestd(int32_t number) {
  if (sender(number).stop() < 0) return -1;
  if (m_startDestd(number) == 0) return 0;
  TMX_LOG(LOG_ERR, "startDestd error");
  return -2;
}

int32_t CDestination::CStatus::m_startDestd(int32_t number) {
  const Config& config = *Config::getInstance();
  const auto stream = streamOf(config, number);
  if (!stream) return -1;
  const auto params = m_setRtpdParams(config, number, *stream);
  if (!params) return -2;
  return sender(number, stream->type, *params, active(network_row::DEST_USERDATA) != "off").start();
}

}  // namespace Network
