#pragma once

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

namespace Camera {

class CFocus : public Leaf<CFocus, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::FOCUS_CTRL>};
  class CGpiofrom;
  class CDate;
  class CAssist;
  class CRunCounter;
  class CAdjustMode;
  class CProgress;
  class CStatus;
  class CFinefocus;
  class CNightfocus;
  class CAbfPos;
};

class CFocus::CGpiofrom : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CIcrStatus;
  class CStatus;
  class CCheckStatus;
};

class CFocus::CGpiofrom::CIcrStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CGpiofrom::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CGpiofrom::CCheckStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CDate : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
};

class CFocus::CDate::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CAssist : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
};

class CFocus::CAssist::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CRunCounter : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CAdjustMode : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CProgress : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CFinefocus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CNightfocus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFocus::CAbfPos : public Leaf<CFocus::CAbfPos, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::BACK_FOCUS_MODEL>};
};

}  // namespace Camera
