#pragma once

#include <cstdint>
#include <string>

#include "devices/CVideoApiBase.h"
#include "tree/Node.h"

/** The analog video output, which can run only beside the first encoder alone. */
namespace Video {

struct COutput : CVideoApiBase {
  struct CStatus;
  struct CVideoSignal;
};

/** "off" while the output cannot run, whatever is stored. The colour bar is for the moment and never stored. */
struct COutput::CStatus : CVideoApiBase {
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Words{"on", "off", "colorbar"},
      .place = video_row::VIDEO_OUTPUT,
      .act = act,
      .fetch = fetch,
      .keeps = Keeps::ByAct,
  };
};

/** The signal's standard: at each start the one of the switch on the board. */
struct COutput::CVideoSignal : CVideoApiBase {
  CVideoSignal();
  static int32_t act(Request& request);
  static inline std::string signal;
  static constexpr Rule rule{
      .accepts = Words{Word{"ntsc", 1}, Word{"pal", 2}},  // numbers of the camera library
      .place = &signal,
      .act = act,
  };
};

}  // namespace Video
