#pragma once

#include "camera/CCameraApiBase.h"
#include "tree/Node.h"

namespace Camera {

struct CFocus : CCameraApiBase {
  static constexpr Selector selector{.available = has<Feature::FOCUS_CTRL>};
  struct CGpiofrom;
  struct CDate;
  struct CAssist;
  struct CRunCounter;
  struct CAdjustMode;
  struct CProgress;
  struct CStatus;
  struct CFinefocus;
  struct CNightfocus;
  struct CAbfPos;
};

struct CFocus::CGpiofrom : CCameraApiBase {
  struct CIcrStatus;
  struct CStatus;
  struct CCheckStatus;
};

struct CFocus::CGpiofrom::CIcrStatus : CCameraApiBase {};

struct CFocus::CGpiofrom::CStatus : CCameraApiBase {};

struct CFocus::CGpiofrom::CCheckStatus : CCameraApiBase {};

struct CFocus::CDate : CCameraApiBase {
  struct CStatus;
};

struct CFocus::CDate::CStatus : CCameraApiBase {};

struct CFocus::CAssist : CCameraApiBase {
  struct CStatus;
};

struct CFocus::CAssist::CStatus : CCameraApiBase {};

struct CFocus::CRunCounter : CCameraApiBase {};

struct CFocus::CAdjustMode : CCameraApiBase {};

struct CFocus::CProgress : CCameraApiBase {};

struct CFocus::CStatus : CCameraApiBase {};

struct CFocus::CFinefocus : CCameraApiBase {};

struct CFocus::CNightfocus : CCameraApiBase {};

struct CFocus::CAbfPos : CCameraApiBase {
  static constexpr Selector selector{.available = has<Feature::BACK_FOCUS_MODEL>};
};

}  // namespace Camera
