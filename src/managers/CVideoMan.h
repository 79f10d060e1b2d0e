#pragma once

#include "tree/CManBase.h"

/** The root `video`. */
class CVideoMan : public CManBase {
 public:
  int32_t init() override;
};
