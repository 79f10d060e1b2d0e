#pragma once

#include "tree/CManBase.h"

/** The root `audio`. */
class CAudioMan : public CManBase {
 public:
  int32_t init() override;
  /** The root exists on models with audio only. */
  int32_t checkRootAttribute(const std::string& selector) override;
};
