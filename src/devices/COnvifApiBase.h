#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `onvif`. */
class COnvifApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;
};
