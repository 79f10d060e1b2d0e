#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `userinterface`. */
class CUserinterfaceApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
