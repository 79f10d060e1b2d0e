#include <algorithm>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "request/Log.h"
#include "service/DefectDaemon.h"
#include "service/Numbers.h"

namespace frame = dsp::frame;

namespace {

/** Modes without a procedure know step 0 alone. */
enum Mode : uint32_t {
  kNoProcedure = 0,
  kDefects = 1,
  kWhiteBalance = 2,
  kLastMode = 4,  ///< entered from mode 0 alone; leaving it closes the iris
};

/** The steps of the search for defects. */
enum DefectStep : uint32_t { kBegin = 0, kPrepare = 1, kPrepared = 2, kSearch = 3, kFound = 4 };

constexpr uint32_t kLastStep = 6;
constexpr uint32_t kFinished = 1;
constexpr int32_t kFailed = 255;

DefectDaemon defectDaemon() { return DefectDaemon(DefectDaemon::Search::StaticDefects); }

/** A point of the white balance: the step that measures it (the next one stands for done), and where it is kept. */
struct Point {
  uint32_t step;
  int32_t frameByte;
  int32_t redRow;
  int32_t blueRow;
};
constexpr Point kPoints[] = {
    {1, 2, camdsp_row::PREWBNORMR, camdsp_row::PREWBNORMB},
    {3, 3, camdsp_row::PREWBHIGHR, camdsp_row::PREWBHIGHB},
    {5, 1, camdsp_row::PREWBLOWR, camdsp_row::PREWBLOWB},
};

const Point* pointOf(uint32_t step) {
  const auto* point = std::ranges::find(kPoints, step, &Point::step);
  return point == std::end(kPoints) ? nullptr : point;
}

}  // namespace

int32_t CameraDSP::setAdjustmode(uint32_t mode) {
  if (mode > kLastMode) return dsp::kOutOfRange;
  if (mode == kLastMode && m_adjustMode != kNoProcedure) return dsp::kBadArgument;
  if (mode == kNoProcedure && m_adjustMode == kLastMode) {
    m_frames.set(frame::kIrisMode, 0);
    if (m_send(frame::kIrisMode.address, true) < 0) return dsp::kSendFailed;
  }
  if (mode == kNoProcedure) m_subadjustState = 0;
  m_adjustMode = mode;
  return dsp::kDone;
}

int32_t CameraDSP::setSubadjust(uint32_t step) {
  if (m_adjustMode == kDefects) return m_setDefectSubadjust(step);
  if (m_adjustMode == kWhiteBalance) return setWhiteBalanceSubadjust(step);
  if (step != 0) return dsp::kBadArgument;
  m_subadjustState = step;
  return dsp::kDone;
}

int32_t CameraDSP::getSubadjust() {
  if (m_adjustMode == kDefects) return m_getDefectSubadjust();
  return m_adjustMode == kWhiteBalance ? getWhiteBalanceSubadjust() : dsp::kBadArgument;
}

/** The preparation is nobody's work: it is done as soon as it is asked for. */
int32_t CameraDSP::m_setDefectSubadjust(uint32_t step) {
  if (step == kPrepare && m_subadjustState == kBegin) {
    m_subadjustState = kPrepared;
    return dsp::kDone;
  }
  const bool isSearch = step == kSearch && m_subadjustState == kPrepared;
  if (!isSearch && step != kBegin) return dsp::kBadArgument;
  if (isSearch && defectDaemon().start() < 0) return dsp::kSendFailed;
  if (step == kBegin && m_subadjustState == kSearch && defectDaemon().stop() < 0) return dsp::kSendFailed;
  m_subadjustState = step;
  return dsp::kDone;
}

int32_t CameraDSP::m_getDefectSubadjust() {
  if (m_subadjustState != kSearch) return static_cast<int32_t>(m_subadjustState);
  const std::string status = defectDaemon().status();
  if (status == "adjusting") return kSearch;
  if (status != "completed") return kFailed;
  if (countDefects() < 0) return dsp::kBadArgument;
  m_subadjustState = kFound;
  return kFound;
}

int32_t CameraDSP::countDefects() {
  const auto count = defectDaemon().count();
  if (!count) return dsp::kBadArgument;
  CUserConfig::getInstance()->set(camdsp_row::SPOTNUM, std::to_string(*count));
  return *count;
}

/** A point may be measured when no other one is being measured. */
int32_t CameraDSP::setWhiteBalanceSubadjust(uint32_t step) {
  if (step > kLastStep) return dsp::kBadArgument;
  if (const Point* point = pointOf(step)) {
    const bool isOtherRunning = pointOf(m_subadjustState) != nullptr && m_subadjustState != step;
    if (isOtherRunning) return dsp::kBadArgument;
    m_frames.set(frame::kSubadjust, point->frameByte);
    if (m_send(frame::kSubadjust.address, true) < 0) return dsp::kSendFailed;
  }
  m_subadjustState = step;
  return dsp::kDone;
}

int32_t CameraDSP::getWhiteBalanceSubadjust() {
  TMX_LOG(LOG_DEBUG, "set sub[%lx]", static_cast<unsigned long>(m_subadjustState));
  dsp::Frame f = dsp::blankFrame(frame::kSubadjust.address);
  TMX_LOG(LOG_DEBUG, "SEND[%x:%x:%x:.]", f[0], f[1], f[2]);
  if (const int32_t result = recvFromCameradsp(f); result < 0) return result;
  TMX_LOG(LOG_DEBUG, "RCV[%x:%x:%x:.]", f[0], f[1], f[2]);

  const uint32_t state = dsp::take(f, frame::kSubadjust);
  const Point* point = pointOf(m_subadjustState);
  int32_t result = 0;
  if (state > kFinished) {
    TMX_LOG(LOG_DEBUG, "[ state is %ld ] ", static_cast<long>(state));
    if (point != nullptr && m_sendStoredPoint(point->redRow, point->blueRow) < 0) return dsp::kSendFailed;
    result = kFailed;
  } else if (state == kFinished) {
    if (point == nullptr) {
      TMX_LOG(LOG_ERR, "[ unknown current_subadjust is %ld ] ", static_cast<long>(m_subadjustState));
      return dsp::kBadArgument;
    }
    if (setAdjust(point->redRow, static_cast<int32_t>(dsp::take(f, frame::kSubadjustRed)), true) < 0 ||
        setAdjust(point->blueRow, static_cast<int32_t>(dsp::take(f, frame::kSubadjustBlue)), true) < 0) {
      return dsp::kSendFailed;
    }
    result = static_cast<int32_t>(++m_subadjustState);
  }
  TMX_LOG(LOG_DEBUG, " RTN status(%lx)", static_cast<unsigned long>(result));
  return result;
}

int32_t CameraDSP::m_sendStoredPoint(int32_t redRow, int32_t blueRow) {
  for (const int32_t row : {redRow, blueRow}) {
    const int32_t value = parseNumber(CUserConfig::getInstance()->getCamdspConfig(row)).value_or(0);
    if (setAdjust(row, value, true) < 0) return dsp::kSendFailed;
  }
  return dsp::kDone;
}
