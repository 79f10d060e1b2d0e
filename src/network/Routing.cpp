#include "network/Routing.h"

#include <netinet/in.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "network/LiveNetwork.h"
#include "request/Log.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/CTmxdUtility.h"
#include "service/NetworkRows.h"

namespace Network {

namespace {

constexpr size_t kIndexLayer = 2;   // of network.gateway(ipv4).ip(n)
constexpr size_t kDomainLayer = 1;  // of network.domainname(n)

}  // namespace

int32_t CHostname::setKernelName(Request& request) {
  if (network_rows::isLeased(network_row::IF1_DHCP_HOSTNAME)) return 0;
  if (sethostname(request.value.c_str(), request.value.size()) < 0) TMX_LOG(LOG_ERR, "sethostname error(%m)");
  return 0;
}

int32_t CHostname::fetch(const Request& /*request*/, std::string& text) {
  if (!network_rows::isLeased(network_row::IF1_DHCP_HOSTNAME)) return kShowStored;
  std::array<char, 64> name{};
  if (gethostname(name.data(), name.size()) < 0) return -status::kInternalError;
  text = name.data();
  return 0;
}

Cell CGateway::CIp::locate(const Selectors& selectors, Row /*first*/) {
  return {gateways::kRows[static_cast<size_t>(selectorNumber(selectors, kIndexLayer, 0))]};
}

int32_t CGateway::CIp::fetch(const Request& /*request*/, std::string& text) {
  if (!network_rows::isOn(network_row::IF1_DHCP)) return kShowStored;
  const std::optional<in_addr> gateway = live_network::getDefaultGateway();
  if (!gateway) return -status::kInternalError;
  text = CTmxdNetworkUtility::Inet_ntop(&*gateway);
  return 0;
}

int32_t CDns::CIp::fetch(const Request& /*request*/, std::string& text) {
  if (!network_rows::isLeased(network_row::IF1_DHCP_DNS)) return kShowStored;
  text = CTmxdUtility::readKeyValue(resolver::kFile, "nameserver");
  return 0;
}

Cell CDomainname::locate(const Selectors& selectors, Row /*first*/) {
  return {resolver::kDomains[static_cast<size_t>(selectorNumber(selectors, kDomainLayer, 0))]};
}

}  // namespace Network
