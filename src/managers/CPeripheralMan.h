#pragma once

#include "tree/CManBase.h"

/** The root `peripheral`. */
class CPeripheralMan : public CManBase {
 public:
  int32_t init() override;
};
