#pragma once

#include "tree/CManBase.h"

/** The root `video`. */
class CVideoMan : public CManBase {
 public:
  void build() override;
  void replay() override;
};
