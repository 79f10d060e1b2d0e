#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `application`. */
class CApplicationApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
