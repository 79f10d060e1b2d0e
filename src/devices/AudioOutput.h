#pragma once

#include "config/Rows.h"
#include "devices/CAudioApiBase.h"

namespace Audio {

struct COutput : CAudioApiBase {
  struct CVolume;
};

/** Who plays looks it up. */
struct COutput::CVolume : CAudioApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = 1, .high = 10},
      .place = audio_row::AUDIO_OUTPUT_VOLUME,
      .keeps = Keeps::WriteThrough,
  };
};

}  // namespace Audio
