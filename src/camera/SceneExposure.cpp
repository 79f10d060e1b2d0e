#include "camera/SceneExposure.h"

#include "camera/DetectionSet.h"
#include "camera/dsp/ExposureTables.h"
#include "config/Config.h"
#include "service/CTmxdUtility.h"

namespace Camera {

int32_t CScene::CSceneBase::tellExposureReference() {
  const std::string reference = CUserConfig::getInstance()->getCameraConfig(camera_row::AUTO_EXPOSURE_REFERENCE);
  return told(DetectionSet().setAutoExposurereferenceTamp(reference, true), reference);
}

int32_t CScene::CAutoExposure::CReference::act(Request& request) {
  const int32_t result = NumberItem::act(request);
  return result < 0 ? result : tellExposureReference();
}

int32_t CScene::CAutoExposure::CReference::m_execSceneRead(ExecArgs& args, int32_t scene) {
  const int32_t raw = CTmxdUtility::toLong(sceneText(scene, camera_row::AUTO_EXPOSURE_REFERENCE), 0);
  return RuleEngine::answerValue(*args.m_parameter, CTmxdUtility::longToString(dsp::aeReferenceIndex(raw)));
}

int32_t CScene::CAutoExposure::CReferenceExt::act(Request& request) {
  const int32_t result = NumberItem::act(request);
  return result < 0 ? result : tellExposureReference();
}

}  // namespace Camera
