// What a scene does as a whole: goto, save, initialize.

#include "camera/Scene.h"
#include "config/Config.h"
#include "dsp/DetectionSet.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

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
  const std::string& index = request.selectors.at(kLayer);
  if (index.empty()) {
    text = currentScene();
    return 0;
  }
  const int32_t scene = CTmxdUtility::toLong(index, 0);
  for (int32_t row = 0; row < scene_row::kCount; ++row) {
    if (row > 0) text += "-";
    const bool isOff = row == scene_row::DNR_3D && isHighRate();
    text += isOff ? "off" : Config::getInstance()->getSceneConfig(scene, row);
  }
  return 0;
}

int32_t CScene::CStatus::act(Request& request) {
  switch (request.number) {
    case kGoto:
      return m_cameraSceneDataChange();
    case kSave:
      return m_save();
    default:
      return m_initialize();
  }
}

/** Makes the selected scene the current one; a goto to the current scene is written at once. */
int32_t CScene::CStatus::m_cameraSceneDataChange() {
  m_sceneLocked = false;
  TMX_LOG(LOG_DEBUG, "scene change goto(%ld) ", static_cast<long>(m_selectedSceneId));
  const bool wasCurrent = CTmxdUtility::longToString(m_selectedSceneId) == currentScene();
  if (m_loadSelectedScene() < 0) return -status::kInternalError;
  if (!wasCurrent) return 0;
  if (Config::getInstance()->saveCameraConfig() == Config::kDone) return kAlreadyInForce;
  TMX_LOG(LOG_ERR, "camraConfig file write failed");
  return -status::kInternalError;
}

int32_t CScene::CStatus::m_loadSelectedScene() {
  Config& config = *Config::getInstance();
  const int32_t scene = m_selectedSceneId;
  if (config.readSceneConfig(scene) != Config::kDone) {
    TMX_LOG(LOG_ERR, "read sicne(%ld) file failed", static_cast<long>(scene));
    return -1;
  }
  for (int32_t row = camera_row::COLOR; row < camera_row::kCount; ++row) {
    m_dsp.store(row, config.getSceneConfig(scene, row - camera_row::COMMENT2));
  }
  if (m_dsp.loadSceneData(false) < 0) return -1;

  keepLivePicture();
  config.setCameraConfig(camera_row::COMMENT2, config.getSceneConfig(scene, scene_row::COMMENT2));
  config.setCameraConfig(camera_row::SCENE_FILE_NAME, CTmxdUtility::longToString(scene));
  const std::string reference = config.getCameraConfig(camera_row::AUTO_EXPOSURE_REFERENCE);
  if (DetectionSet().setAutoExposurereferenceTamp(reference, true) >= 0) return 0;
  TMX_LOG(LOG_ERR, " failed to send detectd auto_exposurereference ");
  return -1;
}

int32_t CScene::CStatus::m_save() {
  if (m_sceneLocked) {
    TMX_LOG(LOG_ERR, "not allowance state (%ld) ", static_cast<long>(m_sceneLocked));
    return -status::kPreconditionFailed;
  }
  TMX_LOG(LOG_DEBUG, "camera.scene(%ld).status=save", static_cast<long>(m_selectedSceneId));
  const bool isSaved = m_saveSceneConfig(false) == 0 && m_saveCameraConfig(false) == 0;
  return isSaved ? kAlreadyInForce : -status::kInternalError;
}

int32_t CScene::CStatus::m_initialize() {
  m_sceneLocked = false;
  if (Config::initilizeSceneFileFactory(m_selectedSceneId) != Config::kDone) return -status::kInternalError;
  return m_reloadScenedata() == 0 ? kAlreadyInForce : -status::kInternalError;
}

/** Takes the selected scene's file into the tables and, if the working copy holds that scene, into the picture. */
int32_t CScene::CStatus::m_reloadScenedata() {
  Config& config = *Config::getInstance();
  if (config.reloadSceneConfig(m_selectedSceneId) != Config::kDone) return -1;
  if (m_currentSceneId != m_selectedSceneId) return 0;

  TMX_LOG(LOG_DEBUG, "reload scene(%ld)", static_cast<long>(m_selectedSceneId));
  for (int32_t row = 0; row < scene_row::kCount; ++row) {
    config.setCameraConfig(camera_row::COMMENT2 + row, config.getSceneConfig(m_selectedSceneId, row));
  }
  if (config.saveCameraConfig() != Config::kDone) {
    TMX_LOG(LOG_ERR, "Config::getInstance()->saveCameraConfig() error(%m)");
    return -1;
  }
  for (int32_t row = camera_row::COMMENT2; row < camera_row::kCount; ++row) {
    m_dsp.store(row, config.getCameraConfig(row));
  }
  const int32_t result = m_dsp.loadSceneData(true);
  m_setCurrentSceneid();
  return result < 0 ? -1 : 0;
}

}  // namespace Camera
