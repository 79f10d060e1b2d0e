#pragma once

#include "camera/Scene.h"

/** The automatic exposure of a scene. */
namespace Camera {

class CScene::CAutoExposure : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CAvPk;
  class CReference;
  class CReferenceExt;
  class CPriority;
};

/** The brightness that the exposure aims at, on the scale of the user; the row holds the DSP's own number. */
class CScene::CAutoExposure::CReference
    : public NumberItem<CScene::CAutoExposure::CReference, camera_row::AUTO_EXPOSURE_REFERENCE,
                        &CameraDSP::setAutoExposureReferenceIndex, &CameraDSP::stepAutoExposureReferenceIndex> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(Number{.low = -5, .high = 5, .steps = true});
  int32_t act(Request& request);

 protected:
  int32_t m_execSceneRead(ExecArgs& args, int32_t scene) override;
};

/** The same on the DSP's scale. */
class CScene::CAutoExposure::CReferenceExt
    : public NumberItem<CScene::CAutoExposure::CReferenceExt, camera_row::AUTO_EXPOSURE_REFERENCE,
                        &CameraDSP::setAutoExposureReference, &CameraDSP::stepAutoExposureReference> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(Number{.low = -128, .high = 127, .steps = true});
  int32_t act(Request& request);
};

class CScene::CAutoExposure::CPriority
    : public NumberItem<CScene::CAutoExposure::CPriority, camera_row::AUTO_EXPOSURE_PRIORITY,
                        &CameraDSP::setAutoExposurePriority> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(Words{Word{"motion", 0}, Word{"quality", 2}, Word{"combo", 1}},
                                         {{{dsp::kNotUnderstood, status::kMethodNotAllowed}}});
};

/** Weight of the average against the peak of the picture. */
class CScene::CAutoExposure::CAvPk : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  static constexpr Rule weightRule = sceneRule(Number{.low = 5, .high = 10});
  class CColor;
  class CBlackWhite;
};

class CScene::CAutoExposure::CAvPk::CColor
    : public NumberItem<CScene::CAutoExposure::CAvPk::CColor, camera_row::AVPK_COLOR, &CameraDSP::setAvPkColor> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = weightRule;
};

class CScene::CAutoExposure::CAvPk::CBlackWhite
    : public NumberItem<CScene::CAutoExposure::CAvPk::CBlackWhite, camera_row::AVPK_BW, &CameraDSP::setAvPkBlackWhite> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = weightRule;

 protected:
  /** Changes the live picture, whichever scene the request names. */
  int32_t m_execSceneWrite(ExecArgs& args, int32_t /*scene*/) override { return m_write(args); }
};

}  // namespace Camera
