#pragma once

#include <string>

#include "camera/Scene.h"

/** The picture settings of a scene. */
namespace Camera {

struct CScene::CImage : CCameraApiBase {
  struct CColor;
  struct CGamma;
  struct CBrightness;
  struct CTrueDaynight;
  struct CEasyDaynight;
  struct CPedestal;
  struct CEnhance;
  struct C3ddnr;
  struct CSenseupLimit;
  struct CWhiteBalance;
  struct CLumx;
  struct CBlc;
};

/** A scale of percent with steps. */
inline constexpr Number kPercentWithSteps{.low = 0, .high = 100, .steps = true};

struct CScene::CImage::CColor : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::COLOR, kPercentWithSteps, toDsp<&CameraDSP::setSaturation, &CameraDSP::stepSaturation>);
};

struct CScene::CImage::CPedestal : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::PEDESTAL, kPercentWithSteps, toDsp<&CameraDSP::setPedestal, &CameraDSP::stepPedestal>);
};

struct CScene::CImage::CEnhance : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::ENHANCE, kPercentWithSteps, toDsp<&CameraDSP::setEnhance, &CameraDSP::stepEnhance>);
};

/** Rule::accepts of a text with steps: the words, and "+" and "-". */
[[nodiscard]] int32_t checkGamma(Request& request);

struct CScene::CImage::CGamma : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::GAMMA,
                Test{checkGamma,
                     {"0.3, 0.35, 0.4, 0.45, 0.5, 0.55, 0.6, 1, + or -", "0.3 0.35 0.4 0.45 0.5 0.55 0.6 1", "0.7 x"}},
                toDsp<&CameraDSP::setImageGamma, &CameraDSP::stepImageGamma>);
};

/** The gain: a fixed one by its number, or automatic. */
struct CScene::CImage::CBrightness : CCameraApiBase {
  static int32_t check(Request& request);
  static constexpr Rule rule =
      sceneItem(camera_row::BRIGHTNESS,
                Test{check, {"manual, autoM, autoH, or a fixed gain, 0 to 60 dB", "manual autoM autoH", "x"}},
                toDspAndDetection<&CameraDSP::setAGC, &DetectionSet::setAgcmodeTamp>,
                {{{dsp::kRefused, status::kMethodNotAllowed}}});
};

/** Day and night with a cut filter; some models show and switch their easy day/night setting here. */
struct CScene::CImage::CTrueDaynight : CCameraApiBase {
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Selector selector{.available = {hasTrueDaynight, "feature DAY_NIGHT, or a model KT-A30 or KT-A20"}};
  static constexpr Rule rule{
      .guard = kOfCurrentScene,
      .accepts =
          Words{Word{"bw", 0}, Word{"color", 1}, Word{"autoL", 2}, Word{"autoM", 3}, Word{"auto", 3}, Word{"autoH", 4}},
      .place = {camera_row::TRUE_DAY_NIGHT, inScene},
      .act = act,
      .fetch = fetch,
      .answers = kSaveScene,
  };
  struct CAf;
};

struct CScene::CImage::CTrueDaynight::CAf : CCameraApiBase {
  static constexpr int32_t kFailed = 416;  // has no text of its own: it is logged, and answered as 500
  static constexpr Rule rule = sceneItem(camera_row::AUTO_FOCUS, dsp::words::kOffOn,
                                         toDsp<&CameraDSP::setTrueDaynightAf>, {{{kAnyFailure, kFailed}}});
};

/** Day and night without a cut filter. */
struct CScene::CImage::CEasyDaynight : CCameraApiBase {
  static constexpr Selector selector{.available = lacks<Feature::DAY_NIGHT>};
  static constexpr Rule rule =
      sceneItem(camera_row::EASY_DAY_NIGHT, dsp::words::kEasyDayNight, toDsp<&CameraDSP::setEasyDaynight>,
                {{{kAnyFailure, status::kMethodNotAllowed}}});
};

struct CScene::CImage::C3ddnr : CCameraApiBase {
  static constexpr Rule rule{
      .guard = {.access = kScene, .write = {{kNotAtHighRate, kCurrentScene}}},
      .accepts = dsp::words::kNoiseReduction,
      .place = {camera_row::DNR_3D, inScene},
      .act = toDsp<&CameraDSP::set3ddnr>,
      .answers = kSaveScene,
  };
};

struct CScene::CImage::CSenseupLimit : CCameraApiBase {
  static constexpr Rule rule = sceneItem(
      camera_row::SENSEUP_LIMIT, OneOf{.numbers = {0, 2, 4, 8, 16, 32, 60}, .count = 7, .steps = true},
      toDspAndDetection<&CameraDSP::setSenseuplimit, &DetectionSet::setSenseUpLimitTamp, &CameraDSP::stepSenseuplimit>);
};

struct CScene::CImage::CWhiteBalance : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::WHITE_BALANCE,
                Words{Word{"manual", 0}, Word{"auto", 1}, Word{"autoW", 1}, Word{"autoN", 2}, Word{"op_auto", 3}},
                toDsp<&CameraDSP::setWhiteBalanceMode>);
  struct CR;
  struct CB;
};

/** Accepts "s" and a number of 0 to 255, or a step. */
[[nodiscard]] int32_t checkWhiteBalanceGain(Request& request);

/** A gain of the white balance, shown with its "s". */
constexpr Rule whiteBalanceGain(camera_row::Row row, Act act) {
  Rule rule = sceneItem(row, Test{checkWhiteBalanceGain, {"s and a number, 0 to 255, + or -", "s0 s255", "5 x"}}, act);
  rule.shows.prefix = "s";
  return rule;
}

struct CScene::CImage::CWhiteBalance::CR : CCameraApiBase {
  static constexpr Rule rule =
      whiteBalanceGain(camera_row::WB_R_GAIN, toDsp<&CameraDSP::setWhiteBalanceR, &CameraDSP::stepWhiteBalanceR>);
};

struct CScene::CImage::CWhiteBalance::CB : CCameraApiBase {
  static constexpr Rule rule =
      whiteBalanceGain(camera_row::WB_B_GAIN, toDsp<&CameraDSP::setWhiteBalanceB, &CameraDSP::stepWhiteBalanceB>);
};

struct CScene::CImage::CLumx : CCameraApiBase {
  static constexpr Rule rule = sceneItem(camera_row::LUMX, dsp::words::kOffOn, toDsp<&CameraDSP::setLumxStatus>);
};

struct CScene::CImage::CBlc : CCameraApiBase {
  static constexpr Rule rule = sceneItem(camera_row::BLC, dsp::words::kBlc,
                                         toDspAndDetection<&CameraDSP::setBLC, &DetectionSet::setBlctypeTamp>);
  struct CArea;
};

/** The area for which "manual" compensates, as a bit stream in hexadecimal digits, which the DSP's channel judges. */
struct CScene::CImage::CBlc::CArea : CCameraApiBase {
  static constexpr Rule rule =
      sceneItem(camera_row::BLC_AREA,
                Text{.form = {"34 hexadecimal digits, of which one bit stands for a field in the picture",
                              "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", "x"}},
                toDspAndDetection<&CameraDSP::setBLCArea, &DetectionSet::setBlcAreaTamp>,
                {{{dsp::kNotUnderstood, status::kNotUnderstood}}});
};

}  // namespace Camera
