#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `peripheral`. */
class CPeripheralApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
