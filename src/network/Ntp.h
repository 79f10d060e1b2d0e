#pragma once

#include "network/CNetworkApiBase.h"

namespace Network {

struct CNtp : CNetworkApiBase {
  struct CInterval;
  struct CUnit;
  struct CStatus;
  struct CHost;
};

struct CNtp::CInterval : CNetworkApiBase {};

struct CNtp::CUnit : CNetworkApiBase {};

struct CNtp::CStatus : CNetworkApiBase {};

struct CNtp::CHost : CNetworkApiBase {};

}  // namespace Network
