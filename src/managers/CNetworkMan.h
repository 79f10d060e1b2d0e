#pragma once

#include "tree/CManBase.h"

/** The root `network`. */
class CNetworkMan : public CManBase {
 public:
  int32_t init() override;
};
