#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Leaf.h"

namespace Network {

class CHostname : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CGateway : public Leaf<CGateway, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"ipv4"}}};
  class CIp;
  class CStatus;
};

class CGateway::CIp : public Leaf<CGateway::CIp, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
};

class CGateway::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDns : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
  class CIp;
  class CStatus;
  class CType;
};

class CDns::CIp : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDns::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDns::CType : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDomainname : public Leaf<CDomainname, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
};

}  // namespace Network
