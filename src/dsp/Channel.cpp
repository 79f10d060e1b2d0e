#include <string>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/Words.h"
#include "local/ModelFeature.h"
#include "platform/zr_com.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/Numbers.h"

namespace dsp {

Model Model::ofCamera() {
  return {.dayNight = ModelFeature::has(Feature::DAY_NIGHT),
          .backFocus = ModelFeature::has(Feature::BACK_FOCUS_MODEL),
          .lens = ModelFeature::has(Feature::LENS_MODEL)};
}

}  // namespace dsp

int32_t CameraDSP::sendToCameradsp(dsp::Frame& frame, bool sendflag) {
  if (!sendflag) return dsp::kDone;
  TMX_LOG(LOG_DEBUG, "send vadata(addr: %x) ", frame[0]);
  if (zr_set_va_data(frame.data()) < 0) {
    TMX_LOG(LOG_ERR, "zr_set_va_data error(%m)");
    return dsp::kSendFailed;
  }
  return dsp::kDone;
}

int32_t CameraDSP::recvFromCameradsp(dsp::Frame& frame) {
  TMX_LOG(LOG_DEBUG, "get vadata(addr: %x) ", frame[0]);
  if (zr_get_va_data(frame.data()) < 0) {
    TMX_LOG(LOG_ERR, "zr_get_va_data error(%m)");
    return dsp::kReadFailed;
  }
  return dsp::kDone;
}

int32_t CameraDSP::setModelType(bool dayNight, bool noBackFocus, bool sendflag) {
  m_frames.set(dsp::frame::kDayNightModel, dayNight);
  m_frames.set(dsp::frame::kNoBackFocus, noBackFocus);
  dsp::Frame& frame = m_frames.at(dsp::frame::kDayNightModel.address);
  TMX_LOG(LOG_DEBUG, "---[[[[[[   send modeltype 0:%x 1:%x 2:%x  ]]]]]]]----", frame[0], frame[1], frame[2]);
  return sendToCameradsp(frame, sendflag);
}

int32_t CameraDSP::setDayNightMode(int32_t mode) {
  dsp::Frame frame = dsp::blankFrame(dsp::frame::kDayNightModel.address);
  dsp::put(frame, dsp::frame::kDayNightModel, mode);
  TMX_LOG(LOG_DEBUG, "set T.D.mode(%d)", mode);
  const int32_t result = sendToCameradsp(frame, true);
  if (result < 0) TMX_LOG(LOG_ERR, "T.D.mode send error(%m)");
  return result;
}

int32_t CameraDSP::sendLoadComplete() {
  m_frames.set(dsp::frame::kLoadComplete, 1);
  return m_send(dsp::frame::kLoadComplete.address, true);
}

void CameraDSP::store(int32_t row, const std::string& text) {
  m_store(row, text);
  if (row != camera_row::SHUTTER) return;
  if (const auto code = dsp::shutter::kNames.find(text)) {
    m_shutterMode = *code;
    m_shutterSpeed = *code == dsp::shutter::kFlickerless ? dsp::shutter::kNamedSpeed : dsp::shutter::kSlowest;
    return;
  }
  const auto speed = parseNumber(text);
  if (!speed) return;
  m_shutterSpeed = *speed;
  m_shutterMode = *speed == dsp::shutter::kSlowest ? dsp::shutter::kManual30 : dsp::shutter::kManual;
}

int32_t CameraDSP::getCurrentInt(int32_t row) const {
  const dsp::WordRow& rule = dsp::wordRow(row);
  const std::string text = m_text(row);
  if (const auto number = rule.words.find(text)) return *number;
  if (const auto number = rule.decimalOffset ? parseNumber(text) : std::nullopt) {
    return static_cast<int32_t>(static_cast<uint32_t>(*number) + static_cast<uint32_t>(*rule.decimalOffset));
  }
  TMX_LOG(LOG_DEBUG, "invalid %s[%s] ", rule.logName, text.c_str());
  return rule.fallback;
}

std::string CameraDSP::m_text(int32_t row) const { return CUserConfig::getInstance()->getCameraConfig(row); }

int32_t CameraDSP::m_number(int32_t row) const { return parseNumber(m_text(row)).value_or(0); }

void CameraDSP::m_store(int32_t row, std::string_view text) const {
  CUserConfig::getInstance()->setCameraConfig(row, std::string(text));
}

void CameraDSP::m_store(int32_t row, int32_t number) const { m_store(row, std::to_string(number)); }

/** Replaces an unknown word by that of the row's fallback. */
void CameraDSP::m_storeAgain(int32_t row) const { m_store(row, dsp::wordOf(dsp::wordRow(row), getCurrentInt(row))); }

int32_t CameraDSP::m_sendAll(std::initializer_list<uint8_t> addresses, bool sendflag) {
  for (const uint8_t address : addresses) {
    if (m_send(address, sendflag) < 0) return dsp::kSendFailed;
  }
  return dsp::kDone;
}

/** What nearly every setter does behind its check: cache, send, store. */
int32_t CameraDSP::m_apply(dsp::Field field, int32_t value, int32_t row, std::string_view text, bool sendflag) {
  m_frames.set(field, value);
  const int32_t result = m_send(field.address, sendflag);
  if (result == dsp::kDone) m_store(row, text);
  return result;
}
