#pragma once

#include "devices/CAudioApiBase.h"

namespace Audio {

struct COutput : CAudioApiBase {
  struct CVolume;
};

struct COutput::CVolume : CAudioApiBase {};

}  // namespace Audio
