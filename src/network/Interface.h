#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Node.h"

namespace Network {

struct CInterfaceCount : CNetworkApiBase {};

struct CInterface : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  struct CDhcp;
  struct CTtl;
  struct CIpv6;
  struct CIp;
  struct CSubnetmask;
  struct CStatus;
  struct CDscp;
  struct CMtu;
  struct CNegotiation;
  struct CMac;
  struct CNegotiationDetail;
};

struct CInterface::CDhcp : CNetworkApiBase {
  struct CStatus;
  struct CNtp;
  struct CDns;
  struct CHostname;
};

struct CInterface::CDhcp::CStatus : CNetworkApiBase {};

struct CInterface::CDhcp::CNtp : CNetworkApiBase {};

struct CInterface::CDhcp::CDns : CNetworkApiBase {};

struct CInterface::CDhcp::CHostname : CNetworkApiBase {};

struct CInterface::CTtl : CNetworkApiBase {
  struct CMulticast;
  struct CUnicast;
};

struct CInterface::CTtl::CMulticast : CNetworkApiBase {};

struct CInterface::CTtl::CUnicast : CNetworkApiBase {};

struct CInterface::CIpv6 : CNetworkApiBase {
  struct CStatus;
  struct CLinkLocal;
  struct CGlobal;
};

struct CInterface::CIpv6::CStatus : CNetworkApiBase {};

struct CInterface::CIpv6::CLinkLocal : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 8}};
};

struct CInterface::CIpv6::CGlobal : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 8}};
};

struct CInterface::CIp : CNetworkApiBase {};

struct CInterface::CSubnetmask : CNetworkApiBase {};

struct CInterface::CStatus : CNetworkApiBase {};

struct CInterface::CDscp : CNetworkApiBase {};

struct CInterface::CMtu : CNetworkApiBase {};

struct CInterface::CNegotiation : CNetworkApiBase {};

struct CInterface::CMac : CNetworkApiBase {};

struct CInterface::CNegotiationDetail : CNetworkApiBase {};

}  // namespace Network
