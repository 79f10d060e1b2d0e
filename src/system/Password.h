#pragma once

#include "system/CSystemApiBase.h"
#include "tree/Node.h"

namespace System {

struct CPassword : CSystemApiBase {
  struct CAdmin;
  struct COperator;
  struct CUser;
};

struct CPassword::CAdmin : CSystemApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
  struct CStatus;
};

struct CPassword::CAdmin::CStatus : CSystemApiBase {};

struct CPassword::COperator : CSystemApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
  struct CStatus;
};

struct CPassword::COperator::CStatus : CSystemApiBase {};

struct CPassword::CUser : CSystemApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 3}};
  struct CStatus;
};

struct CPassword::CUser::CStatus : CSystemApiBase {};

}  // namespace System
