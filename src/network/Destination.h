#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Node.h"

namespace Network {

struct CDestination : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 5}};
  struct CHost;
  struct CPort;
  struct CFramerate;
  struct CProtocol;
  struct CEncodeCh;
  struct CInterface;
  struct CUserdata;
  struct CStatus;
};

struct CDestination::CHost : CNetworkApiBase {};

struct CDestination::CPort : CNetworkApiBase {};

struct CDestination::CFramerate : CNetworkApiBase {};

struct CDestination::CProtocol : CNetworkApiBase {};

struct CDestination::CEncodeCh : CNetworkApiBase {};

struct CDestination::CInterface : CNetworkApiBase {};

struct CDestination::CUserdata : CNetworkApiBase {};

struct CDestination::CStatus : CNetworkApiBase {};

}  // namespace Network
