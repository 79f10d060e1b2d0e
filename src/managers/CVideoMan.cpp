#include "managers/CVideoMan.h"

#include "devices/VideoOutput.h"

void CVideoMan::build() {
  add<Video::COutput>("output");
  add<Video::COutput::CStatus>("output.status", "RWRWR-");
  add<Video::COutput::CVideoSignal>("output.video_signal", "RWRWR-");
}

void CVideoMan::replay() { m_replayStored("video.output.status"); }
