#pragma once

#include "devices/CAudioApiBase.h"

namespace Audio {

class COutput : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
  class CVolume;
};

class COutput::CVolume : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

}  // namespace Audio
