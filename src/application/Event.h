#pragma once

#include "application/CApplicationApiBase.h"
#include "tree/Leaf.h"

namespace Application {

class CEvent : public Leaf<CEvent, CApplicationApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 10}};
  class CFilter;
  class CStatus;
  class CTrigger;
  class CAction;
};

class CEvent::CFilter : public Leaf<CEvent::CFilter, CApplicationApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.empty = status::kNotUnderstood,
                                     .takes = SelectorWord{.words = Words{"sunday", "monday", "tuesday", "wednesday",
                                                                          "thursday", "friday", "saturday"},
                                                           .anyCase = true}};
  class CStatus;
  class CType;
  class CTime;
};

class CEvent::CFilter::CStatus : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CEvent::CFilter::CType : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CEvent::CFilter::CTime : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CEvent::CStatus : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CEvent::CTrigger : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CEvent::CAction : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

}  // namespace Application
