#pragma once

#include "application/CApplicationApiBase.h"
#include "tree/Leaf.h"

namespace Application {

class CObject : public Leaf<CObject, CApplicationApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}};
  class COverwrite;
  class CSource;
  class CFramesize;
  class CFramerate;
  class CPrerec;
  class CPostrec;
};

class CObject::COverwrite : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
  class CStatus;
  class CPeriod;
};

class CObject::COverwrite::CStatus : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CObject::COverwrite::CPeriod : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CObject::CSource : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CObject::CFramesize : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CObject::CFramerate : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CObject::CPrerec : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CObject::CPostrec : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

}  // namespace Application
