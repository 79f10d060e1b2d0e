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

/** The brightness that the exposure aims at. The row holds the DSP's number; tamper detection hears of a change. */
template <class Derived, auto Set, auto Step>
class ExposureReference : public NumberItem<Derived, camera_row::AUTO_EXPOSURE_REFERENCE, Set, Step> {
 public:
  using Item = NumberItem<Derived, camera_row::AUTO_EXPOSURE_REFERENCE, Set, Step>;
  using Item::Item;
  int32_t act(Request& request) {
    const int32_t result = Item::act(request);
    return result < 0 ? result : this->tellExposureReference();
  }
};

/** On the scale of the user. */
class CScene::CAutoExposure::CReference
    : public ExposureReference<CScene::CAutoExposure::CReference, &CameraDSP::setAutoExposureReferenceIndex,
                               &CameraDSP::stepAutoExposureReferenceIndex> {
 public:
  using ExposureReference::ExposureReference;
  static constexpr Rule rule = sceneRule(Number{.low = -5, .high = 5, .steps = true});

 protected:
  int32_t m_execSceneRead(ExecArgs& args, int32_t scene) override;
};

/** On the DSP's own scale. */
class CScene::CAutoExposure::CReferenceExt
    : public ExposureReference<CScene::CAutoExposure::CReferenceExt, &CameraDSP::setAutoExposureReference,
                               &CameraDSP::stepAutoExposureReference> {
 public:
  using ExposureReference::ExposureReference;
  static constexpr Rule rule = sceneRule(Number{.low = -128, .high = 127, .steps = true});
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
