#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Leaf.h"

namespace Network {

class CHttp : public Leaf<CHttp, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"streaming", "configuration"}}};
  class CStatus;
  class CPriority;
  class CPort;
  class CType;
};

class CHttp::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CHttp::CPriority : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CHttp::CPort : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CHttp::CType : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CHttps : public Leaf<CHttps, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = hasOpenssl,
                                     .takes = SelectorWord{.words = Words{"streaming", "configuration"}}};
  class CStatus;
  class CPort;
};

class CHttps::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CHttps::CPort : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

}  // namespace Network
