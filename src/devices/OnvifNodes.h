#pragma once

#include "devices/COnvifApiBase.h"

namespace Onvif {

struct CSystem : COnvifApiBase {
  struct CDaylightsaving;
};

struct CSystem::CDaylightsaving : COnvifApiBase {};

struct CAudio : COnvifApiBase {
  struct COutput;
};

struct CAudio::COutput : COnvifApiBase {
  struct CVolume;
};

struct CAudio::COutput::CVolume : COnvifApiBase {};

}  // namespace Onvif
