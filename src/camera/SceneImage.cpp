#include "camera/SceneImage.h"

#include <algorithm>

#include "config/Config.h"
#include "dsp/DetectionSet.h"
#include "dsp/Step.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace Camera {
namespace {

/** Models that have the node of the true day/night but switch the picture without a cut filter. */
bool showsEasyDaynight() {
  const std::string model = Config::getModelName();
  return (model.starts_with("KT-A30") && !model.starts_with("KT-A30PX")) || model.starts_with("KT-A20");
}

int32_t refused(int32_t result, int32_t code) { return result < 0 ? -code : result; }

}  // namespace

int32_t checkGamma(Request& request) {
  constexpr Words kGammas{"0.3", "0.35", "0.4", "0.45", "0.5", "0.55", "0.6", "1"};
  request.step = dsp::stepDirection(request.value);
  return request.step != 0 || kGammas.find(request.value) ? 0 : -status::kNotUnderstood;
}

int32_t CScene::CImage::CBrightness::check(Request& request) {
  constexpr Words kModes{Word{"manual", dsp::gain::kManual}, Word{"autoM", dsp::gain::kAutoMiddle},
                         Word{"autoH", dsp::gain::kAutoHigh}};
  constexpr int32_t kHighest = 60;
  if (const auto mode = kModes.find(request.value)) {
    request.number = *mode;
    return 0;
  }
  const auto gain = parseNumber(request.value);
  if (!gain) return -status::kNotUnderstood;
  if (*gain < 0 || *gain > kHighest) return -status::kInvalidRange;
  request.number = *gain + static_cast<int32_t>(dsp::gain::kFixed);
  return 0;
}

int32_t CScene::CImage::CTrueDaynight::fetch(const Request& request, std::string& text) {
  if (!showsEasyDaynight()) {
    TMX_LOG(LOG_DEBUG, "read true daynight setting for other (not A30,A20) ");
    return kShowStored;
  }
  TMX_LOG(LOG_DEBUG, "read easy daynight setting for A30,A20 ");
  const Cell cell = inScene(request.selectors, camera_row::EASY_DAY_NIGHT);
  const Config& image = cell.image == Image::User ? *CUserConfig::getInstance() : *Config::getInstance();
  text = image.get(cell.row, cell.table);
  return 0;
}

int32_t CScene::CImage::CTrueDaynight::act(Request& request) {
  constexpr int32_t kEasyAuto = 2;  // the easy setting has one automatic mode
  if (showsEasyDaynight()) {
    TMX_LOG(LOG_DEBUG, "set easy daynight setting for A30,A20[%s] ", request.value.c_str());
    const auto mode = static_cast<uint32_t>(std::min(request.number, kEasyAuto));
    return refused(cameraDsp().setEasyDaynight(mode, true), status::kMethodNotAllowed);
  }
  TMX_LOG(LOG_DEBUG, "set true daynight setting for other(not A30,A20) ");
  TMX_LOG(LOG_DEBUG, "set mode(%ld) ", static_cast<long>(request.number));
  return refused(cameraDsp().setTrueDaynight(static_cast<uint32_t>(request.number), true), status::kMethodNotAllowed);
}

int32_t checkWhiteBalanceGain(Request& request) {
  constexpr int32_t kHighest = 255;
  const std::string& value = request.value;
  request.step = dsp::stepDirection(value);
  if (request.step != 0) return 0;
  if (!value.starts_with('s')) return -status::kNotUnderstood;
  const auto gain = parseNumber(std::string_view(value).substr(1));
  if (!gain) return -status::kNotUnderstood;
  request.number = *gain;
  return *gain < 0 || *gain > kHighest ? -status::kInvalidRange : 0;
}

}  // namespace Camera
