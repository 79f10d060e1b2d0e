#include "managers/CVideoMan.h"

#include "config/Config.h"
#include "devices/VideoOutput.h"

int32_t CVideoMan::init() {
  add<Video::COutput>("output", kBranch);
  add<Video::COutput::CStatus>("output.status", "RWRWR-");
  add<Video::COutput::CVideoSignal>("output.video_signal", "RWRWR-");

  m_replay("video.output.status", Config::getInstance()->getVideoConfig(video_row::VIDEO_OUTPUT));
  return 0;
}
