#include "camera/SceneExposure.h"

#include "dsp/ExposureTables.h"
#include "service/CTmxdUtility.h"

namespace Camera {

int32_t CScene::CAutoExposure::CReference::m_execSceneRead(ExecArgs& args, int32_t scene) {
  const int32_t raw = CTmxdUtility::toLong(sceneText(scene, camera_row::AUTO_EXPOSURE_REFERENCE), 0);
  return RuleEngine::answerValue(*args.m_parameter, CTmxdUtility::longToString(dsp::aeReferenceIndex(raw)));
}

}  // namespace Camera
