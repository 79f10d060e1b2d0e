#pragma once

#include "tree/CManBase.h"

/** The root `system`. */
class CSystemMan : public CManBase {
 public:
  int32_t init() override;
};
