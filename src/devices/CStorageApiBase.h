#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `storage`. */
class CStorageApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
