#include "camera/Status.h"

#include "camera/DetectionSet.h"
#include "camera/dsp/CameraDSP.h"
#include "config/Config.h"

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

int32_t CStatus::m_restore() {
  const Config& config = *Config::getInstance();
  for (int32_t row = 0; row < camera_row::kCount; ++row) {
    m_dsp.store(row, config.getCameraConfig(row));
  }
  DetectionSet detection;
  if (detection.motionResend() < 0 || detection.tamperResend() < 0) return -1;
  CUserConfig& user = *CUserConfig::getInstance();
  for (int32_t step = 0; step < kPatrolSteps; ++step) {
    for (int32_t row = 0; row < patrol_row::kCount; ++row) {
      user.setPatrolConfig(0, step, row, config.getPatrolConfig(0, step, row));
    }
  }
  return m_dsp.loadSceneData(true);
}

}  // namespace Camera
