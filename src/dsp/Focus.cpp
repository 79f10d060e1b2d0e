#include <algorithm>
#include <string>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/FocusTables.h"
#include "request/Log.h"
#include "service/Gpio.h"
#include "service/Numbers.h"

namespace focus = dsp::focus;
namespace frame = dsp::frame;

namespace {

std::string stored(Row row) { return CUserConfig::getInstance()->get(row); }

int32_t nightOffset() { return parseNumber(stored(cam_focus_row::NIGHTFOCUS_OFFSET)).value_or(0); }

void keep(Row row, std::string_view text) { CUserConfig::getInstance()->set(row, std::string(text)); }

}  // namespace

std::string CameraDSP::getFocusStateAf() const {
  std::string text(focus::kStates.text(m_focusState));
  TMX_LOG(LOG_DEBUG, "get statusAF(%s:%ld) ", text.c_str(), long{m_focusState});
  return text;
}

/** The state is set before the fields are refreshed: while the lens moves, their setters refuse. */
int32_t CameraDSP::setFocusStateAf(const std::string& text) {
  auto state = focus::kStates.find(text);
  if (!state) state = focus::kReportedNumbers.find(text);
  if (!state) return dsp::kNotUnderstood;
  TMX_LOG(LOG_DEBUG, " set gpiostatus(%s:%ld)", text.c_str(), long{*state});
  m_focusState = *state;
  const bool hasEnded = *state >= focus::kStop && *state <= focus::kTimeoutError;
  return hasEnded ? m_refreshFocus() : dsp::kDone;
}

/** Asks the daemon where a run has left the lens and the filter. */
int32_t CameraDSP::m_refreshFocus() {
  TMX_LOG(LOG_DEBUG, " set to dspworker :mode(%ld)", long{m_focusState});
  int32_t position = 0;
  int32_t direction = 0;
  if (gpio::ask(GpioCommand::FocusPosition, position) < 0) return dsp::kSendFailed;
  if (const int32_t result = setFocusCurrentPos(position); result < 0) return result;
  if (getFocusDirection(direction) < 0) return dsp::kSendFailed;
  if (const int32_t result = setFocusDirection(direction); result < 0) return result;
  const int32_t filter = getCurrentDspIcr(false);
  return filter < 0 ? dsp::kSendFailed : setFocusIrtype(filter, true);
}

int32_t CameraDSP::getFocusDirection(int32_t& direction) const {
  return gpio::ask(GpioCommand::FocusDirection, direction);
}

int32_t CameraDSP::getCurrentDspIcr(bool isRecorded) {
  int32_t filter = -1;
  if (gpio::ask(GpioCommand::Filter, filter) < 0) return -1;
  if (filter != focus::kBlackWhite && filter != focus::kColor) return -1;
  if (isRecorded) m_filterBefore = filter;
  return filter;
}

int32_t CameraDSP::m_setFocusField(dsp::Field field, int32_t value, Row row, std::string_view text, bool sendflag) {
  m_frames.set(field, value);
  const int32_t result = m_send(field.address, sendflag);
  if (result == dsp::kDone) keep(row, text);
  return result;
}

bool CameraDSP::m_isFocusMoving() const {
  if (m_focusState != focus::kAdjusting) return false;
  TMX_LOG(LOG_ERR, "focus condition error(%ld)", long{m_focusState});
  return true;
}

int32_t CameraDSP::setFocusDirection(int32_t direction) {
  if (m_isFocusMoving()) return dsp::kRefused;
  if (direction != focus::kNear && direction != focus::kFar) return dsp::kOutOfRange;
  const char* text = direction == focus::kNear ? "near" : "far";
  return m_setFocusField(frame::kFocusDirection, direction, cam_focus_row::FOCUS_DIR, text, true);
}

int32_t CameraDSP::setFocusIrtype(int32_t filter, bool sendflag) {
  if (m_isFocusMoving()) return dsp::kRefused;
  if (filter != focus::kBlackWhite && filter != focus::kColor) return dsp::kOutOfRange;
  const std::string_view text = focus::kFilters.text(filter);
  return m_setFocusField(frame::kFocusFilter, filter, cam_focus_row::FOCUS_IR, text, sendflag);
}

int32_t CameraDSP::setFocusCurrentPos(int32_t position) {
  if (m_isFocusMoving()) return dsp::kRefused;
  const std::string text = std::to_string(position);
  return m_setFocusField(frame::kFocusPosition, position, cam_focus_row::FOCUS_POS, text, true);
}

int32_t CameraDSP::setFocusFactoryPos(int32_t position) {
  if (m_focusState == focus::kAdjusting) {
    TMX_LOG(LOG_ERR, " failed to unmach focus.status");
    return dsp::kRefused;
  }
  const std::string text = std::to_string(position);
  return m_setFocusField(frame::kFocusFactoryPosition, position, cam_focus_row::FOCUS_FACTORY_POS, text, true);
}

int32_t CameraDSP::setFocusBlackoutStatus(bool flag, bool sendflag) {
  m_frames.set(frame::kFocusBlackout, flag);
  const dsp::Frame& f = m_frames.at(frame::kFocusBlackout.address);
  TMX_LOG(LOG_DEBUG, "send 84h[%x:%x:%x:%x:%x:%x:%x]", f[1], f[2], f[3], f[4], f[5], f[6], f[7]);
  return m_setFocusField(frame::kFocusBlackout, flag, cam_focus_row::AF_ICR_FLG, flag ? "1" : "0", sendflag);
}

std::string CameraDSP::getStoredFilter() const {
  const int32_t filter = focus::kStoredFilters.find(stored(cam_focus_row::FOCUS_IR)).value_or(focus::kColor);
  return std::string(focus::kFilters.text(filter));
}

int32_t CameraDSP::correctForFilter(const std::string& text) {
  const auto filter = focus::kFilters.find(text);
  if (!filter) return dsp::kNotUnderstood;
  constexpr auto kCommand = GpioCommand::FilterRun;
  TMX_LOG(LOG_DEBUG, " set ir(%s:%ld) formGpio", text.c_str(), long{*filter});
  TMX_LOG(LOG_DEBUG, " send gpio irstart[%ld:type(%s:%ld)]", static_cast<long>(kCommand), text.c_str(), long{*filter});
  if (gpio::tell(kCommand) < 0) {
    TMX_LOG(LOG_ERR, "gpid send error(gpio:%ld)", static_cast<long>(kCommand));
    return dsp::kSendFailed;
  }
  m_focusState = focus::kAdjusting;
  keep(cam_focus_row::FOCUS_IR, text);
  return dsp::kDone;
}

/** The state is looked at before the range: a lens that moves takes no step, however large. */
int32_t CameraDSP::m_checkFocusStep(int32_t value, int32_t low, int32_t high) const {
  if (m_focusState == focus::kAdjusting || m_focusState == focus::kInitialize) {
    TMX_LOG(LOG_ERR, " status error :%ld", long{m_focusState});
    return dsp::kRefused;
  }
  return value < low || value > high ? dsp::kOutOfRange : dsp::kDone;
}

int32_t CameraDSP::stepFocus(int32_t step) {
  if (const int32_t refused = m_checkFocusStep(step, -focus::kLargestStep, focus::kLargestStep); refused < 0) {
    return refused;
  }
  TMX_LOG(LOG_DEBUG, "set manual(%lx,%lx,%lx,%lx)", static_cast<unsigned long>(GpioCommand::FocusStep),
          static_cast<unsigned long>(static_cast<uint32_t>(step)), 0UL, 0UL);
  return m_runFocus(GpioCommand::FocusStep, step);
}

int32_t CameraDSP::setNightFocus(int32_t offset) {
  if (const int32_t refused = m_checkFocusStep(offset, 0, focus::kLargestNightOffset); refused < 0) return refused;
  TMX_LOG(LOG_DEBUG, "set night_afir(%lx,%lx,%lx,%lx)", static_cast<unsigned long>(GpioCommand::NightOffset),
          static_cast<unsigned long>(offset), 0UL, 0UL);
  const int32_t result = m_runFocus(GpioCommand::NightOffset, offset);
  if (result == dsp::kDone) keep(cam_focus_row::NIGHTFOCUS_OFFSET, std::to_string(offset));
  return result;
}

int32_t CameraDSP::setFocusOpauto(int32_t run) {
  const int32_t result = m_runFocus(GpioCommand::FocusAuto, run);
  if (result < 0) TMX_LOG(LOG_ERR, "gpio send error %m");
  return result;
}

int32_t CameraDSP::setFocusFactoryInitialize() {
  return m_isFocusMoving() ? dsp::kRefused : m_runFocus(GpioCommand::FactoryPosition, 0);
}

/** Starts a run: from here on the lens moves until the daemon reports. */
int32_t CameraDSP::m_runFocus(GpioCommand command, int32_t argument) {
  if (gpio::tell(command, argument) < 0) return dsp::kSendFailed;
  m_focusState = focus::kAdjusting;
  return dsp::kDone;
}

bool CameraDSP::hasNightFocusOffset() { return nightOffset() != 0; }

bool CameraDSP::isBlackoutFlagged() {
  for (int32_t row = focus::kFirstFlag; row <= focus::kLastFlag; ++row) {
    if (stored({Family::CamFocus, row}) != "0") return true;
  }
  return false;
}

int32_t CameraDSP::loadFocusData() {
  const auto number = [](Row row) { return parseNumber(stored(row)).value_or(0); };
  const std::string direction = stored(cam_focus_row::FOCUS_DIR);
  const std::string filter = stored(cam_focus_row::FOCUS_IR);
  m_frames.set(frame::kFocusDirection, focus::kStoredDirections.find(direction).value_or(focus::kFar));
  m_frames.set(frame::kFocusFilter, focus::kStoredFilters.find(filter).value_or(focus::kColor));
  m_frames.set(frame::kFocusPosition, number(cam_focus_row::FOCUS_POS));
  m_frames.set(frame::kFocusFactoryPosition, number(cam_focus_row::FOCUS_FACTORY_POS));
  const int32_t result = setFocusBlackoutStatus(isBlackoutFlagged(), true);
  return std::min(result, setFocusNightOffsetReload());
}

int32_t CameraDSP::setFocusNightOffsetReload() {
  const int32_t offset = std::clamp(nightOffset(), 0, focus::kLargestNightOffset);
  m_frames.set(frame::kNightFocusOffset, offset);
  TMX_LOG(LOG_DEBUG, " send nightfocusoffset[ %d ] ", offset);
  return m_send(frame::kNightFocusOffset.address, true);
}
