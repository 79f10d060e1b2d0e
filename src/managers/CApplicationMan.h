#pragma once

#include "tree/CManBase.h"

/** The root `application`. */
class CApplicationMan : public CManBase {
 public:
  int32_t init() override;
};
