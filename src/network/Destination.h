#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Leaf.h"

namespace Network {

class CDestination : public Leaf<CDestination, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 5}};
  class CHost;
  class CPort;
  class CFramerate;
  class CProtocol;
  class CEncodeCh;
  class CInterface;
  class CUserdata;
  class CStatus;
};

class CDestination::CHost : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDestination::CPort : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDestination::CFramerate : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDestination::CProtocol : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDestination::CEncodeCh : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDestination::CInterface : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDestination::CUserdata : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CDestination::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

}  // namespace Network
