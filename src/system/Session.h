#pragma once

#include "system/CSystemApiBase.h"
#include "tree/Leaf.h"

namespace System {

class CSession : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CSending;
  class CReceiving;
  class CTotalBitrate;
  class CSendingCount;
  class CSendingMax;
  class CReceivingCount;
  class CReceivingMax;
};

class CSession::CSending : public Leaf<CSession::CSending, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 22}};
  class CTo;
  class CFrom;
  class CBitrate;
};

class CSession::CSending::CTo : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CIp;
  class CPort;
  class CProtocol;
  class CSession;
};

class CSession::CSending::CTo::CIp : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSending::CTo::CPort : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSending::CTo::CProtocol : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSending::CTo::CSession : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSending::CFrom : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CEncode;
  class CFramesize;
  class CFramerate;
};

class CSession::CSending::CFrom::CEncode : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSending::CFrom::CFramesize : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSending::CFrom::CFramerate : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSending::CBitrate : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceiving : public Leaf<CSession::CReceiving, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  class CFrom;
  class CTo;
  class CBitrate;
};

class CSession::CReceiving::CFrom : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CIp;
  class CPort;
  class CProtocol;
  class CSession;
};

class CSession::CReceiving::CFrom::CIp : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceiving::CFrom::CPort : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceiving::CFrom::CProtocol : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceiving::CFrom::CSession : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceiving::CTo : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CDecode;
};

class CSession::CReceiving::CTo::CDecode : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceiving::CBitrate : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CTotalBitrate : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSendingCount : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CSendingMax : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceivingCount : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CSession::CReceivingMax : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

}  // namespace System
