#pragma once

#include <cstdint>

#include "config/Rows.h"
#include "devices/COnvifApiBase.h"

namespace Onvif {

struct CSystem : COnvifApiBase {
  struct CDaylightsaving;
};

/** Whether the clock follows summer time; a change sets the time zone anew. */
struct CSystem::CDaylightsaving : COnvifApiBase {
  static int32_t setZone(Request& request);
  static constexpr Rule rule{
      .accepts = Words{"on", "off"},
      .place = system_row::DAYLIGHTSAVING,
      .keeps = Keeps::WriteThrough,
      .then = setZone,
      .unchanged = Unchanged::AfterTest,
  };
};

struct CAudio : COnvifApiBase {
  struct COutput;
};

struct CAudio::COutput : COnvifApiBase {
  struct CVolume;
};

struct CAudio::COutput::CVolume : COnvifApiBase {
  static constexpr Rule rule{.forward = "audio.output.volume"};
};

}  // namespace Onvif
