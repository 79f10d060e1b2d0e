#include "managers/CVideoMan.h"

#include "devices/VideoOutput.h"

int32_t CVideoMan::init() {
  add<Video::COutput>("output");
  add<Video::COutput::CStatus>("output.status", "RWRWR-");
  add<Video::COutput::CVideoSignal>("output.video_signal", "RWRWR-");

  m_replayStored("video.output.status");
  return 0;
}
