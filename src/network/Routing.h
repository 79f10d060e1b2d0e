#pragma once

#include <cstdint>
#include <string>

#include "network/CNetworkApiBase.h"
#include "network/Gateways.h"
#include "network/Resolver.h"
#include "tree/Node.h"

/** How the camera finds others and is found: gateways, resolver, names. */
namespace Network {

/** Takes effect at once: unless the kernel's name is leased, it becomes this one once it is on flash. */
struct CHostname : CNetworkApiBase {
  static int32_t setKernelName(Request& request);
  static int32_t fetchKernelName(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Test{checkName, kName},
      .place = network_row::HOSTNAME,
      .fetch = leased<network_row::IF1_DHCP_HOSTNAME, fetchKernelName>,
      .keeps = Keeps::WriteThrough,
      .then = setKernelName,
  };
};

struct CGateway : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"ipv4"}}, .without = "ipv4"};
  static constexpr Rule rule{.forward = "network.gateway(ipv4).ip(0)"};
  struct CIp;
  struct CStatus;
};

/** Four of them; the address client's is shown in the place of each where it is used. */
struct CGateway::CIp : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}, .without = "0"};
  static constexpr Rule rule =
      staged(Test{checkAddressOrNone, kAddressOrNone}, {network_row::GATEWAY_IPV4, rowOf<gateways::kRows, 2>},
             kInterfaceHint, leased<network_row::IF1_DHCP, gateways::fetchActive>);
};

/** "save" makes the staged gateways the active ones without a restart; those that do not fit are taken back. */
struct CGateway::CStatus : CNetworkApiBase {
  static constexpr Rule rule{.commands = {{{"save", gateways::save}}}};
};

struct CDns : CNetworkApiBase {
  struct CIp;
  struct CStatus;
  struct CType;
};

struct CDns::CIp : CNetworkApiBase {
  static constexpr Rule rule = staged(Test{checkAddressOrNone, kAddressOrNone}, network_row::DNS_IP, kDnsHint,
                                      leased<network_row::IF1_DHCP_DNS, resolver::fetchServer>);
};

/** "restart" makes the staged server and domains the active ones, and the resolver's file anew. */
struct CDns::CStatus : CNetworkApiBase {
  static constexpr Rule rule =
      staged(Words{"on", "off"}, network_row::DNS, kDnsHint, nullptr, {"restart", resolver::restart});
};

struct CDns::CType : CNetworkApiBase {
  static constexpr Rule rule{.accepts = Words{"dns"}, .shows = {.fixed = "dns"}};
};

/** Up to four domains that a name is looked for in. */
struct CDomainname : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}, .without = "0"};
  static constexpr Rule rule =
      staged(Test{checkName, kName}, {network_row::DOMAINNAME, rowOf<resolver::kDomains, 1>}, kDnsHint);
};

}  // namespace Network
