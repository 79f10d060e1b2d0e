#pragma once

#include "devices/COnvifApiBase.h"

namespace Onvif {

class CSystem : public COnvifApiBase {
 public:
  using COnvifApiBase::COnvifApiBase;
  class CDaylightsaving;
};

class CSystem::CDaylightsaving : public COnvifApiBase {
 public:
  using COnvifApiBase::COnvifApiBase;
};

class CAudio : public COnvifApiBase {
 public:
  using COnvifApiBase::COnvifApiBase;
  class COutput;
};

class CAudio::COutput : public COnvifApiBase {
 public:
  using COnvifApiBase::COnvifApiBase;
  class CVolume;
};

class CAudio::COutput::CVolume : public COnvifApiBase {
 public:
  using COnvifApiBase::COnvifApiBase;
};

}  // namespace Onvif
