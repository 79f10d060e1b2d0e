#include "dsp/PictureTables.h"

#include <cstdio>

#include "dsp/CameraDSP.h"
#include "dsp/Step.h"
#include "dsp/Words.h"
#include "request/Log.h"

namespace frame = dsp::frame;

namespace {

/** Refuses values outside 0 to 100 on the terminal, as these setters always have. */
bool isOnScale(const char* setter, int32_t value) {
  if (value >= 0 && value <= dsp::kScaleTop) return true;
  std::fprintf(stderr, "%s: out of range\n", setter);
  return false;
}

constexpr Words kHighGammas{"0.5", "0.55", "0.6", "1"};
constexpr char kGammaLow[] = "0.45";
constexpr char kGammaHigh[] = "1";

int32_t gammaFlag(std::string_view gamma) { return kHighGammas.find(gamma) ? 1 : 0; }

}  // namespace

int32_t CameraDSP::setSaturation(int32_t value, bool sendflag) {
  if (!isOnScale("setSaturation", value)) return dsp::kOutOfRange;
  const int32_t step = dsp::kColorBands[dsp::bandIndex(dsp::kColorBands, value)].step;
  TMX_LOG(LOG_DEBUG, "color renge is %d (input %ld) ", step, long{value});
  return m_apply(frame::kColor, step, camera_row::COLOR, std::to_string(value), sendflag);
}

int32_t CameraDSP::stepSaturation(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  return setSaturation(dsp::bandStep(dsp::kColorBands, m_number(camera_row::COLOR), direction), true);
}

int32_t CameraDSP::setEnhance(int32_t value, bool sendflag) {
  if (!isOnScale("setEnhance", value)) return dsp::kOutOfRange;
  const int32_t step = dsp::kEnhanceBands[dsp::bandIndex(dsp::kEnhanceBands, value)].step;
  TMX_LOG(LOG_DEBUG, "Enhance:in(%ld)set(%d)\n", long{value}, step);
  return m_apply(frame::kEnhance, step, camera_row::ENHANCE, std::to_string(value), sendflag);
}

int32_t CameraDSP::stepEnhance(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  return setEnhance(dsp::bandStep(dsp::kEnhanceBands, m_number(camera_row::ENHANCE), direction), true);
}

int32_t CameraDSP::setPedestal(int32_t value, bool sendflag) {
  if (!isOnScale("setPedestal", value)) return dsp::kOutOfRange;
  return m_apply(frame::kPedestal, value > dsp::kPedestalThreshold, camera_row::PEDESTAL, std::to_string(value),
                 sendflag);
}

int32_t CameraDSP::stepPedestal(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  int32_t value = m_number(camera_row::PEDESTAL);
  if (direction > 0 && value < dsp::kPedestalUp) {
    value = dsp::kPedestalUp;
  } else if (direction < 0 && value >= dsp::kPedestalUp) {
    value = 0;
  }
  return setPedestal(value, true);
}

int32_t CameraDSP::setImageGamma(const std::string& gamma, bool sendflag) {
  const int32_t flag = gammaFlag(gamma);
  TMX_LOG(LOG_DEBUG, "dsp gamma in(%s) sdkset(%d)", gamma.c_str(), flag);
  return m_apply(frame::kGamma, flag, camera_row::GAMMA, flag != 0 ? kGammaHigh : kGammaLow, sendflag);
}

int32_t CameraDSP::stepImageGamma(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  return setImageGamma(direction > 0 ? kGammaHigh : kGammaLow, true);
}

int32_t CameraDSP::set3ddnr(uint32_t level, bool sendflag) {
  if (level > 3) {
    TMX_LOG(LOG_ERR, "3ddnr out of range(%ld)", static_cast<long>(level));
    return dsp::kOutOfRange;
  }
  const auto value = static_cast<int32_t>(level);
  const dsp::WordRow& rule = dsp::wordRow(camera_row::DNR_3D);
  return m_apply(frame::kNoiseReduction, value, rule.row, dsp::wordOf(rule, value), sendflag);
}

int32_t CameraDSP::setLumxStatus(uint32_t on, bool sendflag) {
  if (on > 1) {
    TMX_LOG(LOG_ERR, "lumx out of range(%ld)", static_cast<long>(on));
    return dsp::kOutOfRange;
  }
  return m_apply(frame::kLumx, on != 0, camera_row::LUMX, on != 0 ? "on" : "off", sendflag);
}
