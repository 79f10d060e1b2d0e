#pragma once

#include "tree/CManBase.h"

/** The root `peripheral`. */
class CPeripheralMan : public CManBase {
 public:
  void build() override;
  void replay() override;
};
