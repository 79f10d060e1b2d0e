#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `system`. */
class CSystemApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
