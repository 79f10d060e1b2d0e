#pragma once

#include "application/CApplicationApiBase.h"
#include "tree/Node.h"

namespace Application {

struct CEvent : CApplicationApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}};
  struct CFilter;
  struct CStatus;
  struct CTrigger;
  struct CAction;
};

struct CEvent::CFilter : CApplicationApiBase {
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"sunday", "monday", "tuesday", "wednesday",
                                                                          "thursday", "friday", "saturday"},
                                                           .anyCase = true}};
  struct CStatus;
  struct CType;
  struct CTime;
};

struct CEvent::CFilter::CStatus : CApplicationApiBase {};

struct CEvent::CFilter::CType : CApplicationApiBase {};

struct CEvent::CFilter::CTime : CApplicationApiBase {};

struct CEvent::CStatus : CApplicationApiBase {};

struct CEvent::CTrigger : CApplicationApiBase {};

struct CEvent::CAction : CApplicationApiBase {};

}  // namespace Application
