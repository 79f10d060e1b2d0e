#pragma once

#include "network/CNetworkApiBase.h"
#include "tree/Leaf.h"

namespace Network {

class CInterfaceCount : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface : public Leaf<CInterface, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  class CDhcp;
  class CTtl;
  class CIpv6;
  class CIp;
  class CSubnetmask;
  class CStatus;
  class CDscp;
  class CMtu;
  class CNegotiation;
  class CMac;
  class CNegotiationDetail;
};

class CInterface::CDhcp : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
  class CStatus;
  class CNtp;
  class CDns;
  class CHostname;
};

class CInterface::CDhcp::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CDhcp::CNtp : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CDhcp::CDns : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CDhcp::CHostname : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CTtl : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
  class CMulticast;
  class CUnicast;
};

class CInterface::CTtl::CMulticast : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CTtl::CUnicast : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CIpv6 : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
  class CStatus;
  class CLinkLocal;
  class CGlobal;
};

class CInterface::CIpv6::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CIpv6::CLinkLocal : public Leaf<CInterface::CIpv6::CLinkLocal, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 8}};
};

class CInterface::CIpv6::CGlobal : public Leaf<CInterface::CIpv6::CGlobal, CNetworkApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 8}};
};

class CInterface::CIp : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CSubnetmask : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CDscp : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CMtu : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CNegotiation : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CMac : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CInterface::CNegotiationDetail : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

}  // namespace Network
