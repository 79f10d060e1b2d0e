#include "camera/Status.h"

#include <algorithm>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/DetectionSet.h"

namespace Camera {

int32_t CStatus::save(Request& /*request*/) {
  if (m_saveSceneConfig(true) < 0 || m_saveCameraConfig(true) < 0) return -status::kInternalError;
  m_sceneLocked = false;
  return 0;
}

/** Every step is tried: with a detection daemon that is down, the picture still follows the working copy. */
int32_t CStatus::restore(Request& /*request*/) {
  const Config& config = *Config::getInstance();
  for (int32_t row = 0; row < camera_row::kCount; ++row) {
    cameraDsp().store(row, config.getCameraConfig(row));
  }
  const DetectionSet detection;
  const int32_t motion = detection.motionResend();
  const int32_t tamper = detection.tamperResend();
  constexpr Row kStep[] = {patrol_row::PATROL_POSITION, patrol_row::PATROL_DURATION, patrol_row::PATROL_SPEED};
  for (int32_t step = 0; step < kPatrolSteps; ++step) {
    CUserConfig::getInstance()->adopt(config, kStep, step);
  }
  return std::min({motion, tamper, cameraDsp().loadSceneData(true)}) < 0 ? -status::kInternalError : 0;
}

}  // namespace Camera
