#include "network/InterfaceCommit.h"

#include <array>
#include <span>

#include "network/Gateways.h"
#include "request/Log.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/NetworkRows.h"
#include "tree/Commit.h"

namespace interface_commit {

namespace {

using namespace network_row;
using network_rows::active;
using network_rows::staged;
using Net = CTmxdNetworkUtility;

constexpr std::array<::Row, 4> kDhcpRows{IF1_DHCP, IF1_DHCP_NTP, IF1_DHCP_DNS, IF1_DHCP_HOSTNAME};

constexpr std::array<::Row, 16> kInterfaceRows{
    IF1_IP,         IF1_NETMASK, GATEWAY_IPV4,       GATEWAY_IPV4_2,  GATEWAY_IPV4_3, GATEWAY_IPV4_4,
    IF1_IPV6,       IF1_MTU,     IF1_TTL_MULTICAST,  IF1_TTL_UNICAST, IF1_DSCP_VIDEO, IF1_DSCP_VIDEOMPEG,
    IF1_DSCP_AUDIO, IF1_DSCP,    IF1_DSCP_VIDEOH264, IF1_NEGOTIATION};
/** The first of them: what a refused address takes back. */
constexpr std::span kAddressRows = std::span(kInterfaceRows).first<6>();

enum class DhcpCheck { Fits, SwitchedOff, OptionsWithoutDhcp, Invalid };

DhcpCheck m_dhcpSettingCheck() {
  const std::string wanted = staged(IF1_DHCP);
  const std::string present = active(IF1_DHCP);
  if (wanted == "on") return DhcpCheck::Fits;
  if (wanted == "off" && present == "on") return DhcpCheck::SwitchedOff;
  if (wanted != "off" || present != "off") {
    TMX_LOG(LOG_ERR, "invalid path");
    return DhcpCheck::Invalid;
  }
  const bool hasOption =
      staged(IF1_DHCP_NTP) == "on" || staged(IF1_DHCP_DNS) == "on" || staged(IF1_DHCP_HOSTNAME) == "on";
  return hasOption ? DhcpCheck::OptionsWithoutDhcp : DhcpCheck::Fits;
}

void setKeysOff() {
  for (const ::Row row : kDhcpRows)
    CUserConfig::getInstance()->set(row, "off");
}

/** Whether the address is neither its subnet's own nor everybody's, and the gateways fit it. */
bool fit(in_addr_t address, in_addr_t mask, std::string& text) {
  const std::string ip = staged(IF1_IP);
  const std::string netmask = staged(IF1_NETMASK);
  if (address != (address & mask) && address != (address | ~mask)) return gateways::fit(ip, netmask, text);
  text = "(Mismatched:" + gateways::mismatch(ip, netmask) + ")";
  return false;
}

}  // namespace

int32_t saveDhcp(Request& request) {
  const DhcpCheck check = m_dhcpSettingCheck();
  if (check == DhcpCheck::Invalid) return -status::kInternalError;
  if (check != DhcpCheck::Fits) setKeysOff();
  const int32_t result = carryOut({.rows = kDhcpRows}, request);
  if (check != DhcpCheck::OptionsWithoutDhcp) return result;
  request.detail = "(Mismatched:network.interface(1).dhcp.status=off)";
  return result < 0 ? result : -status::kPreconditionFailed;
}

int32_t saveInterface(Request& request) {
  Config& config = *Config::getInstance();
  CUserConfig& user = *CUserConfig::getInstance();
  const in_addr_t address = Net::Inet_pton(staged(IF1_IP));
  const in_addr_t mask = Net::Inet_pton(staged(IF1_NETMASK));
  if (!fit(address, mask, request.detail)) {
    user.adopt(config, kAddressRows);
    return -status::kMethodNotAllowed;
  }
  const int32_t dhcp = saveDhcp(request);
  if (dhcp < 0) return -status::kPreconditionFailed;

  const in_addr broadcast{address | ~mask};
  config.set(IF1_BROADCAST, Net::Inet_ntop(&broadcast));
  const bool isChanged = config.adopt(user, kInterfaceRows) || !config.isSaved(IF1_IP);
  if (!isChanged && dhcp == kNothingWaits) return kNothingWaits;
  return config.save(Family::Network) == Config::kDone ? 0 : -status::kInternalError;
}

}  // namespace interface_commit
