#include "network/Interface.h"

#include <netinet/in.h>

#include "network/LiveNetwork.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/NetworkRows.h"

namespace Network {

namespace {

using namespace live_network;

constexpr size_t kAddressLayer = 3;  // of network.interface(1).ipv6.global(n)

/** What the kernel said; nothing is a failure. */
int32_t told(const std::string& said, std::string& text) {
  text = said;
  return said.empty() ? -status::kInternalError : 0;
}

}  // namespace

int32_t CInterface::CIp::fetch(const Request& /*request*/, std::string& text) {
  return network_rows::isOn(network_row::IF1_DHCP) ? told(getIpAddress(kPort), text) : kShowStored;
}

int32_t CInterface::CSubnetmask::checkMask(Request& request) {
  in_addr mask{};
  const int32_t result = CTmxdNetworkUtility::parseAddress(request.value, &mask);
  if (result < 0) return -status::kInternalError;
  return result == 1 && CTmxdNetworkUtility::checkNetmask(mask) == 0 ? 0 : -status::kNotUnderstood;
}

int32_t CInterface::CSubnetmask::fetch(const Request& /*request*/, std::string& text) {
  return network_rows::isOn(network_row::IF1_DHCP) ? told(getNetmask(kPort), text) : kShowStored;
}

int32_t CInterface::CStatus::saveByOnvif(Request& request) {
  const bool isOnvif = request.parameter.getUserType() == user_class::kOnvif;
  return isOnvif ? interface_commit::saveInterface(request) : -status::kNotUnderstood;
}

std::vector<Cell> CInterface::CDscp::streams(const Selectors& /*selectors*/) {
  return {{network_row::IF1_DSCP_VIDEO},
          {network_row::IF1_DSCP_VIDEOMPEG},
          {network_row::IF1_DSCP_VIDEOH264},
          {network_row::IF1_DSCP_AUDIO}};
}

int32_t CInterface::CMac::fetch(const Request& /*request*/, std::string& text) {
  return told(getMacAddress(kPort), text);
}

int32_t CInterface::CNegotiationDetail::fetch(const Request& /*request*/, std::string& text) {
  return told(getLinkSpeed(0), text);
}

template <CInterface::CIpv6Base::Scope scope>
int32_t CInterface::CIpv6Base::fetch(const Request& request, std::string& text) {
  text = getIPv6Address(kPort, selectorNumber(request.selectors, kAddressLayer, 1),
                        scope == Scope::Link ? kScopeLink : kScopeGlobal);
  return 0;
}

template int32_t CInterface::CIpv6Base::fetch<CInterface::CIpv6Base::Scope::Link>(const Request&, std::string&);
template int32_t CInterface::CIpv6Base::fetch<CInterface::CIpv6Base::Scope::Global>(const Request&, std::string&);

}  // namespace Network
