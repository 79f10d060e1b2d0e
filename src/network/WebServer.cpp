#include "network/WebServer.h"

#include <unistd.h>

#include "service/NetworkRows.h"
#include "service/Numbers.h"
#include "service/OnvifSettings.h"
#include "service/Session.h"
#include "tree/Accept.h"

namespace Network {

using network_rows::active;
using network_rows::staged;

namespace {

constexpr std::array<Row, 4> kHttpRows = {network_row::HTTP_CONFIG_PORT, network_row::HTTP_CONFIG_STREAMING_PRIORITY,
                                          network_row::HTTP_CONFIG_STATUS, network_row::HTTP_CONFIG_STREAMING_STATUS};

bool isStreamingPath(const Selectors& selectors) { return selectors.at(1) == kStreaming; }

/** Whether a use is to be closed while the other protocol has it closed already. */
bool isClosed(network_row::Row waits, network_row::Row other) {
  return staged(waits) == "off" && active(other) == "off";
}

/** Commit::check: each use must stay open on one of the two protocols. */
int32_t httpStaysReachable(Request& /*request*/) {
  const bool refused = isClosed(network_row::HTTP_CONFIG_STATUS, network_row::HTTPS_CONFIG_STATUS) ||
                       isClosed(network_row::HTTP_CONFIG_STREAMING_STATUS, network_row::HTTPS_CONFIG_STREAMING_STATUS);
  return refused ? -status::kPreconditionFailed : 0;
}
}  // namespace

int32_t isPort(Request& request) {
  const int32_t refused = accept(Number{.low = 1, .high = 65535}, request);
  if (refused < 0) return refused;
  return isStreamingPath(request.selectors) ? -status::kCommandNotFound : 0;
}

int32_t portShown(const Request& request, std::string& /*text*/) {
  return isStreamingPath(request.selectors) ? -status::kCommandNotFound : kShowStored;
}

int32_t CHttp::CStatus::restart(Request& request) {
  // Behind a failed save the web server has not yet got the port that the image has.
  const bool isPortNew = active(network_row::HTTP_CONFIG_PORT) != staged(network_row::HTTP_CONFIG_PORT) ||
                         !Config::getInstance()->isSaved(network_row::HTTP_CONFIG_PORT);
  const int32_t result = carryOut({.rows = kHttpRows, .check = httpStaysReachable}, request);
  if (result != 0) return result;
  OnvifSettings::publish();  // the ONVIF service is told the port
  return isPortNew ? 0 : kNothingWaits;
}

int32_t CHttp::CPriority::isStreaming(const Selectors& selectors) {
  return isStreamingPath(selectors) ? 0 : -status::kCommandNotFound;
}

int32_t CHttp::CPriority::isIdle(const Selectors& /*selectors*/) {
  return parseNumber(Session().getSessionCount()).value_or(0) > 0 ? -status::kForbidden : 0;
}

/** A session daemon that is not there asks for it later. */
int32_t CHttp::CPriority::tell(Request& request) {
  Session().setStreamingPriority(request.number);
  return 0;
}

int32_t CHttp::CPriority::reload(Request& /*request*/) {
  Session().reloadStreamingPriority();
  return 0;
}

int32_t CHttps::CStatus::needsCertificate(Request& /*request*/) {
  return access("/mnt/flash/lighttpd/server.pem", F_OK) == 0 ? 0 : -status::kPreconditionFailed;
}

int32_t httpsStaysReachable(Request& /*request*/) {
  const bool refused = isClosed(network_row::HTTPS_CONFIG_STATUS, network_row::HTTP_CONFIG_STATUS) ||
                       isClosed(network_row::HTTPS_CONFIG_STREAMING_STATUS, network_row::HTTP_CONFIG_STREAMING_STATUS);
  return refused ? -status::kPreconditionFailed : 0;
}

}  // namespace Network
