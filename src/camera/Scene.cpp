#include "camera/Scene.h"

#include <algorithm>

#include "config/Config.h"
#include "dsp/DetectionSet.h"
#include "dsp/ExposureTables.h"
#include "dsp/Step.h"
#include "request/Log.h"
#include "request/Parameter.h"
#include "service/CTmxdUtility.h"

namespace Camera {

int32_t CScene::checkAttribute(const std::string& scene, int32_t depth) {
  const int32_t refused = Leaf::checkAttribute(scene, depth);
  if (refused == 0 && !scene.empty()) m_selectedSceneId = CTmxdUtility::toLong(scene, 0);
  return refused;
}

namespace {

/** The scene of a request, without an index the current one; or a negated status. */
int32_t sceneOf(const Selectors& selectors, const std::string& currentScene) {
  const std::string& index = selectors.at(CScene::kLayer);
  int32_t error = 0;
  const int32_t scene = CTmxdUtility::toLong(index.empty() ? currentScene : index, 0, &error);
  if (error != 0) return -status::kNotUnderstood;
  return scene < 0 || scene >= CScene::kScenes ? -status::kNotValidForResource : scene;
}

}  // namespace

int32_t CScene::CSceneBase::execRead(ExecArgs* args) {
  const int32_t scene = sceneOf(args->m_selectors, currentScene());
  return scene < 0 ? RuleEngine::answerStatus(*args->m_parameter, -scene) : m_execSceneRead(*args, scene);
}

int32_t CScene::CSceneBase::execWrite(ExecArgs* args) {
  const int32_t scene = sceneOf(args->m_selectors, currentScene());
  return scene < 0 ? RuleEngine::answerStatus(*args->m_parameter, -scene) : m_execSceneWrite(*args, scene);
}

int32_t CScene::CSceneBase::m_execSceneRead(ExecArgs& args, int32_t /*scene*/) {
  return CCameraApiBase::execRead(&args);
}

int32_t CScene::CSceneBase::m_execSceneWrite(ExecArgs& args, int32_t /*scene*/) {
  return CCameraApiBase::execWrite(&args);
}

bool CScene::CSceneBase::isCurrent(int32_t scene) { return CTmxdUtility::longToString(scene) == currentScene(); }

std::string CScene::CSceneBase::sceneText(int32_t scene, int32_t row) {
  if (isCurrent(scene)) return CUserConfig::getInstance()->getCameraConfig(row);
  return Config::getInstance()->getSceneConfig(scene, row - camera_row::COMMENT2);
}

int32_t CScene::CSceneBase::told(int32_t result, const std::string& value) {
  if (result >= 0) return 0;
  TMX_LOG(LOG_WARNING, "failed[errorcode:%ld] agcmode(%s) to send detectd", static_cast<long>(result), value.c_str());
  return result;
}

int32_t CScene::CSceneBase::tellExposureReference() {
  const std::string reference = CUserConfig::getInstance()->getCameraConfig(camera_row::AUTO_EXPOSURE_REFERENCE);
  return told(DetectionSet().setAutoExposurereferenceTamp(reference, true), reference);
}

int32_t CScene::CShutter::check(Request& request) {
  const std::string& value = request.value;
  if (value.find("auto") != std::string::npos || value == "flickerless") return 0;
  request.step = dsp::stepDirection(value);
  if (request.step != 0) return 0;
  int32_t error = 0;
  request.number = CTmxdUtility::toLong(value, 0, &error);
  if (error != 0) return -status::kNotUnderstood;
  return std::ranges::count(dsp::shutter::kLadder, request.number) > 0 ? 0 : -status::kInvalidRange;
}

int32_t CScene::CShutter::act(Request& request) {
  if (request.step != 0) return m_dsp.stepShutter(request.value);
  if (request.number == 0) return m_dsp.setShutterByName(request.value);
  const bool isSlowest = request.number == dsp::shutter::kSlowest;
  return m_dsp.setShutterSpeedWithAGC(isSlowest ? dsp::shutter::kManual30 : dsp::shutter::kManual, request.number);
}

int32_t CScene::CShutter::m_execSceneRead(ExecArgs& args, int32_t scene) {
  if (!isCurrent(scene)) return SceneItem::m_execSceneRead(args, scene);
  const std::string text = m_dsp.getShutterSpeedMode();
  if (!text.empty()) return RuleEngine::answerValue(*args.m_parameter, text);
  args.m_parameter->setResponse("=" + getStatusCode(status::kInternalError));
  return -1;
}

int32_t CScene::CName::m_execSceneRead(ExecArgs& args, int32_t scene) {
  return RuleEngine::answerValue(*args.m_parameter, Config::getInstance()->getSceneConfig(scene, scene_row::COMMENT2));
}

}  // namespace Camera
