#include "camera/Status.h"

#include <algorithm>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/DetectionSet.h"

namespace Camera {

int32_t CStatus::act(Request& request) {
  const int32_t result = request.number == kSave ? m_save() : m_restore();
  return result < 0 ? -status::kInternalError : 0;
}

int32_t CStatus::m_save() {
  if (m_saveSceneConfig(true) < 0 || m_saveCameraConfig(true) < 0) return -1;
  m_sceneLocked = false;
  return 0;
}

/** Every step is tried: with a detection daemon that is down, the picture still follows the working copy. */
int32_t CStatus::m_restore() {
  const Config& config = *Config::getInstance();
  for (int32_t row = 0; row < camera_row::kCount; ++row) {
    m_dsp.store(row, config.getCameraConfig(row));
  }
  const DetectionSet detection;
  const int32_t motion = detection.motionResend();
  const int32_t tamper = detection.tamperResend();
  CUserConfig& user = *CUserConfig::getInstance();
  for (int32_t step = 0; step < kPatrolSteps; ++step) {
    for (int32_t row = 0; row < patrol_row::kCount; ++row) {
      user.setPatrolConfig(0, step, row, config.getPatrolConfig(0, step, row));
    }
  }
  return std::min({motion, tamper, m_dsp.loadSceneData(true)});
}

}  // namespace Camera
