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
  const bool tampering = isTampering(request.selectors);
  // After a save or a restore nothing waits to be saved: 200, not the 202 of a new value.
  switch (request.number) {
    case kSaved:
      return m_saveCameraConfig(true) < 0 ? -status::kInternalError : kAlreadyInForce;
    case kRestored:
      return restore(tampering) < 0 ? -status::kInternalError : kAlreadyInForce;
    default:
      return tampering ? detection.setStatusTamp(request.number) : detection.setStatus(request.number);
  }
}

/** Motion detection takes tamper detection back with it, but not the other way round. */
int32_t CDetection::CStatus::restore(bool isTampering) {
  const int32_t first = isTampering ? camera_row::TAMP_DETECT_STATUS : camera_row::DETECT_STATUS;
  for (int32_t row = first; row <= camera_row::TAMP_DETECT_TEMPO; ++row) {
    if (DetectionSet::setByRow(row, Config::getInstance()->getCameraConfig(row)) < 0) return -1;
  }
  const DetectionSet detection;
  const int32_t motion = isTampering ? 0 : detection.motionResend();
  const int32_t tamper = detection.tamperResend();
  return motion < 0 ? motion : tamper;
}

int32_t CDetection::CArea::checkLength(Request& request) {
  constexpr size_t kDigits = 34;
  return request.value.size() == kDigits ? 0 : -status::kNotUnderstood;
}

int32_t CDetection::CArea::fetch(const Request& /*request*/, std::string& text) {
  text = DetectionSet::getArea();
  return 0;
}

int32_t CDetection::CArea::act(Request& request) { return DetectionSet().setArea(request.value); }

int32_t CDetection::CLevel::fetch(const Request& request, std::string& text) {
  const bool tampering = isTampering(request.selectors);
  text = DetectionSet::getByRow(tampering ? camera_row::TAMP_DETECT_LEVEL : camera_row::DETECT_LEVEL);
  return 0;
}

int32_t CDetection::CLevel::act(Request& request) {
  const DetectionSet detection;
  return isTampering(request.selectors) ? detection.setLevelTamp(request.number) : detection.setLevel(request.number);
}

int32_t CDetection::CTemporal::fetch(const Request& /*request*/, std::string& text) {
  text = DetectionSet::getByRow(camera_row::TAMP_DETECT_TEMPO);
  return 0;
}

int32_t CDetection::CTemporal::act(Request& request) { return DetectionSet().setTemporalTamp(request.number); }

}  // namespace Camera
