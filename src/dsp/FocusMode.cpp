#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/FocusTables.h"
#include "local/CommonInterface.h"
#include "request/Log.h"
#include "service/Gpio.h"

namespace focus = dsp::focus;

namespace {

/** Where the filter stands in a fixed mode. */
int32_t filterOf(int32_t mode) { return mode == focus::kNight ? focus::kBlackWhite : focus::kColor; }

}  // namespace

std::string CameraDSP::getAFadjustmode() const { return std::string(focus::kModes.text(m_afAdjustMode)); }

int32_t CameraDSP::setAFadjustmode(int32_t mode) {
  m_focusState = focus::kInitialize;
  if (!m_checkChangingIRposition(mode)) return dsp::kRefused;
  if (const int32_t result = m_setPictureOfMode(mode); result < 0) return result;
  if (mode != focus::kSelect) {
    constexpr int32_t kEnter = 1;
    TMX_LOG(LOG_DEBUG, ": gpio send[ %2lx:%2lx;%2lx;%2lx ] ", static_cast<unsigned long>(GpioCommand::AdjustMode),
            static_cast<unsigned long>(kEnter), 0UL, 0UL);
    if (gpio::tell(GpioCommand::AdjustMode, kEnter) < 0) {
      m_focusState = focus::kStop;
      return dsp::kSendFailed;
    }
  }
  m_afAdjustMode = mode;
  if (!m_isFilterMoving) m_focusState = focus::kStop;
  TMX_LOG(LOG_DEBUG, "statue changedset(%ld)", long{m_focusState});
  TMX_LOG(LOG_DEBUG, "set adjustmode(%s):preir(%ld):chgflag(%ld)", getAFadjustmode().c_str(), long{m_filterBefore},
          static_cast<long>(m_isFilterMoving));
  return dsp::kDone;
}

/** Finds out whether the change of mode moves the filter; false when the filter's place cannot be read. */
bool CameraDSP::m_checkChangingIRposition(int32_t mode) {
  const bool isFromSelect = m_afAdjustMode == focus::kSelect;
  const int32_t filter = getCurrentDspIcr(isFromSelect);
  if (filter < 0) return false;
  if (mode == focus::kSelect) {
    m_isFilterMoving = !isFromSelect && filter != m_filterBefore;
  } else if (isFromSelect) {
    m_isFilterMoving = filterOf(mode) != m_filterBefore;
  } else {
    // The back focus is driven to its start again, which counts as a move.
    const bool isInitialAgain = mode == focus::kInitPos && m_afAdjustMode == focus::kInitPos;
    m_isFilterMoving = isInitialAgain || filterOf(mode) != filterOf(m_afAdjustMode);
  }
  TMX_LOG(LOG_DEBUG, "[ret(%d)]: mode(%s) preICR(%ld),baseICR(%ld),setstate(%ld)", 1, focus::kModes.text(mode).data(),
          long{m_filterBefore}, long{filter}, static_cast<long>(m_isFilterMoving));
  return true;
}

/** The picture that goes with a mode. It is for the time being: the working copy keeps the setting of the user. */
int32_t CameraDSP::m_setPictureOfMode(int32_t mode) {
  if (mode == focus::kInitPos && !m_model.backFocus) return dsp::kNotUnderstood;
  const std::string kept = m_text(camera_row::TRUE_DAY_NIGHT);
  const int32_t keptMode = getCurrentInt(camera_row::TRUE_DAY_NIGHT);
  const bool isAssisted = mode == focus::kDay || mode == focus::kNight;
  if (isAssisted != m_focusAssist && setFocusAssist(isAssisted) < 0) return dsp::kSendFailed;
  const int32_t picture = mode == focus::kSelect ? keptMode : filterOf(mode);
  const int32_t result = setTrueDaynight(static_cast<uint32_t>(picture), true);
  m_store(camera_row::TRUE_DAY_NIGHT, kept);
  return result < 0 ? dsp::kSendFailed : dsp::kDone;
}

/** A filter that cannot be read is not known to be back. */
bool CameraDSP::checkIcrStateCurrent() {
  constexpr int32_t kSettling = 400000;  // microseconds
  const int32_t filter = getCurrentDspIcr(false);
  TMX_LOG(LOG_DEBUG, "currentICR(%ld)", long{filter});
  if (filter < 0) return false;
  if (filter != m_filterBefore) return !hasNightFocusOffset();
  CommonInterface::usleepRetry(kSettling);
  return getCurrentDspIcr(false) == m_filterBefore;
}

bool CameraDSP::releaseAFadjustmode() {
  TMX_LOG(LOG_DEBUG, " send the end of adjustmode to gpio");
  constexpr int32_t kLeave = 0;
  if (gpio::tell(GpioCommand::AdjustMode, kLeave) == 0) return true;
  TMX_LOG(LOG_ERR, "failed to releae afadjustmode");
  return false;
}
