#pragma once

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

namespace Camera {

class CMotion : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CPosition;
  class CAutoPatrol;
  class CAutoReturn;
  class CClickoncenter;
  class CPan;
  class CTilt;
  class CZoom;
  class CAbszoom;
};

class CMotion::CPosition : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CSpeed;
};

class CMotion::CPosition::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CAutoPatrol : public Leaf<CMotion::CAutoPatrol, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 0, .digitsOnly = true}};
  class CStatus;
  class CPosition;
};

class CMotion::CAutoPatrol::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CAutoPatrol::CPosition : public Leaf<CMotion::CAutoPatrol::CPosition, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 19, .digitsOnly = true}};
  class CDuration;
  class CSpeed;
};

class CMotion::CAutoPatrol::CPosition::CDuration : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CAutoPatrol::CPosition::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CAutoReturn : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
  class CMode;
  class CTimeout;
};

class CMotion::CAutoReturn::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CAutoReturn::CMode : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CAutoReturn::CTimeout : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CClickoncenter : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CPan : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
  class CMode;
  class CSpeed;
};

class CMotion::CPan::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CPan::CMode : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CPan::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CTilt : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
  class CMode;
  class CSpeed;
};

class CMotion::CTilt::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CTilt::CMode : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CTilt::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CZoom : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
  class CMode;
  class CSpeed;
};

class CMotion::CZoom::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CZoom::CMode : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CZoom::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CMotion::CAbszoom : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CPosition : public Leaf<CPosition, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 19, .digitsOnly = true}};
  class CStatus;
  class CPan;
  class CTilt;
  class CZoom;
  class CComment;
};

class CPosition::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CPosition::CPan : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CPosition::CTilt : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CPosition::CZoom : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CPosition::CComment : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
