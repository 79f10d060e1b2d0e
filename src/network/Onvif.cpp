// The ONVIF service is switched on and off: the thread that keeps it running learns of it, and a running one ends.

#include <signal.h>

#include "network/OnvifWorker.h"
#include "network/Services.h"
#include "request/InternalRequest.h"
#include "request/Log.h"
#include "service/NetworkRows.h"
#include "service/OnvifSettings.h"
#include "service/Session.h"

namespace Network {
namespace {

constexpr network_row::Row kRow = network_row::ONVIF_SERVER_STATUS;

/** Whether the camera itself, asked for this, did it. */
bool isDone(const char* query) {
  std::string answer;
  if (execApiCommandInternal(query, &answer, user_class::kAdministrator, content_type::kPlain) < 0) return false;
  return answer.find(getStatusCode(status::kOk)) != std::string::npos ||
         answer.find(getStatusCode(status::kAccepted)) != std::string::npos;
}

/** Behind the end of a running service the thread does the rest. */
int32_t m_setStatus(const char* word, const char* before) {
  CUserConfig::getInstance()->set(kRow, word);
  Config::getInstance()->set(kRow, word);
  OnvifSettings::publish();
  if (Config::getInstance()->save(Family::Network) != Config::kDone) {
    CUserConfig::getInstance()->set(kRow, before);
    return -status::kInternalError;
  }
  const pid_t pid = OnvifWorker::readPid();
  if (pid < 1) return 0;
  TMX_LOG(LOG_INFO, "kill nvt_apl[%d]", pid);
  kill(pid, SIGTERM);
  return 0;
}

}  // namespace

int32_t COnvif::CStatus::turn(Request& request) { return request.value == "on" ? turnOn() : turnOff(); }

int32_t COnvif::CStatus::turnOn() {
  const bool isSaved = Config::getInstance()->isSaved(kRow);
  if (network_rows::active(kRow) != "off" && isSaved) return -status::kNotValidForResource;
  if (const int32_t refused = m_setStatus("on", "off"); refused < 0) return refused;
  Session().setOnvifService(1);
  return 0;
}

/** Streams go on without the service: by the RTSP server, and without the motion metadata. */
int32_t COnvif::CStatus::turnOff() {
  if (network_rows::isOn(kRow) || !Config::getInstance()->isSaved(kRow)) {
    for (const char* query :
         {"network.rtsp.status=on", "network.rtsp.status=restart", "network.destination(5).status=stop"}) {
      if (!isDone(query)) return -status::kInternalError;
    }
    if (const int32_t refused = m_setStatus("off", "on"); refused < 0) return refused;
  }
  Session().setOnvifService(0);
  return 0;
}

}  // namespace Network
