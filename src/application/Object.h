#pragma once

#include "application/CApplicationApiBase.h"
#include "tree/Node.h"

namespace Application {

struct CObject : CApplicationApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}};
  struct COverwrite;
  struct CSource;
  struct CFramesize;
  struct CFramerate;
  struct CPrerec;
  struct CPostrec;
};

struct CObject::COverwrite : CApplicationApiBase {
  struct CStatus;
  struct CPeriod;
};

struct CObject::COverwrite::CStatus : CApplicationApiBase {};

struct CObject::COverwrite::CPeriod : CApplicationApiBase {};

struct CObject::CSource : CApplicationApiBase {};

struct CObject::CFramesize : CApplicationApiBase {};

struct CObject::CFramerate : CApplicationApiBase {};

struct CObject::CPrerec : CApplicationApiBase {};

struct CObject::CPostrec : CApplicationApiBase {};

}  // namespace Application
