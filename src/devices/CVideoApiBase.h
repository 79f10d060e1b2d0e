#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `video`. */
class CVideoApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
