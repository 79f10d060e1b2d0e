#include "camera/Motion.h"

#include <algorithm>
#include <optional>

#include "camera/MotionNumbers.h"
#include "config/Config.h"
#include "encoder/Encoder.h"
#include "service/Numbers.h"
#include "service/Sequencer.h"

namespace Camera {
namespace {

/** Takes the sign of a relative value off the text: +1, -1, or 0 where there is none. */
int32_t takeSign(std::string_view& text) {
  if (!text.starts_with('+') && !text.starts_with('-')) return 0;
  const int32_t sign = text.front() == '+' ? 1 : -1;
  text.remove_prefix(1);
  return sign;
}

/** Takes the letter in front of a value off the text. */
bool takeLetter(std::string_view& text, char letter) {
  if (!text.starts_with(letter)) return false;
  text.remove_prefix(1);
  return true;
}

/** A zoom as it was asked for: a factor or a percentage, from the present factor where it has a sign. */
struct ZoomValue {
  int32_t sign = 0;
  bool isFactor = false;
  float number = 0;
};

std::optional<ZoomValue> parseZoom(std::string_view text) {
  ZoomValue value;
  value.sign = takeSign(text);
  value.isFactor = takeLetter(text, 'x');
  const auto number = parseFloat(text);
  if (!number) return std::nullopt;
  value.number = *number;
  return value;
}

float targetFactor(const ZoomValue& value, float present) {
  if (value.isFactor) return value.sign == 0 ? value.number : present + static_cast<float>(value.sign) * value.number;
  const double way = value.number * 7 / 99.99;
  if (value.sign == 0) return static_cast<float>(way + zoom_factor::kLeast);
  if (value.sign > 0) return std::min(static_cast<float>(way + present), zoom_factor::kMost);
  return std::max(static_cast<float>(present - way), zoom_factor::kLeast);
}

/** Puts the factor to go to in the value's place; no text where nothing is to be sent. */
int32_t checkZoom(Request& request, bool percentagesOnly) {
  std::string answer;
  if (sequencer::ask(CMotion::CZoom::path, answer) < 0) return -status::kInternalError;

  const auto value = parseZoom(request.value);
  if (!value || (percentagesOnly && value->isFactor)) return -status::kNotUnderstood;
  const bool isStep = !value->isFactor && value->sign != 0;
  if (isStep && (value->number < 0 || value->number >= 100)) return -status::kInvalidRange;
  const auto present = value->sign == 0 ? zoom_factor::kLeast : parseFloat(answer);
  if (!present) return -status::kInternalError;

  const float factor = targetFactor(*value, *present);
  request.value.clear();
  if (factor <= 0) return 0;
  if (factor < zoom_factor::kLeast || factor > zoom_factor::kMost) return -status::kInvalidRange;
  request.value = "x" + twoDecimals(factor);
  return 0;
}

/** One half of a point: a sensor position, or a percentage of the most there is. None when it cannot be. */
std::optional<int32_t> coordinate(std::string_view text, bool isSensor, int32_t most) {
  if (isSensor && !takeLetter(text, 's')) return std::nullopt;
  const auto number = isSensor ? parseNumber(text) : std::nullopt;
  const auto percentage = isSensor ? std::nullopt : parseFloat(text);
  if (!number && !percentage) return std::nullopt;
  const double place = number ? *number : double{*percentage} * most / 100;
  if (place < 0 || place > most) return std::nullopt;
  return static_cast<int32_t>(place);
}

}  // namespace

// ---- The patrol and the return -------------------------------------------------------------------------------------

int32_t tellPatrolStep(const Peer& peer, Request& request) {
  constexpr size_t kStepLayer = 3;
  const int32_t step = selectorNumber(request.selectors, kStepLayer, 0);
  return sequencer::tell("camera.motion.auto_patrol(0).position(" + std::to_string(step) + ")" +
                         std::string(peer.path) + "=" + request.value);
}

int32_t CMotion::CAutoPatrol::CStatus::save(Request& /*request*/) {
  return m_savePatrolConfig() < 0 ? -status::kInternalError : 0;
}

// ---- Moves ---------------------------------------------------------------------------------------------------------

int32_t CMotion::CClickoncenter::checkPoint(Request& request) {
  const bool isNarrow = Encoder::getAspectRatioStatus() == Encoder::kAspect4to3;
  const std::string_view text = request.value;
  const size_t divider = std::min(text.find('-'), text.size());
  const bool isSensor = text.starts_with('s');
  const auto x = coordinate(text.substr(0, divider), isSensor, isNarrow ? 1278 : kPan.most);
  const auto y = coordinate(text.substr(std::min(divider + 1, text.size())), isSensor, isNarrow ? 958 : kTilt.most);
  if (!x || !y) return -status::kNotUnderstood;
  request.value = "s" + std::to_string(*x) + "-s" + std::to_string(*y);
  return 0;
}

/** The present place counts only for a relative move. */
int32_t checkSensorPlace(Request& request, const MotionAxis& axis) {
  std::string answer;
  if (sequencer::ask(axis.path, answer) < 0) return -status::kInternalError;

  std::string_view text = request.value;
  const int32_t sign = takeSign(text);
  if (!takeLetter(text, 's')) return -status::kNotUnderstood;
  const auto number = parseNumber(text);
  if (!number) return -status::kNotUnderstood;
  const auto present = sign == 0 ? 0 : parseNumber(answer);
  if (!present) return -status::kInternalError;

  const int64_t place = sign == 0 ? *number : *present + int64_t{sign} * *number;
  if (place == -1) return -status::kNotUnderstood;
  if (place < 0 || place > axis.most) return -status::kInvalidRange;
  request.value = "s" + std::to_string(place);
  return 0;
}

int32_t CMotion::CZoom::needsSmallPicture(const Selectors& /*selectors*/) {
  const Config& config = *Config::getInstance();
  for (int32_t channel = 0; channel < Encoder::kChannels; ++channel) {
    const std::string framesize = config.getEncodeConfig(channel, encode_row::FRAME_SIZE);
    const bool isSmall = framesize == "vga" || framesize == "640x360";
    if (isSmall && config.getEncodeConfig(channel, encode_row::ENCTYPE_CH) != "mpeg4") return 0;
  }
  return -status::kNotUnderstood;
}

int32_t CMotion::CZoom::checkFactor(Request& request) { return checkZoom(request, false); }

int32_t CMotion::CZoom::fetch(const Request& /*request*/, std::string& text) {
  const int32_t result = sequencer::ask(path, text);
  const size_t point = text.find('.');
  if (point != std::string::npos) text = text.substr(0, point + 3);
  return result;
}

int32_t CMotion::CAbszoom::checkPercentage(Request& request) { return checkZoom(request, true); }

int32_t CMotion::CAbszoom::fetch(const Request& /*request*/, std::string& text) {
  std::string answer;
  const int32_t result = sequencer::ask(CZoom::path, answer);
  const auto factor = parseFloat(answer);
  if (result < 0 || !factor) return -status::kInternalError;
  text = twoDecimals((*factor - 1) * 99.99 / 7);
  return 0;
}

}  // namespace Camera
