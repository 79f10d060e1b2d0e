#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `encode`. */
class CEncodeApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
