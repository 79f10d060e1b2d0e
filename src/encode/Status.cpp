#include "encode/Status.h"

#include <signal.h>

#include <string>

#include "config/Config.h"
#include "encoder/Encoder.h"
#include "local/CommonInterface.h"
#include "request/InternalRequest.h"
#include "request/Log.h"
#include "request/Parameter.h"
#include "service/CTmxdUtility.h"
#include "service/OnvifSettings.h"

namespace Encode {
namespace {

struct EncodedDestination {
  int32_t number;
  network_row::Row status;
};

/** The destinations that send what the encoders make; the fourth sends audio. */
constexpr EncodedDestination kEncodedDestinations[] = {
    {1, network_row::DEST1}, {2, network_row::DEST2}, {3, network_row::DEST3}, {5, network_row::DEST5}};

void tellDestination(int32_t number, const std::string& command) {
  const std::string path = "network.destination(" + std::to_string(number) + ").";
  execApiCommandInternal(path + command, nullptr, user_class::kAdministrator, content_type::kPlain);
}

}  // namespace

int32_t CStatus::save(Request& request) {
  if (!m_isEncodeConfigChanged()) return 0;
  const Destinations stopped = m_stopDestinations();
  const int32_t result = m_commit(request.parameter.getUserType() == user_class::kOnvif);
  m_restartDestinations(stopped);
  return result;
}

int32_t CStatus::m_commit(bool isOnvifUser) {
  int32_t result = m_iframeConditionCheck();
  if (result < 0) {
    TMX_LOG(LOG_ERR, "iframe ConditionCheck failed");
    return result;
  }
  result = m_encodeFramesizeConditionCheck();
  if (result < 0) {
    TMX_LOG(LOG_ERR, "framesize ConditionCheck failed");
    return result;
  }
  result = m_encodeCbrmodeConditionCheck();
  if (result < 0) {
    TMX_LOG(LOG_ERR, "cbrmode ConditionCheck failed");
    return result;
  }
  m_encodeHighRateConbinationSet();
  m_followAnalogOutput();
  if (!isOnvifUser) {  // the service that asked neither writes to flash nor is to be stopped
    result = m_saveEncodeConfig();
    if (result < 0) return result;
    m_stopOnvifService();
  }
  result = m_encodeSetDataToSdkcontroler();
  if (result < 0) {
    TMX_LOG(LOG_ERR, "sdkdata set failed");
    return result;
  }
  return m_restartEncoders();
}

bool CStatus::m_isEncodeConfigChanged() {
  Config& saved = *CUserConfig::getInstance();
  static_cast<void>(saved.reloadEncodeConfig());
  bool isChanged = false;
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    for (int32_t row = 0; row < encode_row::kCount; ++row) {
      const std::string text = Config::getInstance()->getEncodeConfig(channel, row);
      if (saved.getEncodeConfig(channel, row) != text) isChanged = true;
      saved.setEncodeConfig(channel, row, text);
    }
  }
  return isChanged;
}

CStatus::Destinations CStatus::m_stopDestinations() {
  Destinations stopped;
  for (const EncodedDestination& destination : kEncodedDestinations) {
    const std::string state = Config::getInstance()->get(destination.status);
    if (state.find("on") == std::string::npos) continue;
    tellDestination(destination.number, "status=stop");
    stopped.push_back(destination.number);
  }
  return stopped;
}

void CStatus::m_restartDestinations(const Destinations& destinations) {
  for (const int32_t number : destinations) {
    // The fifth destination has no channel of its own and so no rate.
    tellDestination(number, "framerate=" + Config::getInstance()->getEncodeConfig(number - 1, encode_row::FRAME_RATE));
    tellDestination(number, "status=save");
    tellDestination(number, "status=start");
  }
}

int32_t CStatus::m_saveEncodeConfig() {
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    if (Config::getInstance()->saveEncodeConfig(channel) == Config::kDone) continue;
    TMX_LOG(LOG_ERR, "Encode: Cannot be write userdata");
    return -status::kInternalError;
  }
  return 0;
}

/** It reads its profiles at its start, and is started anew when it has gone. */
void CStatus::m_stopOnvifService() {
  OnvifSettings::publish();
  if (Config::getInstance()->get(network_row::ONVIF_SERVER_STATUS) != "on") return;
  const pid_t pid = CommonInterface::readPid("/var/run/nvt_apld.pid");
  if (pid > 0) kill(pid, SIGTERM);
}

int32_t CStatus::m_restartEncoders() {
  if (Encoder::restart() < 0) {
    TMX_LOG(LOG_ERR, "encoder restart failed");
    return -status::kInternalError;
  }
  Encoder(*Config::getInstance()).SetEncoder();
  if (Encoder::updatePassMode() < 0) {
    TMX_LOG(LOG_ERR, "isp pass setting(changed encode setting) error ");
    return -status::kInternalError;
  }
  std::string reply;
  static_cast<void>(CTmxdUtility::sendPtzseq("enc_reset", &reply));
  return 0;
}

}  // namespace Encode
