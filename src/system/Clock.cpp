#include "system/Clock.h"

#include <cstdlib>

#include "config/Config.h"
#include "local/CommandOutput.h"
#include "local/CommonInterface.h"
#include "platform/zr_com.h"
#include "request/Log.h"
#include "system/DateTime.h"
#include "system/TimeZones.h"

namespace System {

namespace {

constexpr size_t kLineLength = 64;

/** Empty for a name that is no zone. */
std::string zoneFile(const std::string& name) {
  return time_zones::filePath(name, Config::getInstance()->get(system_row::DAYLIGHTSAVING) == "on");
}

}  // namespace

int32_t CDate::checkDate(Request& request) {
  DateTime time{};
  const int32_t parsed = DateTime::parse(request.value, time);
  return parsed < 0 ? parsed : time.check();
}

int32_t CDate::setClocks(Request& request) {
  DateTime time{};
  if (DateTime::parse(request.value, time) < 0) return -status::kNotUnderstood;
  dsp::Frame frame = clockFrame(time.moment());
  if (zr_set_va_data(frame.data()) < 0) return -status::kInternalError;
  const std::string command = "date " + request.value.substr(0, 12) + "." + request.value.substr(12);
  return system(command.c_str()) < 0 ? -status::kInternalError : 0;
}

int32_t CDate::fetch(const Request& /*request*/, std::string& text) {
  const auto lines = linesOf("date +%Y%m%d%H%M%S", kLineLength);
  if (!lines || lines->empty()) return -status::kInternalError;
  text = lines->back();
  return 0;
}

int32_t CTimezone::checkZone(Request& request) { return zoneFile(request.value).empty() ? -status::kNotUnderstood : 0; }

int32_t CTimezone::setZone(Request& request) {
  const std::string path = zoneFile(request.value);
  TMX_LOG(LOG_INFO, "change timezone[%s]", path.c_str());
  if (!CommonInterface::isFileExist(path)) return -status::kInternalError;
  // The copy gets its name when it is whole: nothing brings back a zone that a power cut left half.
  const std::string command =
      "cp " + path + " /mnt/sysinfo/localtime.new && " + "mv -f /mnt/sysinfo/localtime.new /mnt/sysinfo/localtime";
  if (system(command.c_str()) < 0 || zr_set_timezone(request.value.c_str()) < 0) return -status::kInternalError;
  return 0;
}

}  // namespace System
