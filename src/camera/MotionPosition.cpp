#include "camera/Motion.h"
#include "camera/MotionNumbers.h"
#include "config/Config.h"
#include "request/Log.h"
#include "request/StatusCode.h"
#include "service/CTmxdUtility.h"

namespace Camera {
namespace {

using namespace position_row;

constexpr Words kWords{"save", "initialize", "goto"};

std::string order(int32_t position, std::string_view word) {
  return "camera.position(" + std::to_string(position) + ").status=" + std::string(word);
}

/** Asks where the camera looks; 0, or -500 also for an answer that is no number. */
int32_t askNumber(std::string_view path, std::string& value) {
  if (sequencer::ask(path, value) < 0 || !decimalNumber(value)) return -status::kInternalError;
  return 0;
}

std::string withinZoomRange(const std::string& factor) {
  const float number = decimalNumber(factor).value_or(zoom_factor::kLeast);
  if (number < zoom_factor::kLeast) return "1.0";
  return number > zoom_factor::kMost ? "8.0" : factor;
}

}  // namespace

CPosition::Fields CPosition::fields(int32_t position) {
  Fields fields;
  for (int32_t row = 0; row < kCount; ++row)
    fields[static_cast<size_t>(row)] = CUserConfig::getInstance()->getPositionConfig(position, row);
  return fields;
}

void CPosition::setFields(Config& image, int32_t position, const Fields& fields) {
  for (int32_t row = 0; row < kCount; ++row)
    image.setPositionConfig(position, row, fields[static_cast<size_t>(row)]);
}

int32_t CPosition::m_savePositionConfig(int32_t position) {
  if (position >= familyInfo(Family::Position).tables) return -1;
  Config& config = *Config::getInstance();
  setFields(config, position, fields(position));
  if (config.savePositionConfig(position) == Config::kDone) return 0;
  TMX_LOG(LOG_ERR, "Position: Cannot be write userdata");
  return -1;
}

int32_t CPosition::change(int32_t position, const Fields& changed) {
  const Fields old = fields(position);
  setFields(*CUserConfig::getInstance(), position, changed);
  if (m_savePositionConfig(position) == 0) return 0;
  setFields(*CUserConfig::getInstance(), position, old);
  setFields(*Config::getInstance(), position, old);
  return -status::kInternalError;
}

int32_t CPosition::CStatus::checkWord(Request& request) {
  const auto word = kWords.find(CTmxdUtility::decodeValue(request.value, true));
  if (!word) return -status::kNotUnderstood;
  request.number = *word;
  return 0;
}

int32_t CPosition::CStatus::act(Request& request) {
  constexpr std::array kActions = {save, initialize, goTo};  // in the order of the words
  return kActions.at(static_cast<size_t>(request.number))(number(request.selectors));
}

int32_t CPosition::CStatus::save(int32_t position) {
  const std::string request = order(position, "save");
  if (sequencer::tell(request) < 0) return -status::kInternalError;
  Fields changed = fields(position);
  changed[POSITION_STATUS] = "registered";
  if (askNumber(CMotion::CPan::path, changed[POSITION_PAN]) < 0) return -status::kInternalError;
  if (askNumber(CMotion::CTilt::path, changed[POSITION_TILT]) < 0) return -status::kInternalError;
  if (askNumber(CMotion::CZoom::path, changed[POSITION_ZOOM]) < 0) return -status::kInternalError;
  changed[POSITION_ZOOM] = withinZoomRange(changed[POSITION_ZOOM]);
  if (sequencer::tell(request) < 0) return -status::kInternalError;
  return change(position, changed);
}

int32_t CPosition::CStatus::initialize(int32_t position) {
  if (sequencer::tell(order(position, "initialize")) < 0) return -status::kInternalError;
  if (position == 0) return change(position, {"registered", "Home", "0", "0", "1.0"});
  Fields changed = fields(position);
  changed[POSITION_STATUS] = "unregistered";
  changed[POSITION_TITLE] = "";
  return change(position, changed);
}

/** Whether the camera gets there is not asked. */
int32_t CPosition::CStatus::goTo(int32_t position) {
  if (fields(position)[POSITION_STATUS] != "registered") return 0;
  static_cast<void>(sequencer::tell(order(position, "goto")));
  return 0;
}

int32_t CPosition::CComment::checkText(Request& request) {
  constexpr size_t kMostBytes = 32;
  request.value = CTmxdUtility::decodeValue(request.value, true);
  return request.value.size() > kMostBytes ? -status::kInvalidRange : 0;
}

int32_t CPosition::CComment::act(Request& request) {
  Fields changed = fields(number(request.selectors));
  changed[POSITION_TITLE] = request.value;
  return change(number(request.selectors), changed);
}

}  // namespace Camera
