#pragma once

#include "network/CNetworkApiBase.h"

namespace Network {

class CNtp : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
  class CInterval;
  class CUnit;
  class CStatus;
  class CHost;
};

class CNtp::CInterval : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CNtp::CUnit : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CNtp::CStatus : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

class CNtp::CHost : public CNetworkApiBase {
 public:
  using CNetworkApiBase::CNetworkApiBase;
};

}  // namespace Network
