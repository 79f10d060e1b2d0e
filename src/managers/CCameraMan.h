#pragma once

#include "tree/CManBase.h"

/** The root `camera`. */
class CCameraMan : public CManBase {
 public:
  int32_t init() override;
};
