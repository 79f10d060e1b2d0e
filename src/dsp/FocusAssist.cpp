#include "dsp/CameraDSP.h"
#include "dsp/LoadResult.h"
#include "request/Log.h"

int32_t CameraDSP::setFocusAssist(bool on) {
  const int32_t result = on ? m_startFocusAssist() : m_endFocusAssist();
  if (result == dsp::kDone) m_focusAssist = on;
  return result;
}

/** An open iris, a short exposure and sharp edges. None of it is a setting: what the user has set stays beside it. */
int32_t CameraDSP::m_startFocusAssist() {
  constexpr int32_t kSharpEdges = 78;
  const int32_t shutterMode = m_shutterMode;
  const int32_t shutterSpeed = m_shutterSpeed;
  const int32_t irisMode = m_irisMode;
  const std::string enhance = m_text(camera_row::ENHANCE);
  const std::string brightness = m_text(camera_row::BRIGHTNESS);
  const bool isGainFixed = m_gainCode() > dsp::gain::kAutoHigh;

  dsp::LoadResult result;
  result += setIrisMode("100", true);
  result += setShutterSpeed(dsp::shutter::kFocusAssist, shutterSpeed, true);
  result += setEnhance(kSharpEdges, true);
  if (isGainFixed) result += setAGC(dsp::gain::kAutoHigh, true);

  m_shutterMode = shutterMode;
  m_shutterSpeed = shutterSpeed;
  m_irisMode = irisMode;
  m_store(camera_row::ENHANCE, enhance);
  m_store(camera_row::BRIGHTNESS, brightness);
  return result.get();
}

int32_t CameraDSP::m_endFocusAssist() {
  TMX_LOG(LOG_DEBUG, "--- status(%ld)  ", static_cast<long>(m_focusAssist));
  dsp::LoadResult result;
  result += setIrisMode("auto", true);
  result += setShutterSpeed(m_shutterMode, m_shutterSpeed, true);
  result += setEnhance(m_number(camera_row::ENHANCE), true);
  if (const uint32_t gain = m_gainCode(); gain > dsp::gain::kAutoHigh) result += setAGC(gain, true);
  return result.get();
}
