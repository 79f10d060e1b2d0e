#include "network/Services.h"

#include "network/AccessHost.h"
#include "request/Log.h"

namespace Network {

namespace {

const Service& beacon() {
  static const Service amxBeacond{.program = "/bin/amx_beacond", .pidFile = "/var/run/amx_beacond.pid"};
  return amxBeacond;
}

}  // namespace

const Service& snmpd() {
  static const Service agent{
      .program = "/bin/snmpd",
      .pidFile = "/var/run/snmpd.pid",
      .arguments = {"-Lsd", "-Lf", "/dev/null", "-p", "/var/run/snmpd.pid", "-a"},
  };
  return agent;
}

/** The value in force is in force. */
int32_t CAmxBeacon::CStatus::restart(Request& /*request*/) { return kNothingWaits; }

int32_t CAmxBeacon::CStatus::turn(Request& request) {
  if (request.value == "off") return beacon().stop();
  const int32_t result = m_restartAMXBeacond();
  if (result < 0) TMX_LOG(LOG_ERR, "restartAMXBeacon error(%ld)", static_cast<long>(result));
  return result;
}

int32_t CAmxBeacon::CStatus::m_restartAMXBeacond() {
  const int32_t stopped = beacon().stop();
  if (stopped < 0) return stopped;
  const int32_t started = beacon().start();
  if (started < 0) TMX_LOG(LOG_ERR, "startAMXBeacond error");
  return started;
}

int32_t CAccessControl::CHost::isHost(Request& request) {
  if (request.value == "%00") request.value.clear();
  return m_analyzeHost(request.value) ? 0 : -status::kNotUnderstood;
}

}  // namespace Network
