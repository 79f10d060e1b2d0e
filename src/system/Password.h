#pragma once

#include "system/CSystemApiBase.h"
#include "tree/Leaf.h"

namespace System {

class CPassword : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CAdmin;
  class COperator;
  class CUser;
};

class CPassword::CAdmin : public Leaf<CPassword::CAdmin, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
  class CStatus;
};

class CPassword::CAdmin::CStatus : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CPassword::COperator : public Leaf<CPassword::COperator, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
  class CStatus;
};

class CPassword::COperator::CStatus : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CPassword::CUser : public Leaf<CPassword::CUser, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
  class CStatus;
};

class CPassword::CUser::CStatus : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

}  // namespace System
