#include <algorithm>

#include "dsp/CameraDSP.h"
#include "dsp/Step.h"
#include "dsp/Words.h"
#include "request/Log.h"

namespace frame = dsp::frame;
namespace gain = dsp::gain;

int32_t CameraDSP::setAGC(uint32_t code, bool sendflag) {
  TMX_LOG(LOG_DEBUG, "highgain(%s)agc(%ld) ", m_text(camera_row::EASY_DAY_NIGHT).c_str(), static_cast<long>(code));
  if (const int32_t refused = m_checkGain(code); refused < 0) return refused;
  return code >= gain::kFixed ? m_setFixedGain(code, sendflag) : m_setAutoGain(code, sendflag);
}

/** A gain of the user's own needs a picture mode that stays; a fixed gain needs a manual shutter besides. */
int32_t CameraDSP::m_checkGain(uint32_t code) const {
  if (m_model.dayNight) TMX_LOG(LOG_DEBUG, "true-daynight combination model");
  if (gain::isAutomatic(code)) return dsp::kDone;
  if (m_model.dayNight) {
    const std::string mode = m_text(camera_row::TRUE_DAY_NIGHT);
    if (mode != "bw" && mode != "color") {
      TMX_LOG(LOG_ERR, "error while true daynight on,set agc (%ld): daymode(%s)", static_cast<long>(code),
              mode.c_str());
      return dsp::kRefused;
    }
  } else if (m_text(camera_row::EASY_DAY_NIGHT) == "auto") {
    return m_refuseGain(code);
  }
  if (code >= gain::kFixed && !dsp::shutter::isManual(m_shutterMode)) return m_refuseGain(code);
  return dsp::kDone;
}

int32_t CameraDSP::m_refuseGain(uint32_t code) const {
  TMX_LOG(LOG_ERR, "error while easy daynight on,set agc (%ld): daymode(%s)", static_cast<long>(code),
          m_text(camera_row::EASY_DAY_NIGHT).c_str());
  return dsp::kRefused;
}

int32_t CameraDSP::m_setFixedGain(uint32_t code, bool sendflag) {
  constexpr int32_t kIrisOpen = 2;
  m_frames.set(frame::kIrisMode, kIrisOpen);
  m_frames.set(frame::kAutoGain, 0);
  m_frames.set(frame::kGainCompensation, m_compensation());
  m_frames.set(frame::kGainValue, m_gainValue(code - gain::kFixed));
  if (m_sendAll({frame::kIrisMode.address, frame::kAutoGain.address}, sendflag) < 0) return dsp::kSendFailed;
  const uint32_t kept = m_isSecondBoard() ? code : std::min(code, dsp::kFirstBoardLastGain);
  m_store(camera_row::BRIGHTNESS, static_cast<int32_t>(kept - gain::kFixed));
  return dsp::kDone;
}

int32_t CameraDSP::m_setAutoGain(uint32_t code, bool sendflag) {
  constexpr int32_t kIrisAuto = 1;
  m_frames.set(frame::kAgcMode, static_cast<int32_t>(code));
  m_frames.set(frame::kIrisMode, kIrisAuto);
  m_frames.set(frame::kAutoGain, 1);
  m_frames.set(frame::kGainCompensation, m_compensation());
  if (m_sendAll({frame::kAgcMode.address, frame::kIrisMode.address, frame::kAutoGain.address}, sendflag) < 0) {
    return dsp::kSendFailed;
  }
  TMX_LOG(LOG_DEBUG, "agc(%ld )", static_cast<long>(code));
  m_store(camera_row::BRIGHTNESS, dsp::wordOf(dsp::wordRow(camera_row::BRIGHTNESS), static_cast<int32_t>(code)));
  return dsp::kDone;
}

uint32_t CameraDSP::m_gainCode() const { return static_cast<uint32_t>(getCurrentInt(camera_row::BRIGHTNESS)); }

int32_t CameraDSP::m_compensation() {
  const auto& table = m_isSecondBoard() ? dsp::kSecondBoard.compensation : dsp::kFirstBoard.compensation;
  if (!dsp::shutter::isManual(m_shutterMode)) {
    TMX_LOG(LOG_DEBUG, "shutter is not manual");
    return table[dsp::shutter::kIndexOf60];
  }
  return table[dsp::shutter::speedIndex(m_shutterSpeed)];
}

int32_t CameraDSP::m_gainValue(uint32_t gain) {
  const auto& table = m_isSecondBoard() ? dsp::kSecondBoard.gain : dsp::kFirstBoard.gain;
  if (gain >= table.size()) {
    TMX_LOG(LOG_ERR, "invalid gain[%ld]", static_cast<long>(gain));
    return 0;
  }
  return table[gain];
}

int32_t CameraDSP::setAutoExposurePriority(uint32_t priority, bool sendflag) {
  if (priority > 2) {
    TMX_LOG(LOG_ERR, "auto exposure priority out of range(%ld)", static_cast<long>(priority));
    return dsp::kOutOfRange;
  }
  if (m_shutterMode == dsp::shutter::kFlickerless) {
    TMX_LOG(LOG_ERR, "auto exposure priority(%ld) is fixed while flickerless", static_cast<long>(priority));
    return dsp::kNotUnderstood;
  }
  const auto value = static_cast<int32_t>(priority);
  const dsp::WordRow& rule = dsp::wordRow(camera_row::AUTO_EXPOSURE_PRIORITY);
  // The gain shares the frame, and sends it.
  if (m_apply(frame::kAePriority, value, rule.row, dsp::wordOf(rule, value), false) < 0) return dsp::kSendFailed;
  return setAGC(m_gainCode(), sendflag);
}

int32_t CameraDSP::setIrisMode(std::string_view mode, bool sendflag) {
  const auto value = dsp::words::kIris.find(mode);
  if (!value) {
    TMX_LOG(LOG_ERR, "iris mode out of range(%.*s)", static_cast<int>(mode.size()), mode.data());
    return dsp::kOutOfRange;
  }
  m_frames.set(frame::kIrisMode, *value);
  const int32_t result = m_send(frame::kIrisMode.address, sendflag);
  if (result == dsp::kDone) m_irisMode = *value;
  return result;
}

int32_t CameraDSP::setAutoExposureReference(int32_t raw, bool sendflag) {
  if (raw < INT8_MIN || raw > INT8_MAX) {
    TMX_LOG(LOG_ERR, "auto exposure reference out of range(%ld)", long{raw});
    return dsp::kOutOfRange;
  }
  return m_apply(frame::kAeReference, raw, camera_row::AUTO_EXPOSURE_REFERENCE, std::to_string(raw), sendflag);
}

int32_t CameraDSP::setAutoExposureReferenceIndex(int32_t index, bool sendflag) {
  return setAutoExposureReference(dsp::aeReferenceRaw(index), sendflag);
}

int32_t CameraDSP::stepAutoExposureReference(std::string_view step) {
  constexpr int32_t kRawStep = 2;
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  const int32_t raw = std::clamp<int32_t>(m_number(camera_row::AUTO_EXPOSURE_REFERENCE), INT8_MIN, INT8_MAX);
  return setAutoExposureReference(std::clamp<int32_t>(raw + direction * kRawStep, INT8_MIN, INT8_MAX), true);
}

int32_t CameraDSP::stepAutoExposureReferenceIndex(std::string_view step) {
  const int32_t direction = dsp::stepDirection(step);
  if (direction == 0) return dsp::kNotUnderstood;
  const int32_t index = dsp::aeReferenceIndex(m_number(camera_row::AUTO_EXPOSURE_REFERENCE)) + direction;
  return setAutoExposureReferenceIndex(index, true);
}

int32_t CameraDSP::setAvPkColor(int32_t value, bool sendflag) {
  return m_setAvPk(frame::kAvPkColor, camera_row::AVPK_COLOR, value, sendflag);
}

int32_t CameraDSP::setAvPkBlackWhite(int32_t value, bool sendflag) {
  return m_setAvPk(frame::kAvPkBlackWhite, camera_row::AVPK_BW, value, sendflag);
}

int32_t CameraDSP::m_setAvPk(dsp::Field field, int32_t row, int32_t value, bool sendflag) {
  if (value < 5 || value > 10) {
    TMX_LOG(LOG_ERR, "average peak out of range(%ld)", long{value});
    return dsp::kOutOfRange;
  }
  return m_apply(field, value, row, std::to_string(value), sendflag);
}

int32_t CameraDSP::setAutoExposureArea(const dsp::Area& area, bool sendflag) {
  dsp::putArea(m_frames.at(frame::kAeArea), area);
  const int32_t result = m_send(frame::kAeArea, sendflag);
  if (result == dsp::kDone) m_aeArea = area;
  return result;
}
