#include "network/Services.h"

#include "network/AccessHost.h"
#include "request/Log.h"
#include "service/Daemon.h"

namespace Network {

namespace {

const Service& agent() {
  static const Service snmpd{
      .program = "/bin/snmpd",
      .pidFile = "/var/run/snmpd.pid",
      .arguments = {"-Lsd", "-Lf", "/dev/null", "-p", "/var/run/snmpd.pid", "-a"},
  };
  return snmpd;
}

const Service& beacon() {
  static const Service amxBeacond{.program = "/bin/amx_beacond", .pidFile = "/var/run/amx_beacond.pid"};
  return amxBeacond;
}

}  // namespace

int32_t CSnmpAgent::CStatus::turn(Request& request) {
  const int32_t stopped = agent().stop();
  return request.value == "off" || stopped < 0 ? stopped : agent().start();
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

Cell COnvif::CQuality::CPriority::ofCodec(const Selectors& selectors, Row jpeg) {
  return {selectors.at(3) == "h264" ? Row(network_row::ONVIF_QUALITY_PRIORITY_H264) : jpeg};
}

Cell CAccessControl::CHost::entry(const Selectors& selectors, Row first) {
  return {Row(first.family, first.number + selectorNumber(selectors, 2, 1) - 1)};
}

int32_t CAccessControl::CHost::isHost(Request& request) {
  if (request.value == "%00") request.value.clear();
  return m_analyzeHost(request.value) ? 0 : -status::kNotUnderstood;
}

}  // namespace Network
