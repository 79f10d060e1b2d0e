#include "dsp/DetectionSet.h"

#include <cctype>
#include <initializer_list>
#include <utility>

#include "config/Config.h"
#include "config/Rows.h"
#include "encoder/Encoder.h"
#include "request/Log.h"
#include "request/StatusCode.h"
#include "service/Numbers.h"

namespace {

constexpr int32_t kFailed = -1;
constexpr int32_t kBadArea = -2;

std::string live(int32_t row) { return CUserConfig::getInstance()->getCameraConfig(row); }

int32_t liveNumber(int32_t row) { return parseNumber(live(row)).value_or(0); }

bool isDetectionRow(int32_t row) { return row >= camera_row::DETECT_STATUS && row <= camera_row::TAMP_DETECT_TEMPO; }

bool isStatus(int32_t status) {
  if (status == 0 || status == 1) return true;
  TMX_LOG(LOG_ERR, "param failed(%ld) ", static_cast<long>(status));
  return false;
}

const char* statusWord(int32_t status) { return status == 1 ? "on" : "off"; }

int32_t firstFailure(std::initializer_list<int32_t> results) {
  for (const int32_t result : results) {
    if (result < 0) return result;
  }
  return 0;
}

}  // namespace

DetectionSet::DetectionSet(ParamPitcherDetection daemon) : m_daemon(std::move(daemon)) {}

int32_t DetectionSet::sendAndKeep(Kind kind, const std::string& text, int32_t row) const {
  const int32_t result = m_daemon.putString(static_cast<int32_t>(kind), text);
  if (result < 0) return result;
  return setByRow(row, text);
}

int32_t DetectionSet::setStatus(int32_t status) const {
  TMX_LOG(LOG_DEBUG, "set status (%ld) ", static_cast<long>(status));
  if (!isStatus(status)) return kFailed;
  TMX_LOG(LOG_DEBUG, "set status (%s) ", statusWord(status));
  const int32_t result = sendAndKeep(Kind::Status, statusWord(status), camera_row::DETECT_STATUS);
  if (result < 0) TMX_LOG(LOG_ERR, "set status failed (%ld) ", static_cast<long>(result));
  return result;
}

int32_t DetectionSet::reportMotion() const {
  const int32_t result = m_daemon.putString(static_cast<int32_t>(Kind::Status), statusWord(1));
  if (result < 0) TMX_LOG(LOG_ERR, "set status failed (%ld) ", static_cast<long>(result));
  return result;
}

int32_t DetectionSet::setLevel(int32_t level) const {
  TMX_LOG(LOG_DEBUG, "set mot adjlev(%ld) ", static_cast<long>(level));
  const int32_t result = sendAndKeep(Kind::Level, std::to_string(level), camera_row::DETECT_LEVEL);
  if (result < 0) TMX_LOG(LOG_ERR, "send failed (%ld) ", static_cast<long>(result));
  return result;
}

int32_t DetectionSet::setArea(const std::string& area) const {
  // One good character vouches for all behind it, so only the first one can be wrong.
  const bool isArea = !area.empty() && std::isxdigit(static_cast<unsigned char>(area.front())) != 0;
  const int32_t result = isArea ? sendAndKeep(Kind::Area, area, camera_row::DETECT_AREA) : kBadArea;
  if (result < 0) TMX_LOG(LOG_ERR, "set area failed  (%ld) ", static_cast<long>(result));
  return result;
}

int32_t DetectionSet::setStatusTamp(int32_t status) const {
  if (!isStatus(status)) return kFailed;
  const int32_t result = sendAndKeep(Kind::StatusTamp, statusWord(status), camera_row::TAMP_DETECT_STATUS);
  if (result < 0) TMX_LOG(LOG_ERR, "set status failed (%ld) ", static_cast<long>(result));
  return result;
}

int32_t DetectionSet::setLevelTamp(int32_t level) const {
  const int32_t result = sendAndKeep(Kind::LevelTamp, std::to_string(level), camera_row::TAMP_DETECT_LEVEL);
  if (result < 0) TMX_LOG(LOG_ERR, " set level failed (%ld) ", static_cast<long>(result));
  return result;
}

int32_t DetectionSet::setTemporalTamp(int32_t seconds) const {
  const std::string text = std::to_string(seconds);
  const int32_t result = sendAndKeep(Kind::TemporalTamp, text, camera_row::TAMP_DETECT_TEMPO);
  if (result < 0) TMX_LOG(LOG_ERR, "set temporal failed (%ld) ", static_cast<long>(result));
  return result;
}

int32_t DetectionSet::sendPicture(Kind kind, const std::string& text, bool sendflag) const {
  if (!sendflag) return 0;
  const auto number = static_cast<int32_t>(kind);
  const int32_t result = m_daemon.putString(number, text);
  if (result >= 0) {
    TMX_LOG(LOG_DEBUG, " send ok[ %lx: %s ]", static_cast<unsigned long>(number), text.c_str());
    return 0;
  }
  if (kind == Kind::BlcAreaTamp) {
    writeLog(LOG_ERR, "send failed to detectd[%lx] ", static_cast<unsigned long>(number));
  } else {
    TMX_LOG(LOG_ERR, "send failed to detectd[%lx] ", static_cast<unsigned long>(number));
  }
  return result;
}

int32_t DetectionSet::setAspectTamp(int32_t aspect, bool sendflag) const {
  if (!sendflag) return 0;
  if (aspect != Encoder::kAspect16to9 && aspect != Encoder::kAspect4to3) return -status::kInvalidRange;
  const char* text = aspect == Encoder::kAspect16to9 ? "16:9" : "4:3";
  const int32_t result = sendPicture(Kind::AspectTamp, text, sendflag);
  return result < 0 ? result : status::kOk;
}

int32_t DetectionSet::setAgcmodeTamp(const std::string& brightness, bool sendflag) const {
  return sendPicture(Kind::AgcmodeTamp, brightness, sendflag);
}

int32_t DetectionSet::setBlctypeTamp(const std::string& type, bool sendflag) const {
  return sendPicture(Kind::BlctypeTamp, type, sendflag);
}

int32_t DetectionSet::setSenseUpLimitTamp(const std::string& limit, bool sendflag) const {
  return sendPicture(Kind::SenseUpLimitTamp, limit, sendflag);
}

int32_t DetectionSet::setAutoExposurereferenceTamp(const std::string& reference, bool sendflag) const {
  return sendPicture(Kind::AutoExposurereferenceTamp, reference, sendflag);
}

int32_t DetectionSet::setBlcAreaTamp(const std::string& area, bool sendflag) const {
  return sendPicture(Kind::BlcAreaTamp, area, sendflag);
}

int32_t DetectionSet::getStatus() { return live(camera_row::DETECT_STATUS) == "on" ? 1 : 0; }
int32_t DetectionSet::getStatusTamp() { return live(camera_row::TAMP_DETECT_STATUS) == "on" ? 1 : 0; }
int32_t DetectionSet::getLevel() { return liveNumber(camera_row::DETECT_LEVEL); }
int32_t DetectionSet::getLevelTamp() { return liveNumber(camera_row::TAMP_DETECT_LEVEL); }
int32_t DetectionSet::getTemporalTamp() { return liveNumber(camera_row::TAMP_DETECT_TEMPO); }
std::string DetectionSet::getArea() { return live(camera_row::DETECT_AREA); }

std::string DetectionSet::getByRow(int32_t row) { return isDetectionRow(row) ? live(row) : std::string(); }

int32_t DetectionSet::setByRow(int32_t row, const std::string& text) {
  return isDetectionRow(row) ? CUserConfig::getInstance()->setCameraConfig(row, text) : kFailed;
}

int32_t DetectionSet::motionResend() const {
  return firstFailure({setArea(getArea()), setLevel(getLevel()), setStatus(getStatus())});
}

int32_t DetectionSet::tamperResend() const {
  return firstFailure({
      setLevelTamp(getLevelTamp()),
      setTemporalTamp(getTemporalTamp()),
      setStatusTamp(getStatusTamp()),
      setAspectTamp(Encoder::getAspectRatioStatus(), true),
      setAgcmodeTamp(live(camera_row::BRIGHTNESS), true),
      setBlctypeTamp(live(camera_row::BLC), true),
      setSenseUpLimitTamp(live(camera_row::SENSEUP_LIMIT), true),
      setAutoExposurereferenceTamp(live(camera_row::AUTO_EXPOSURE_REFERENCE), true),
  });
}
