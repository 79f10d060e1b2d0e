#pragma once

#include "tree/CManBase.h"

/** The root `onvif`: two settings of its own; every other path under it is an alias of the path behind "onvif.". */
class COnvifMan : public CManBase {
 public:
  void build() override;
  int32_t APIsetup(Parameter& parameter, const std::string& layer) override;
};
