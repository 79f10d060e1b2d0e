#include "camera/CCameraApiBase.h"

#include "config/Config.h"
#include "encoder/Encoder.h"
#include "local/ModelFeature.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace {

std::string live(int32_t row) { return CUserConfig::getInstance()->getCameraConfig(row); }

/** Noise reduction is switched off at a high rate; the stored level waits for the rate to fall. */
bool isHeldBack(int32_t row, bool isHighRate) {
  if (row != camera_row::DNR_3D || !isHighRate) return false;
  TMX_LOG(LOG_WARNING, "Not Changed HighRate[id(%ld) workerData(%s)]", static_cast<long>(row), live(row).c_str());
  return true;
}

}  // namespace

int32_t CCameraApiBase::m_currentSceneId = 0;
int32_t CCameraApiBase::m_selectedSceneId = 0;
bool CCameraApiBase::m_sceneLocked = false;

std::string CCameraApiBase::currentScene() {
  return Config::getInstance()->getCameraConfig(camera_row::SCENE_FILE_NAME);
}

bool CCameraApiBase::isHighRate() { return Encoder::countHighRateChannels() > 0; }

int32_t CCameraApiBase::notAtHighRate(const Selectors& /*selectors*/) {
  return isHighRate() ? -status::kPreconditionFailed : 0;
}

bool CCameraApiBase::hasTrueDaynight() {
  const std::string model = Config::getModelName();
  return ModelFeature::has(Feature::DAY_NIGHT) || model.starts_with("KT-A30") || model.starts_with("KT-A20");
}

void CCameraApiBase::m_setCurrentSceneid() {
  m_currentSceneId = parseNumber(currentScene()).value_or(0);
  m_selectedSceneId = m_currentSceneId;
  TMX_LOG(LOG_DEBUG, "current scene id(%ld)", static_cast<long>(m_currentSceneId));
}

int32_t CCameraApiBase::m_saveSceneConfig(bool all) {
  Config& config = *Config::getInstance();
  const bool highRate = isHighRate();
  for (int32_t row = camera_row::COLOR; row < camera_row::kCount; ++row) {
    if (isHeldBack(row, highRate)) continue;
    if (config.setSceneConfig(m_selectedSceneId, row - camera_row::COMMENT2, live(row)) < 0) {
      TMX_LOG(LOG_ERR, "Camera: Cannot be set userdata");
      return -1;
    }
  }
  if (!all) {
    if (config.saveSceneConfig(m_selectedSceneId) == Config::kDone) return 0;
    TMX_LOG(LOG_ERR, "SceneFile(%ld.conf) cannot be write configdata", static_cast<long>(m_selectedSceneId));
    return -1;
  }
  for (int32_t scene = 0; scene < kScenes; ++scene) {
    if (config.saveSceneConfig(scene) == Config::kDone) continue;
    TMX_LOG(LOG_ERR, "SceneFile(%ld) cannot be write configdata", static_cast<long>(scene));
    return -1;
  }
  return 0;
}

int32_t CCameraApiBase::m_saveCameraConfig(bool all) {
  Config& config = *Config::getInstance();
  const bool highRate = isHighRate();
  for (int32_t row = camera_row::COMMENT; row < camera_row::kCount; ++row) {
    const bool isSceneId = row == camera_row::SCENE_FILE_NAME || row == camera_row::COMMENT2;
    const bool isTrueInStore = row == camera_row::DEFECT_DETECT;  // its live text is "on" once there was any
    if (!isSceneId && !isTrueInStore && !isHeldBack(row, highRate)) config.setCameraConfig(row, live(row));
  }
  if (m_savePatrolConfig() < 0) return -1;

  TMX_LOG(LOG_DEBUG, "scene (%ld) current scene(%ld) ", static_cast<long>(m_selectedSceneId),
          static_cast<long>(m_currentSceneId));
  const int32_t scene = all ? m_currentSceneId : m_selectedSceneId;
  config.setCameraConfig(camera_row::SCENE_FILE_NAME, std::to_string(scene));
  config.setCameraConfig(camera_row::COMMENT2, config.getSceneConfig(scene, scene_row::COMMENT2));
  if (!all) m_setCurrentSceneid();
  if (config.saveCameraConfig() == Config::kDone) return 0;
  TMX_LOG(LOG_ERR, "Camera: Cannot be write userdata");
  return -1;
}

int32_t CCameraApiBase::m_savePatrolConfig() {
  constexpr Row kStep[] = {patrol_row::PATROL_POSITION, patrol_row::PATROL_DURATION, patrol_row::PATROL_SPEED};
  Config& config = *Config::getInstance();
  for (int32_t step = 0; step < kPatrolSteps; ++step) {
    config.adopt(*CUserConfig::getInstance(), kStep, step);
  }
  if (config.save(Family::Patrol) == Config::kDone) return 0;
  TMX_LOG(LOG_DEBUG, "Patrol: Cannot be write userdata");
  return -1;
}
