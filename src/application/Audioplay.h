#pragma once

#include "application/CApplicationApiBase.h"
#include "tree/Node.h"

namespace Application {

struct CAudioplay : CApplicationApiBase {
  static constexpr Selector selector{.available = has<Feature::AUDIO>,
                                     .empty = status::kNotValidForResource,
                                     .takes = SelectorNumber{.low = 1, .high = 5}};
  struct CStatus;
  struct CName;
  struct CTime;
};

struct CAudioplay::CStatus : CApplicationApiBase {};

struct CAudioplay::CName : CApplicationApiBase {};

struct CAudioplay::CTime : CApplicationApiBase {};

}  // namespace Application
