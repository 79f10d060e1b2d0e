#pragma once

#include "tree/CManBase.h"

/** The root `encode`. */
class CEncodeMan : public CManBase {
 public:
  int32_t init() override;
  /** The root's selector is the channel, 1 to 3; none means channel 1. */
  int32_t checkRootAttribute(const std::string& selector) override;
};
