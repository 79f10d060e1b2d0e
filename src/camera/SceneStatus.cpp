// What a scene does as a whole: goto, save, initialize.

#include "camera/Scene.h"
#include "config/Config.h"
#include "dsp/DetectionSet.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace Camera {
namespace {

/** Copies the picture settings of the working copy to the stored camera table. */
void keepLivePicture() {
  const CUserConfig& user = *CUserConfig::getInstance();
  for (int32_t row = camera_row::COLOR; row < camera_row::kCount; ++row) {
    Config::getInstance()->setCameraConfig(row, user.getCameraConfig(row));
  }
}

}  // namespace

int32_t CScene::CStatus::fetch(const Request& request, std::string& text) {
  const std::string& index = request.selectors.at(CScene::kLayer);
  if (index.empty()) {
    text = currentScene();
    return 0;
  }
  const int32_t scene = parseNumber(index).value_or(0);
  for (int32_t row = 0; row < scene_row::kCount; ++row) {
    if (row > 0) text += "-";
    const bool isOff = row == scene_row::DNR_3D && isHighRate();
    text += isOff ? "off" : Config::getInstance()->getSceneConfig(scene, row);
  }
  return 0;
}

namespace {

int32_t loadSelectedScene() {
  Config& config = *Config::getInstance();
  const int32_t scene = CCameraApiBase::m_selectedSceneId;
  if (config.readSceneConfig(scene) != Config::kDone) {
    TMX_LOG(LOG_ERR, "read sicne(%ld) file failed", static_cast<long>(scene));
    return -1;
  }
  for (int32_t row = camera_row::COLOR; row < camera_row::kCount; ++row) {
    cameraDsp().store(row, config.getSceneConfig(scene, row - camera_row::COMMENT2));
  }
  if (cameraDsp().loadSceneData(false) < 0) return -1;

  keepLivePicture();
  config.setCameraConfig(camera_row::COMMENT2, config.getSceneConfig(scene, scene_row::COMMENT2));
  config.setCameraConfig(camera_row::SCENE_FILE_NAME, std::to_string(scene));
  const std::string reference = config.getCameraConfig(camera_row::AUTO_EXPOSURE_REFERENCE);
  if (DetectionSet().setAutoExposurereferenceTamp(reference, true) >= 0) return 0;
  TMX_LOG(LOG_ERR, " failed to send detectd auto_exposurereference ");
  return -1;
}

/** Takes the selected scene's file into the tables and, if the working copy holds that scene, into the picture. */
int32_t reloadScenedata() {
  Config& config = *Config::getInstance();
  const int32_t scene = CCameraApiBase::m_selectedSceneId;
  if (config.reloadSceneConfig(scene) != Config::kDone) return -1;
  if (CCameraApiBase::m_currentSceneId != scene) return 0;

  TMX_LOG(LOG_DEBUG, "reload scene(%ld)", static_cast<long>(scene));
  for (int32_t row = 0; row < scene_row::kCount; ++row) {
    config.setCameraConfig(camera_row::COMMENT2 + row, config.getSceneConfig(scene, row));
  }
  if (config.saveCameraConfig() != Config::kDone) {
    TMX_LOG(LOG_ERR, "Config::getInstance()->saveCameraConfig() error(%m)");
    return -1;
  }
  for (int32_t row = camera_row::COMMENT2; row < camera_row::kCount; ++row) {
    cameraDsp().store(row, config.getCameraConfig(row));
  }
  const int32_t result = cameraDsp().loadSceneData(true);
  CCameraApiBase::m_setCurrentSceneid();
  return result < 0 ? -1 : 0;
}

}  // namespace

/** Makes the selected scene the current one; a goto to the current scene is written at once. */
int32_t CScene::CStatus::goTo(Request& /*request*/) {
  m_sceneLocked = false;
  TMX_LOG(LOG_DEBUG, "scene change goto(%ld) ", static_cast<long>(m_selectedSceneId));
  const bool wasCurrent = std::to_string(m_selectedSceneId) == currentScene();
  if (loadSelectedScene() < 0) return -status::kInternalError;
  if (!wasCurrent) return status::kAccepted;
  if (Config::getInstance()->saveCameraConfig() == Config::kDone) return 0;
  TMX_LOG(LOG_ERR, "camraConfig file write failed");
  return -status::kInternalError;
}

int32_t CScene::CStatus::save(Request& /*request*/) {
  if (m_sceneLocked) {
    TMX_LOG(LOG_ERR, "not allowance state (%ld) ", static_cast<long>(m_sceneLocked));
    return -status::kPreconditionFailed;
  }
  TMX_LOG(LOG_DEBUG, "camera.scene(%ld).status=save", static_cast<long>(m_selectedSceneId));
  const bool isSaved = m_saveSceneConfig(false) == 0 && m_saveCameraConfig(false) == 0;
  return isSaved ? 0 : -status::kInternalError;
}

int32_t CScene::CStatus::initialize(Request& /*request*/) {
  m_sceneLocked = false;
  if (Config::initilizeSceneFileFactory(m_selectedSceneId) != Config::kDone) return -status::kInternalError;
  return reloadScenedata() == 0 ? 0 : -status::kInternalError;
}

}  // namespace Camera
