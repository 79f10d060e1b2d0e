#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "network/CNetworkApiBase.h"
#include "network/InterfaceCommit.h"
#include "tree/Node.h"

/**
 * The one Ethernet port, "eth0". Nothing takes effect when it is written: `network.interface(1).status=restart` checks
 * what is staged as a whole, makes it active, and the camera restarts.
 */
namespace Network {

struct CInterfaceCount : CNetworkApiBase {
  static constexpr Rule rule{.shows = {.fixed = "1"}};
};

struct CInterface : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}, .without = "1"};
  struct CIp;
  struct CSubnetmask;
  struct CStatus;
  struct CDscp;
  struct CMtu;
  struct CNegotiation;
  struct CMac;
  struct CNegotiationDetail;
  struct CDhcp;
  struct CTtl;
  struct CIpv6;
  struct CIpv6Base;
};

/** With DHCP on, a read shows the address that the port has. */
struct CInterface::CIp : CNetworkApiBase {
  static constexpr Rule rule = staged(Test{checkAddress, kHostAddress}, network_row::IF1_IP, kInterfaceHint,
                                      leased<network_row::IF1_DHCP, ofPort<live_network::getIpAddress>>);
};

struct CInterface::CSubnetmask : CNetworkApiBase {
  static constexpr Rule rule =
      staged(Test{checkNetmask, {"an IPv4 netmask", "255.255.255.0", "255.0.255.0 x"}}, network_row::IF1_NETMASK,
             kInterfaceHint, leased<network_row::IF1_DHCP, ofPort<live_network::getNetmask>>);
};

/** "restart" by anybody and "save" by the ONVIF service alone, without the camera's restart. */
struct CInterface::CStatus : CNetworkApiBase {
  static int32_t saveByOnvif(Request& request);
  static constexpr Rule rule{
      .accepts = Words{"on"},
      .commands = {{{"restart", interface_commit::saveInterface, PostAction::Reboot}, {"save", saveByOnvif}}},
      .shows = {.fixed = "on"},
  };
};

/** The two low bits of the byte belong to congestion control. One value serves all kinds of streams. */
struct CInterface::CDscp : CNetworkApiBase {
  static int32_t clearLowBits(int32_t number) { return number & ~3; }
  static std::vector<Cell> streams(const Selectors& selectors);
  static constexpr Rule rule = staged(Number{.low = 0, .high = 255, .snap = clearLowBits},
                                      {network_row::IF1_DSCP, nullptr, streams}, kInterfaceHint);
};

struct CInterface::CMtu : CNetworkApiBase {
  static constexpr Rule rule = staged(Number{.low = 1280, .high = 1500}, network_row::IF1_MTU, kInterfaceHint);
};

struct CInterface::CNegotiation : CNetworkApiBase {
  static constexpr Rule rule =
      staged(Words{"auto", "100full", "100half", "10full", "10half"}, network_row::IF1_NEGOTIATION, kInterfaceHint);
};

struct CInterface::CMac : CNetworkApiBase {
  static constexpr Rule rule{.fetch = ofPort<live_network::getMacAddress>};
};

/** What the port has negotiated. */
struct CInterface::CNegotiationDetail : CNetworkApiBase {
  static constexpr Rule rule{.fetch = ofPort<live_network::getLinkSpeed>};
};

struct CInterface::CDhcp : CNetworkApiBase {
  struct CStatus;
  struct CNtp;
  struct CDns;
  struct CHostname;
};

/** "restart" settles the four DHCP values alone, and restarts the address client instead of the camera. */
struct CInterface::CDhcp::CStatus : CNetworkApiBase {
  static constexpr Rule rule = staged(Words{"on", "off"}, network_row::IF1_DHCP, kInterfaceHint, nullptr,
                                      {"restart", interface_commit::saveDhcp, PostAction::RestartAddressClient});
};

// What the address client brings besides the address.
struct CInterface::CDhcp::CNtp : CNetworkApiBase {
  static constexpr Rule rule = staged(Words{"on", "off"}, network_row::IF1_DHCP_NTP, kInterfaceHint);
};
struct CInterface::CDhcp::CDns : CNetworkApiBase {
  static constexpr Rule rule = staged(Words{"on", "off"}, network_row::IF1_DHCP_DNS, kInterfaceHint);
};
struct CInterface::CDhcp::CHostname : CNetworkApiBase {
  static constexpr Rule rule = staged(Words{"on", "off"}, network_row::IF1_DHCP_HOSTNAME, kInterfaceHint);
};

struct CInterface::CTtl : CNetworkApiBase {
  struct CMulticast;
  struct CUnicast;
};
struct CInterface::CTtl::CMulticast : CNetworkApiBase {
  static constexpr Rule rule = staged(Number{.low = 1, .high = 255}, network_row::IF1_TTL_MULTICAST, kInterfaceHint);
};
struct CInterface::CTtl::CUnicast : CNetworkApiBase {
  static constexpr Rule rule = staged(Number{.low = 1, .high = 255}, network_row::IF1_TTL_UNICAST, kInterfaceHint);
};

struct CInterface::CIpv6 : CNetworkApiBase {
  struct CStatus;
  struct CLinkLocal;
  struct CGlobal;
};

struct CInterface::CIpv6::CStatus : CNetworkApiBase {
  static constexpr Rule rule = staged(Words{"on", "off"}, network_row::IF1_IPV6, kInterfaceHint);
};

/** An address of one scope; one that is not there reads empty. */
struct CInterface::CIpv6Base : CNetworkApiBase {
 protected:
  static constexpr SelectorNumber kAddresses{.low = 1, .high = 8};
  template <const std::string_view& scope>
  static int32_t fetch(const Request& request, std::string& text) {
    text = live_network::getIPv6Address(live_network::kPort, selectorNumber(request.selectors, 3, 1), scope);
    return 0;
  }
};

struct CInterface::CIpv6::CLinkLocal : CInterface::CIpv6Base {
  static constexpr Selector selector{.takes = kAddresses, .without = "1"};
  static constexpr Rule rule{.fetch = fetch<live_network::kScopeLink>};
};

struct CInterface::CIpv6::CGlobal : CInterface::CIpv6Base {
  static constexpr Selector selector{.takes = kAddresses, .without = "1"};
  static constexpr Rule rule{.fetch = fetch<live_network::kScopeGlobal>};
};

}  // namespace Network
