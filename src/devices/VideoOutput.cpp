#include "devices/VideoOutput.h"

#include "config/Config.h"
#include "encoder/AnalogOutput.h"
#include "platform/zr_com.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

void CVideoApiBase::m_saveVideoConfig() {
  Config& config = *Config::getInstance();
  const std::string output = CUserConfig::getInstance()->get(video_row::VIDEO_OUTPUT);
  if (config.set(video_row::VIDEO_OUTPUT, output) < 0) {
    TMX_LOG(LOG_ERR, "VideoOutput: Cannot be set userdata");
  }
  if (config.save(Family::Video) < 0) TMX_LOG(LOG_ERR, "Audio: Cannot be write userdata");
}

namespace Video {
namespace {

const char* signalOfSwitch() {
  constexpr int kSwitch = 1;
  unsigned char value = 0;
  unsigned char other = 0;
  zr_get_gpio(kSwitch, &value, &other, 0);  // without an answer: ntsc
  return value != 0 ? "pal" : "ntsc";
}

}  // namespace

int32_t COutput::CStatus::fetch(const Request& /*request*/, std::string& text) {
  if (isAnalogOutputPossible()) return kShowStored;
  text = "off";
  return 0;
}

int32_t COutput::CStatus::act(Request& request) {
  if (request.value == "on" && !isAnalogOutputPossible()) return -status::kPreconditionFailed;
  CUserConfig::getInstance()->set(video_row::VIDEO_OUTPUT, request.value);
  if (CTmxdUtility::setSdkAnalogoutMode(request.value) < 0) return -status::kInternalError;
  if (request.value != "colorbar") {
    m_saveVideoConfig();
    if (Config::getInstance()->save(Family::Video) < 0) {
      TMX_LOG(LOG_ERR, "Audio: Cannot be write userdata");
      return -status::kInternalError;
    }
  }
  TMX_LOG(LOG_DEBUG, " set ok ");
  return 0;
}

COutput::CVideoSignal::CVideoSignal() { signal = signalOfSwitch(); }

int32_t COutput::CVideoSignal::act(Request& request) {
  signal = request.value;  // whatever the library makes of it
  return zr_set_video_analog_out(request.number) < 0 ? -status::kInternalError : 0;
}

}  // namespace Video
