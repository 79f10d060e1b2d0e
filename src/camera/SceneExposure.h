#pragma once

#include "camera/Scene.h"
#include "dsp/DetectionSet.h"

/** The automatic exposure of a scene. */
namespace Camera {

struct CScene::CAutoExposure : CCameraApiBase {
  struct CAvPk;
  struct CReference;
  struct CReferenceExt;
  struct CPriority;
};

/** Rule::act of the brightness that the exposure aims at: tamper detection hears of a change. */
template <auto Set, auto Step>
int32_t toExposureReference(Request& request) {
  const int32_t result = toDsp<Set, Step>(request);
  if (result < 0) return result;
  const std::string reference = CUserConfig::getInstance()->getCameraConfig(camera_row::AUTO_EXPOSURE_REFERENCE);
  return told(DetectionSet().setAutoExposurereferenceTamp(reference, true), reference);
}

/** On the scale of the user; the row holds the DSP's number. */
struct CScene::CAutoExposure::CReference : CCameraApiBase {
  static constexpr Rule rule{
      .guard = kOfCurrentScene,
      .accepts = Number{.low = -5, .high = 5, .steps = true},
      .place = {camera_row::AUTO_EXPOSURE_REFERENCE, inScene},
      .act = toExposureReference<&CameraDSP::setAutoExposureReferenceIndex, &CameraDSP::stepAutoExposureReferenceIndex>,
      .shows = {.number = dsp::aeReferenceIndex},
      .answers = kSaveScene,
  };
};

/** On the DSP's own scale. */
struct CScene::CAutoExposure::CReferenceExt : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::AUTO_EXPOSURE_REFERENCE, Number{.low = -128, .high = 127, .steps = true},
                toExposureReference<&CameraDSP::setAutoExposureReference, &CameraDSP::stepAutoExposureReference>);
};

struct CScene::CAutoExposure::CPriority : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::AUTO_EXPOSURE_PRIORITY, dsp::words::kPriority, toDsp<&CameraDSP::setAutoExposurePriority>,
                {{{dsp::kNotUnderstood, status::kMethodNotAllowed}}});
};

/** Weight of the average against the peak of the picture. */
struct CScene::CAutoExposure::CAvPk : CCameraApiBase {
  static constexpr Number kWeights{.low = 5, .high = 10};
  struct CColor;
  struct CBlackWhite;
};

struct CScene::CAutoExposure::CAvPk::CColor : CCameraApiBase {
  static constexpr Rule rule = sceneItem(camera_row::AVPK_COLOR, kWeights, toDsp<&CameraDSP::setAvPkColor>);
};

/** Changes the live picture, whichever scene the request names. */
struct CScene::CAutoExposure::CAvPk::CBlackWhite : CCameraApiBase {
  static constexpr Rule rule{
      .guard = {.access = kScene},
      .accepts = kWeights,
      .place = {camera_row::AVPK_BW, inScene},
      .act = toDsp<&CameraDSP::setAvPkBlackWhite>,
      .answers = kSaveScene,
  };
};

}  // namespace Camera
