#include "camera/DspAdjust.h"

#include <array>

#include "camera/Focus.h"
#include "config/Config.h"
#include "request/Log.h"

namespace Camera {

int32_t CDspadjust::CAe::CArea::fetch(const Request& /*request*/, std::string& text) {
  text = areaText(cameraDsp().getAutoExposureArea());
  return 0;
}

int32_t CDspadjust::CFocus::act(Request& request) {
  if (cameraDsp().isFocusAdjusting()) return -status::kPreconditionFailed;
  int32_t position = 0;
  const bool isPresent = request.value == "set";
  if (isPresent && gpio::ask(GpioCommand::FocusPosition, position) < 0) return -status::kInternalError;
  TMX_LOG(LOG_DEBUG, "cmd(%s):setpos(%ld)", request.value.c_str(), long{position});
  if (const int32_t result = cameraDsp().setFocusFactoryPos(position); result < 0) return result;
  TMX_LOG(LOG_DEBUG, " focus set to factory( %ld) ", long{position});
  return saveFocus({cam_focus_row::FOCUS_FACTORY_POS});
}

int32_t CDspadjust::CStatus::save(Request& /*request*/) {
  Config& config = *Config::getInstance();
  const CUserConfig& user = *CUserConfig::getInstance();
  for (int32_t row = 0; row < camdsp_row::kCount; ++row)
    config.setCamdspConfig(row, user.getCamdspConfig(row));
  if (config.save(Family::Camdsp) == Config::kDone) return 0;
  TMX_LOG(LOG_ERR, "Camdsp: Cannot be write userdata");
  return -status::kInternalError;
}

/** The points are saved with the rest. */
int32_t CDspadjust::CStatus::saveWhitePoint(Request& /*request*/) { return 0; }

}  // namespace Camera
