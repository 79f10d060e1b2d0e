#pragma once

#include "tree/CManBase.h"

/** The root `system`. */
class CSystemMan : public CManBase {
 public:
  void build() override;
  void replay() override;
};
