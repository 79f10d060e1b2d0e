#include "devices/VideoOutput.h"

#include <utility>

#include "config/Config.h"
#include "encode/AnalogOutput.h"
#include "platform/zr_com.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

void CVideoApiBase::m_saveVideoConfig() {
  Config& config = *Config::getInstance();
  const std::string output = CUserConfig::getInstance()->getVideoConfig(video_row::VIDEO_OUTPUT);
  if (config.setVideoConfig(video_row::VIDEO_OUTPUT, output) < 0) {
    TMX_LOG(LOG_ERR, "VideoOutput: Cannot be set userdata");
  }
  if (config.saveVideoConfig() < 0) TMX_LOG(LOG_ERR, "Audio: Cannot be write userdata");
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
  text = isAnalogOutputPossible() ? Config::getInstance()->getVideoConfig(video_row::VIDEO_OUTPUT) : "off";
  return 0;
}

int32_t COutput::CStatus::act(Request& request) {
  if (request.value == "on" && !isAnalogOutputPossible()) return -status::kPreconditionFailed;
  CUserConfig::getInstance()->setVideoConfig(video_row::VIDEO_OUTPUT, request.value);
  if (CTmxdUtility::setSdkAnalogoutMode(request.value) < 0) return -status::kInternalError;
  if (request.value != "colorbar") {
    m_saveVideoConfig();
    if (Config::getInstance()->saveVideoConfig() < 0) {
      TMX_LOG(LOG_ERR, "Audio: Cannot be write userdata");
      return -status::kInternalError;
    }
  }
  TMX_LOG(LOG_DEBUG, " set ok ");
  return 0;
}

COutput::CVideoSignal::CVideoSignal(std::string layerName, std::string attribute)
    : Leaf(std::move(layerName), std::move(attribute)), m_signal(signalOfSwitch()) {}

int32_t COutput::CVideoSignal::fetch(const Request& /*request*/, std::string& text) const {
  text = m_signal;
  return 0;
}

int32_t COutput::CVideoSignal::act(Request& request) {
  m_signal = request.value;
  return zr_set_video_analog_out(request.number) < 0 ? -status::kInternalError : 0;
}

}  // namespace Video
