#include "camera/Defect.h"

#include "config/Config.h"

namespace Camera {
namespace {

std::string storedStatus() { return Config::getInstance()->get(camera_row::DEFECT_DETECT); }

}  // namespace

int32_t CDefectDetect::CStatic::isNotOff(const Selectors& /*selectors*/) {
  return storedStatus() == "off" ? -status::kPreconditionFailed : 0;
}

int32_t CDefectDetect::CStatic::isOn(const Selectors& /*selectors*/) {
  return storedStatus() == "on" ? 0 : -status::kPreconditionFailed;
}

int32_t CDefectDetect::CStatic::CAdjust::start(Request& /*request*/) {
  return DefectDaemon(Search::StaticDefects).start();
}

int32_t CDefectDetect::CStatic::CStatus::act(Request& /*request*/) {
  return CUserConfig::getInstance()->set(camera_row::DEFECT_DETECT, "on");
}

int32_t CFpn::CNum::fetch(const Request& /*request*/, std::string& text) {
  const auto count = DefectDaemon(Search::FixedPattern).count();
  if (!count) return -status::kInternalError;
  text = std::to_string(*count);
  return 0;
}

}  // namespace Camera
