#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `audio`. */
class CAudioApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
