#pragma once

#include "application/CApplicationApiBase.h"
#include "tree/Leaf.h"

namespace Application {

class CAudioplay : public Leaf<CAudioplay, CApplicationApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::AUDIO>,
                                     .empty = status::kNotValidForResource,
                                     .takes = SelectorNumber{.low = 1, .high = 5}};
  class CStatus;
  class CName;
  class CTime;
};

class CAudioplay::CStatus : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CAudioplay::CName : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CAudioplay::CTime : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

}  // namespace Application
