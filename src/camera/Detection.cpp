#include "camera/Detection.h"

#include "config/Config.h"
#include "config/Rows.h"
#include "dsp/DetectionSet.h"
#include "request/StatusCode.h"

namespace Camera {

int32_t CDetection::onlyMotion(const Selectors& selectors) {
  return isTampering(selectors) ? -status::kCommandNotFound : 0;
}

int32_t CDetection::onlyTampering(const Selectors& selectors) {
  return isTampering(selectors) ? 0 : -status::kCommandNotFound;
}

int32_t CDetection::CStatus::refuseHighRate(const Selectors& selectors) {
  return !isTampering(selectors) && isHighRate() ? -status::kPreconditionFailed : 0;
}

int32_t CDetection::CStatus::fetch(const Request& request, std::string& text) {
  if (isTampering(request.selectors)) {
    text = DetectionSet::getByRow(camera_row::TAMP_DETECT_STATUS);
  } else {
    text = DetectionSet::getStatus() == 1 && !isHighRate() ? "on" : "off";
  }
  return 0;
}

int32_t CDetection::CStatus::act(Request& request) {
  const DetectionSet detection;
  return isTampering(request.selectors) ? detection.setStatusTamp(request.number) : detection.setStatus(request.number);
}

int32_t CDetection::CStatus::save(Request& /*request*/) {
  return m_saveCameraConfig(true) < 0 ? -status::kInternalError : 0;
}

/** Motion detection takes tamper detection back with it, but not the other way round. */
int32_t CDetection::CStatus::restore(Request& request) {
  const bool tampering = isTampering(request.selectors);
  const int32_t first = tampering ? camera_row::TAMP_DETECT_STATUS : camera_row::DETECT_STATUS;
  for (int32_t row = first; row <= camera_row::TAMP_DETECT_TEMPO; ++row) {
    if (DetectionSet::setByRow(row, Config::getInstance()->getCameraConfig(row)) < 0) return -status::kInternalError;
  }
  const DetectionSet detection;
  const int32_t motion = tampering ? 0 : detection.motionResend();
  const int32_t tamper = detection.tamperResend();
  return motion < 0 || tamper < 0 ? -status::kInternalError : 0;
}

int32_t CDetection::CLevel::act(Request& request) {
  const DetectionSet detection;
  return isTampering(request.selectors) ? detection.setLevelTamp(request.number) : detection.setLevel(request.number);
}

}  // namespace Camera
