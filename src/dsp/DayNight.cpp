#include "dsp/CameraDSP.h"
#include "dsp/Words.h"
#include "request/Log.h"

namespace frame = dsp::frame;

/** Easy day/night: the picture mode without a cut filter. */
int32_t CameraDSP::setHighGain(uint32_t mode, bool sendflag) {
  if (mode > 2) {
    TMX_LOG(LOG_ERR, "easy daynight out of range(%ld)", static_cast<long>(mode));
    return dsp::kOutOfRange;
  }
  const auto value = static_cast<int32_t>(mode);
  TMX_LOG(LOG_DEBUG, "highgain mode is %d ", value);
  const dsp::WordRow& rule = dsp::wordRow(camera_row::EASY_DAY_NIGHT);
  return m_apply(frame::kDayNightMode, value, rule.row, dsp::wordOf(rule, value), sendflag);
}

int32_t CameraDSP::setEasyDaynight(uint32_t mode, bool sendflag) {
  constexpr uint32_t kAuto = 2;
  uint32_t gainCode = m_gainCode();
  bool gainGoesOut = mode < kAuto;
  if (mode == kAuto && !dsp::gain::isAutomatic(gainCode)) {
    // An automatic picture mode cannot keep a gain of the user's own.
    gainCode = dsp::gain::kAutoMiddle;
    gainGoesOut = true;
  }
  // A gain that is refused here fits again once the picture mode has changed.
  if (gainGoesOut && setAGC(gainCode, sendflag) == dsp::kSendFailed) return dsp::kSendFailed;
  return setHighGain(mode, sendflag);
}

/** True day/night; a number without a word goes to the DSP as it stands and is stored as "color". */
int32_t CameraDSP::setTrueDaynight(uint32_t mode, bool sendflag) {
  const bool isAutomatic = mode > 1;
  if (isAutomatic && !dsp::gain::isAutomatic(m_gainCode()) && setAGC(dsp::gain::kAutoMiddle, sendflag) < 0) {
    return dsp::kSendFailed;
  }
  const auto value = static_cast<int32_t>(mode);
  const dsp::WordRow& rule = dsp::wordRow(camera_row::TRUE_DAY_NIGHT);
  return m_apply(frame::kDayNightMode, value, rule.row, dsp::wordOf(rule, value), sendflag);
}

int32_t CameraDSP::setTrueDaynightAf(bool on) {
  return m_apply(frame::kAfSwitch, on, camera_row::AUTO_FOCUS, on ? "on" : "off", true);
}
