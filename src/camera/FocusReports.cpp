// What the GPIO daemon reports. A move of the filter leaves the focus unverified: the flag AF_ICR_FLG stands, with its
// date, from the announcement to the end of the run that corrects the focus. A power cut in between finds it standing.

#include "camera/Focus.h"
#include "camera/OutBlackWorker.h"
#include "config/Config.h"
#include "request/Log.h"

namespace focus = dsp::focus;

namespace Camera {
namespace {

constexpr auto kFlag = cam_focus_row::AF_ICR_FLG;

int32_t raiseFlag(const std::string& filter) {
  TMX_LOG(LOG_DEBUG, " set flag blackout %s ", filter.c_str());
  CUserConfig::getInstance()->set(kFlag, "1");
  if (saveFocus({kFlag}) < 0) return -1;
  const bool isDated = OutBlackWorker().SaveDateTmpFile() == 1;
  TMX_LOG(LOG_DEBUG, "%s", isDated ? " saved tmp file " : " Not saved tmp file");
  return 0;
}

int32_t clearFlag() {
  CUserConfig::getInstance()->set(kFlag, "0");
  if (saveFocus({kFlag}) < 0) return -1;
  const bool isGone = OutBlackWorker().DeleteTmpFile() == 1;
  TMX_LOG(LOG_DEBUG, "%s", isGone ? " was able to delete TmpFile" : " No exist or Not delete outblack tmp file");
  return 0;
}

/** Whether the lens moves, so that what the filter does has no consequences. */
bool isLensMoving(const Request& request) {
  if (!cameraDsp().isFocusAdjusting()) return false;
  TMX_LOG(LOG_DEBUG, " irc_status TODO[%s]", request.value.c_str());
  return true;
}

int32_t saveAllRows() {
  TMX_LOG(LOG_DEBUG, " start to save some focusData ");
  using namespace cam_focus_row;
  return saveFocus({FOCUS_FACTORY_POS, FOCUS_POS, FOCUS_DIR, FOCUS_IR, NIGHTFOCUS_OFFSET, AF_ICR_FLG, OP_AF_FLG,
                    MANUAL_AF_FLG, NIGHTOFFSET_FLG, BAF_POS_INIT_FLG});
}

/** Whether the run that has ended was none of the automatic ones. */
bool wasCorrection() {
  int32_t kind = 0;
  return gpio::ask(GpioCommand::RunKind, kind) == 0 && kind == 0;
}

}  // namespace

int32_t CFocus::CGpiofrom::checkFilter(Request& request) {
  return focus::kFilters.find(request.value) ? 0 : -status::kInvalidRange;
}

int32_t CFocus::CGpiofrom::CCheckStatus::act(Request& request) {
  if (!CameraDSP::hasNightFocusOffset()) {
    // Day and night have the same focus: no run will follow.
    TMX_LOG(LOG_DEBUG, " night offset TODO[%s]", request.value.c_str());
    cameraDsp().enterFocusState(focus::kStop);
    return 0;
  }
  if (isLensMoving(request)) return 0;
  if (!isSelecting()) {
    TMX_LOG(LOG_DEBUG, "afadjust mode is not select and sendflag clear(%ld)", static_cast<long>(m_secondStep));
  } else if (raiseFlag(request.value) < 0) {
    return -status::kInternalError;
  }
  return status::kAccepted;
}

int32_t CFocus::CGpiofrom::CIcrStatus::act(Request& request) {
  if (isLensMoving(request)) return 0;
  const std::string before = cameraDsp().getStoredFilter();
  TMX_LOG(LOG_DEBUG, " irtype[current(%s):new(%s)]", before.c_str(), request.value.c_str());
  const bool isSame = before == request.value;
  if (isSame) {
    TMX_LOG(LOG_DEBUG, " start to save 0 to icr_flg ");
    if (!isSelecting() || CUserConfig::getInstance()->get(kFlag) != "1") {
      TMX_LOG(LOG_DEBUG, "af adjust mode is select");
    } else if (clearFlag() < 0) {
      return -status::kInternalError;
    }
  }
  TMX_LOG(LOG_DEBUG, " ir type set  (%s) ", request.value.c_str());
  const int32_t result = cameraDsp().correctForFilter(request.value);
  return result == dsp::kDone && isSame ? status::kAccepted : result;
}

int32_t CFocus::CGpiofrom::CStatus::act(Request& request) {
  CameraDSP& dsp = cameraDsp();
  if (const int32_t result = dsp.setFocusStateAf(request.value); result < 0) return result;
  if (dsp.isFocusAdjusting()) return 0;
  TMX_LOG(LOG_DEBUG, " now state(%s) ", request.value.c_str());
  if (saveAllRows() < 0) return -status::kInternalError;
  if (wasCorrection() && isSelecting() && clearFlag() < 0) return -status::kInternalError;
  if (!dsp.isAFadjustmode(focus::kSelect) || !m_secondStep) return status::kAccepted;

  m_secondStep = false;
  TMX_LOG(LOG_DEBUG, " adjust is not select:second flag release (%ld) ", static_cast<long>(m_secondStep));
  if (!dsp.releaseAFadjustmode()) return -status::kInternalError;
  const int32_t result = dsp.setFocusStateAf("stop");
  return result < 0 ? result : status::kAccepted;
}

}  // namespace Camera
