#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Node.h"

namespace Network {

struct CHttp : CNetworkApiBase {
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"streaming", "configuration"}}};
  struct CStatus;
  struct CPriority;
  struct CPort;
  struct CType;
};

struct CHttp::CStatus : CNetworkApiBase {};

struct CHttp::CPriority : CNetworkApiBase {};

struct CHttp::CPort : CNetworkApiBase {};

struct CHttp::CType : CNetworkApiBase {};

struct CHttps : CNetworkApiBase {
  static constexpr Selector selector{.available = hasOpenssl,
                                     .takes = SelectorWord{.words = Words{"streaming", "configuration"}}};
  struct CStatus;
  struct CPort;
};

struct CHttps::CStatus : CNetworkApiBase {};

struct CHttps::CPort : CNetworkApiBase {};

}  // namespace Network
