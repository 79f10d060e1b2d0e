#include "managers/CVideoMan.h"

#include "devices/VideoOutput.h"

int32_t CVideoMan::init() {
  add<Video::COutput>("output", kBranch);
  add<Video::COutput::CStatus>("output.status", "RWRWR-");
  add<Video::COutput::CVideoSignal>("output.video_signal", "RWRWR-");
  return 0;
}
