#include "camera/Focus.h"

#include <algorithm>
#include <span>

#include "camera/CountProgram.h"
#include "camera/OutBlackWorker.h"
#include "config/Config.h"
#include "request/Log.h"
#include "service/Numbers.h"

namespace focus = dsp::focus;

namespace Camera {

bool CFocus::m_secondStep = false;

bool CFocus::isSelecting() { return cameraDsp().isAFadjustmode(focus::kSelect) && !m_secondStep; }

int32_t saveFocus(std::initializer_list<Row> rows) {
  Config& config = *Config::getInstance();
  config.adopt(*CUserConfig::getInstance(), std::span(rows.begin(), rows.size()));
  if (config.save(Family::CamFocus) == Config::kDone) return 0;
  TMX_LOG(LOG_ERR, " CamFocus:Can not to save focus data to the focus_file");
  return -status::kInternalError;
}

int32_t CFocus::act(Request& request) {
  if (!cameraDsp().isAFadjustmode(focus::kDay)) return -status::kPreconditionFailed;
  return cameraDsp().setFocusOpauto(request.number);
}

int32_t CFocus::fetch(const Request& /*request*/, std::string& text) {
  constexpr Words kKinds{Word{"op_auto", 1}, Word{"op_auto_full", 5}, Word{"op_auto_full_forced", 6}};
  int32_t kind = 0;
  int32_t ended = 0;
  if (gpio::ask(GpioCommand::RunKind, kind) < 0 || gpio::ask(GpioCommand::RunEnded, ended) < 0) {
    return -status::kInternalError;
  }
  text = ended == 0 ? kKinds.text(kind) : std::string_view();
  if (text.empty()) text = "stop";
  return 0;
}

int32_t CFocus::CAdjustMode::beginAdjusting(const Selectors& /*selectors*/) {
  if (cameraDsp().isFocusAdjusting()) {
    TMX_LOG(LOG_ERR, "status forbiden(%ld)", long{focus::kAdjusting});
    return -status::kPreconditionFailed;
  }
  cameraDsp().enterFocusState(focus::kInitialize);
  return 0;
}

int32_t CFocus::CAdjustMode::act(Request& request) {
  CameraDSP& dsp = cameraDsp();
  const bool toSelect = request.number == focus::kSelect;
  if (toSelect && clearFilterFlag() < 0) return -status::kInternalError;
  if (isSelecting()) {
    const int32_t filter = dsp.getCurrentDspIcr(true);
    if (filter < 0) {
      TMX_LOG(LOG_ERR, "gpio comunication error");
      return -status::kInternalError;
    }
    TMX_LOG(LOG_DEBUG, " current mode(0:bw,1:color):%ld", long{filter});
    if (toSelect) {
      TMX_LOG(LOG_DEBUG, "selected same mode of select");
      return 0;
    }
    m_secondStep = true;
  }
  if (const int32_t result = dsp.setAFadjustmode(request.number); result < 0) return result;
  if (toSelect && m_secondStep) leaveFixedMode();
  return 0;
}

/** Where the filter is not back yet, the daemon's report comes to this. */
void CFocus::CAdjustMode::leaveFixedMode() {
  if (!cameraDsp().checkIcrStateCurrent()) {
    TMX_LOG(LOG_DEBUG, " not change this step(%ld)", static_cast<long>(m_secondStep));
    return;
  }
  m_secondStep = false;
  TMX_LOG(LOG_DEBUG, " forcely set false(%ld)", static_cast<long>(m_secondStep));
  static_cast<void>(cameraDsp().releaseAFadjustmode());
}

int32_t CFocus::CAdjustMode::clearFilterFlag() {
  CUserConfig& user = *CUserConfig::getInstance();
  if (user.get(cam_focus_row::AF_ICR_FLG) != "1") return 0;
  user.set(cam_focus_row::AF_ICR_FLG, "0");
  return saveFocus({cam_focus_row::AF_ICR_FLG});
}

int32_t CFocus::CFinefocus::act(Request& request) {
  if (!cameraDsp().isAFadjustmode(focus::kDay)) return -status::kPreconditionFailed;
  return cameraDsp().stepFocus(request.step != 0 ? request.step : request.number);
}

int32_t CFocus::CFinefocus::fetch(const Request& /*request*/, std::string& text) {
  if (!cameraDsp().isAFadjustmode(focus::kDay)) return -status::kPreconditionFailed;
  int32_t position = 0;
  if (gpio::ask(GpioCommand::FocusPosition, position) < 0) return -status::kInternalError;
  text = std::to_string(position);
  CUserConfig::getInstance()->set(cam_focus_row::FOCUS_POS, text);
  return 0;
}

int32_t CFocus::CNightfocus::act(Request& request) {
  if (!cameraDsp().isAFadjustmode(focus::kNight)) return -status::kPreconditionFailed;
  if (request.step == 0) return cameraDsp().setNightFocus(request.number);
  const int32_t offset = parseNumber(CUserConfig::getInstance()->get(cam_focus_row::NIGHTFOCUS_OFFSET)).value_or(0);
  return cameraDsp().setNightFocus(std::clamp(offset + request.step, 0, focus::kLargestNightOffset));
}

int32_t CFocus::CNightfocus::fetch(const Request& /*request*/, std::string& text) {
  if (!cameraDsp().isAFadjustmode(focus::kNight)) return -status::kPreconditionFailed;
  text = CUserConfig::getInstance()->get(cam_focus_row::NIGHTFOCUS_OFFSET);
  return 0;
}

int32_t CFocus::CAbfPos::act(Request& /*request*/) {
  if (!cameraDsp().isAFadjustmode(focus::kInitPos)) return -status::kPreconditionFailed;
  return cameraDsp().setFocusFactoryInitialize();
}

int32_t CFocus::CAssist::CStatus::act(Request& request) {
  if (!cameraDsp().isAFadjustmode(focus::kSelect)) return -status::kPreconditionFailed;
  return request.value == "on" ? start() : end();
}

int32_t CFocus::CAssist::CStatus::start() {
  if (gpio::tell(GpioCommand::FocusAssist, 1) < 0) return -status::kInternalError;
  const int32_t result = cameraDsp().setFocusAssist(true);
  if (count_program::start() < 0) TMX_LOG(LOG_ERR, "startCountd error");
  TMX_LOG(LOG_DEBUG, "-------- fucus assist on( %s) ", "on");
  return result;
}

int32_t CFocus::CAssist::CStatus::end() {
  const int32_t result = cameraDsp().setFocusAssist(false);
  if (count_program::stop() < 0) TMX_LOG(LOG_ERR, "stopCountd error");
  if (gpio::tell(GpioCommand::FocusAssist, 0) < 0) return -status::kInternalError;
  TMX_LOG(LOG_DEBUG, "-------- fucus assist off( %s) ", "off");
  return result;
}

int32_t CFocus::CAssist::CStatus::fetch(const Request& /*request*/, std::string& text) {
  text = cameraDsp().getFocusAssist() ? "on" : "off";
  return 0;
}

int32_t CFocus::CDate::CStatus::fetch(const Request& /*request*/, std::string& text) {
  text = OutBlackWorker().GetObSaveDateData();
  return 0;
}

}  // namespace Camera
