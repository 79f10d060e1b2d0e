#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Node.h"

namespace Network {

struct CHostname : CNetworkApiBase {};

struct CGateway : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"ipv4"}}};
  struct CIp;
  struct CStatus;
};

struct CGateway::CIp : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
};

struct CGateway::CStatus : CNetworkApiBase {};

struct CDns : CNetworkApiBase {
  struct CIp;
  struct CStatus;
  struct CType;
};

struct CDns::CIp : CNetworkApiBase {};

struct CDns::CStatus : CNetworkApiBase {};

struct CDns::CType : CNetworkApiBase {};

struct CDomainname : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
};

}  // namespace Network
