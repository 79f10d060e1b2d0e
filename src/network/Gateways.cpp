#include "network/Gateways.h"

#include <netinet/in.h>

#include <optional>

#include "network/LiveNetwork.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/CTmxdUtility.h"
#include "service/NetworkRows.h"

namespace gateways {

namespace {

using network_rows::active;
using network_rows::staged;

constexpr std::array<Row, kRows.size()> kTypedRows{kRows[0], kRows[1], kRows[2], kRows[3]};

/** A route that is there already, or gone, is as it should be: only a command that did not run is a failure. */
bool route(const char* verb, const std::string& gateway) {
  return gateway == "0.0.0.0" || CTmxdUtility::execProcess({"route", verb, "default", "gw", gateway}) >= 0;
}

bool setRoutes() {
  for (const network_row::Row row : kRows) {
    if (!route("del", active(row))) return false;
  }
  for (const network_row::Row row : kRows) {
    if (!route("add", staged(row))) return false;
  }
  return true;
}

}  // namespace

std::string mismatch(const std::string& address, const std::string& mask) {
  return "network.interface(1).ip=" + address + ",network.interface(1).subnetmask=" + mask;
}

bool fit(const std::string& address, const std::string& mask, std::string& text) {
  for (size_t i = 0; i < kRows.size(); ++i) {
    const std::string gateway = staged(kRows[i]);
    if (CTmxdNetworkUtility::checkGateway(address, mask, gateway) == 0) continue;
    text = "(Mismatched:" + mismatch(address, mask) + ",network.gateway(ipv4).ip(" + std::to_string(i) +
           ")=" + gateway + ")";
    return false;
  }
  return true;
}

int32_t fetchActive(const Request& /*request*/, std::string& text) {
  const std::optional<in_addr> gateway = live_network::getDefaultGateway();
  if (!gateway) return -status::kInternalError;
  text = CTmxdNetworkUtility::Inet_ntop(&*gateway);
  return 0;
}

int32_t save(Request& request) {
  Config& config = *Config::getInstance();
  CUserConfig& user = *CUserConfig::getInstance();
  if (!fit(active(network_row::IF1_IP), active(network_row::IF1_NETMASK), request.detail)) {
    user.adopt(config, kTypedRows);
    return -status::kPreconditionFailed;
  }
  // With an address client the routes are its own.
  if (!network_rows::isOn(network_row::IF1_DHCP) && !setRoutes()) return -status::kInternalError;
  config.adopt(user, kTypedRows);
  return config.save(Family::Network) == Config::kDone ? 0 : -status::kInternalError;
}

}  // namespace gateways
