#pragma once

#include "system/CSystemApiBase.h"

namespace System {

class CDate : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

class CTimezone : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
};

}  // namespace System
