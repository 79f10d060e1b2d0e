#pragma once

#include <string>

#include "camera/Scene.h"

/** The picture settings of a scene. */
namespace Camera {

class CScene::CImage : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CColor;
  class CGamma;
  class CBrightness;
  class CTrueDaynight;
  class CEasyDaynight;
  class CPedestal;
  class CEnhance;
  class C3ddnr;
  class CSenseupLimit;
  class CWhiteBalance;
  class CLumx;
  class CBlc;
};

/** A scale of percent with steps. */
inline constexpr Number kPercentWithSteps{.low = 0, .high = 100, .steps = true};

class CScene::CImage::CColor : public NumberItem<CScene::CImage::CColor, camera_row::COLOR, &CameraDSP::setSaturation,
                                                 &CameraDSP::stepSaturation> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(kPercentWithSteps);
};

class CScene::CImage::CPedestal : public NumberItem<CScene::CImage::CPedestal, camera_row::PEDESTAL,
                                                    &CameraDSP::setPedestal, &CameraDSP::stepPedestal> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(kPercentWithSteps);
};

class CScene::CImage::CEnhance : public NumberItem<CScene::CImage::CEnhance, camera_row::ENHANCE,
                                                   &CameraDSP::setEnhance, &CameraDSP::stepEnhance> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(kPercentWithSteps);
};

class CScene::CImage::CGamma : public SceneItem<CScene::CImage::CGamma, camera_row::GAMMA> {
 public:
  using SceneItem::SceneItem;
  static constexpr Rule rule = sceneRule(Words{"0.3", "0.35", "0.4", "0.45", "0.5", "0.55", "0.6", "1", "+", "-"});
  int32_t act(Request& request);
};

/** The gain: a fixed one by its number, or automatic. */
class CScene::CImage::CBrightness : public SceneItem<CScene::CImage::CBrightness, camera_row::BRIGHTNESS> {
 public:
  using SceneItem::SceneItem;
  static int32_t check(Request& request);
  static constexpr Rule rule = sceneRule(Test{check}, {{{dsp::kRefused, status::kMethodNotAllowed}}});
  int32_t act(Request& request);
};

/** Day and night with a cut filter; some models show and switch their easy day/night setting here. */
class CScene::CImage::CTrueDaynight : public SceneItem<CScene::CImage::CTrueDaynight, camera_row::TRUE_DAY_NIGHT> {
 public:
  using SceneItem::SceneItem;
  static constexpr Selector selector{.available = hasTrueDaynight};
  int32_t checkAttribute(const std::string& text, int32_t /*depth*/) override { return checkSelector(selector, text); }
  static constexpr Rule rule = sceneRule(
      Words{Word{"bw", 0}, Word{"color", 1}, Word{"autoL", 2}, Word{"autoM", 3}, Word{"auto", 3}, Word{"autoH", 4}});
  int32_t act(Request& request);
  class CAf;

 protected:
  int32_t m_execSceneRead(ExecArgs& args, int32_t scene) override;
};

class CScene::CImage::CTrueDaynight::CAf
    : public SceneItem<CScene::CImage::CTrueDaynight::CAf, camera_row::AUTO_FOCUS> {
 public:
  using SceneItem::SceneItem;
  static constexpr Rule rule = sceneRule(Words{"off", "on"});
  int32_t act(Request& request);
};

/** Day and night without a cut filter. */
class CScene::CImage::CEasyDaynight : public SceneItem<CScene::CImage::CEasyDaynight, camera_row::EASY_DAY_NIGHT> {
 public:
  using SceneItem::SceneItem;
  static constexpr Selector selector{.available = lacks<Feature::DAY_NIGHT>};
  int32_t checkAttribute(const std::string& text, int32_t /*depth*/) override { return checkSelector(selector, text); }
  static constexpr Rule rule = sceneRule(Words{"bw", "color", "auto"});
  int32_t act(Request& request);
};

class CScene::CImage::C3ddnr : public NumberItem<CScene::CImage::C3ddnr, camera_row::DNR_3D, &CameraDSP::set3ddnr> {
 public:
  using NumberItem::NumberItem;
  static int32_t refuseAtHighRate(const Selectors& selectors);
  static constexpr Rule rule{
      .guard = {.write = refuseAtHighRate},
      .accepts = Words{"off", "low", "mid", "high"},
      .answers = kSaveScene,
  };
};

class CScene::CImage::CSenseupLimit : public NumberItem<CScene::CImage::CSenseupLimit, camera_row::SENSEUP_LIMIT,
                                                        &CameraDSP::setSenseuplimit, &CameraDSP::stepSenseuplimit> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(OneOf{.numbers = {0, 2, 4, 8, 16, 32, 60}, .count = 7, .steps = true});
  int32_t act(Request& request);
};

class CScene::CImage::CWhiteBalance : public SceneItem<CScene::CImage::CWhiteBalance, camera_row::WHITE_BALANCE> {
 public:
  using SceneItem::SceneItem;
  static constexpr Rule rule =
      sceneRule(Words{Word{"manual", 0}, Word{"auto", 1}, Word{"autoW", 1}, Word{"autoN", 2}, Word{"op_auto", 3}});
  int32_t act(Request& request) { return m_dsp.setWhiteBalanceMode(static_cast<uint32_t>(request.number)); }
  class CR;
  class CB;
};

/** Accepts "s" and a number of 0 to 255, or a step. */
[[nodiscard]] int32_t checkWhiteBalanceGain(Request& request);

/** A gain of the white balance. */
template <class Derived, int Row, auto Set, auto Step>
class WhiteBalanceGain : public SceneItem<Derived, Row> {
 public:
  using SceneItem<Derived, Row>::SceneItem;
  static constexpr Rule rule = sceneRule(Test{checkWhiteBalanceGain});
  int32_t act(Request& request) {
    return request.step != 0 ? (this->m_dsp.*Step)(request.value) : (this->m_dsp.*Set)(request.number);
  }

 protected:
  int32_t m_execSceneRead(ExecArgs& args, int32_t scene) override {
    return RuleEngine::answerValue(*args.m_parameter, "s" + this->sceneText(scene, Row));
  }
};

class CScene::CImage::CWhiteBalance::CR
    : public WhiteBalanceGain<CScene::CImage::CWhiteBalance::CR, camera_row::WB_R_GAIN, &CameraDSP::setWhiteBalanceR,
                              &CameraDSP::stepWhiteBalanceR> {
 public:
  using WhiteBalanceGain::WhiteBalanceGain;
};

class CScene::CImage::CWhiteBalance::CB
    : public WhiteBalanceGain<CScene::CImage::CWhiteBalance::CB, camera_row::WB_B_GAIN, &CameraDSP::setWhiteBalanceB,
                              &CameraDSP::stepWhiteBalanceB> {
 public:
  using WhiteBalanceGain::WhiteBalanceGain;
};

class CScene::CImage::CLumx : public NumberItem<CScene::CImage::CLumx, camera_row::LUMX, &CameraDSP::setLumxStatus> {
 public:
  using NumberItem::NumberItem;
  static constexpr Rule rule = sceneRule(Words{"off", "on"});
};

class CScene::CImage::CBlc : public SceneItem<CScene::CImage::CBlc, camera_row::BLC> {
 public:
  using SceneItem::SceneItem;
  static constexpr Rule rule = sceneRule(Words{"off", "a", "b", "c", "d", "manual"});
  int32_t act(Request& request);
  class CArea;
};

/** The area for which "manual" compensates, as a bit stream in hexadecimal digits. */
class CScene::CImage::CBlc::CArea : public SceneItem<CScene::CImage::CBlc::CArea, camera_row::BLC_AREA> {
 public:
  using SceneItem::SceneItem;
  /** The DSP's channel judges the digits with the picture that they make. */
  static int32_t passOn(Request& /*request*/) { return 0; }
  static constexpr Rule rule = sceneRule(Test{passOn}, {{{dsp::kNotUnderstood, status::kNotUnderstood}}});
  int32_t act(Request& request);
};

}  // namespace Camera
