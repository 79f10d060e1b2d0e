#include "camera/Motion.h"
#include "camera/MotionNumbers.h"
#include "config/Config.h"
#include "request/Log.h"
#include "request/StatusCode.h"
#include "service/CTmxdUtility.h"
#include "service/Numbers.h"
#include "service/Sequencer.h"

namespace Camera {
namespace {

using namespace position_row;

constexpr Words kWords{"save", "initialize", "goto"};

std::string order(int32_t position, std::string_view word) {
  return "camera.position(" + std::to_string(position) + ").status=" + std::string(word);
}

/** Asks where the camera looks; 0, or -500 also for an answer that is no number. */
int32_t askNumber(std::string_view path, std::string& value) {
  if (sequencer::ask(path, value) < 0 || !parseFloat(value)) return -status::kInternalError;
  return 0;
}

std::string withinZoomRange(const std::string& factor) {
  const float number = parseFloat(factor).value_or(zoom_factor::kLeast);
  if (number < zoom_factor::kLeast) return "1.0";
  return number > zoom_factor::kMost ? "8.0" : factor;
}

/** One position as it is stored, by row. */
using Fields = std::array<std::string, position_row::kCount>;

constexpr ::Row kPositionRows[] = {POSITION_STATUS, POSITION_TITLE, POSITION_PAN, POSITION_TILT, POSITION_ZOOM};

int32_t positionOf(const Request& request) { return selectorNumber(request.selectors, 1, 0); }

Fields fieldsOf(int32_t position) {
  Fields fields;
  for (const ::Row row : kPositionRows)
    fields[static_cast<size_t>(row.number)] = CUserConfig::getInstance()->get(row, position);
  return fields;
}

void setFields(Config& image, int32_t position, const Fields& fields) {
  for (const ::Row row : kPositionRows)
    image.set(row, fields[static_cast<size_t>(row.number)], position);
}

/** Makes these the position's fields and saves them; the old ones stay after a failure. 0 or -500. */
int32_t change(int32_t position, const Fields& changed) {
  const Fields old = fieldsOf(position);
  setFields(*CUserConfig::getInstance(), position, changed);
  setFields(*Config::getInstance(), position, changed);
  if (Config::getInstance()->save(Family::Position, position) == Config::kDone) return 0;
  TMX_LOG(LOG_ERR, "Position: Cannot be write userdata");
  setFields(*CUserConfig::getInstance(), position, old);
  setFields(*Config::getInstance(), position, old);
  return -status::kInternalError;
}

int32_t save(int32_t position) {
  const std::string request = order(position, "save");
  if (sequencer::tell(request) < 0) return -status::kInternalError;
  Fields changed = fieldsOf(position);
  changed[POSITION_STATUS] = "registered";
  if (askNumber(kPan.path, changed[POSITION_PAN]) < 0) return -status::kInternalError;
  if (askNumber(kTilt.path, changed[POSITION_TILT]) < 0) return -status::kInternalError;
  if (askNumber(CMotion::CZoom::path, changed[POSITION_ZOOM]) < 0) return -status::kInternalError;
  changed[POSITION_ZOOM] = withinZoomRange(changed[POSITION_ZOOM]);
  if (sequencer::tell(request) < 0) return -status::kInternalError;
  return change(position, changed);
}

int32_t initialize(int32_t position) {
  if (sequencer::tell(order(position, "initialize")) < 0) return -status::kInternalError;
  if (position == 0) return change(position, {"registered", "Home", "0", "0", "1.0"});
  Fields changed = fieldsOf(position);
  changed[POSITION_STATUS] = "unregistered";
  changed[POSITION_TITLE] = "";
  return change(position, changed);
}

/** Whether the camera gets there is not asked. */
int32_t goTo(int32_t position) {
  if (fieldsOf(position)[POSITION_STATUS] != "registered") return 0;
  static_cast<void>(sequencer::tell(order(position, "goto")));
  return 0;
}

}  // namespace

int32_t CPosition::CStatus::checkWord(Request& request) {
  const auto word = kWords.find(CTmxdUtility::decodeValue(request.value, true));
  if (!word) return -status::kNotUnderstood;
  request.number = *word;
  return 0;
}

int32_t CPosition::CStatus::act(Request& request) {
  constexpr std::array kActions = {save, initialize, goTo};  // in the order of the words
  return kActions.at(static_cast<size_t>(request.number))(positionOf(request));
}

int32_t CPosition::CComment::act(Request& request) {
  Fields changed = fieldsOf(positionOf(request));
  changed[POSITION_TITLE] = request.value;
  return change(positionOf(request), changed);
}

}  // namespace Camera
