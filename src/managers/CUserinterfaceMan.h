#pragma once

#include "tree/CManBase.h"

/** The root `userinterface`. */
class CUserinterfaceMan : public CManBase {
 public:
  void build() override;
};
