// Brings the settings of the channels to the encoders and to what depends on them.

#include <string>

#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/CameraDspInstance.h"
#include "dsp/DetectionSet.h"
#include "dsp/Words.h"
#include "encode/Status.h"
#include "encoder/AnalogOutput.h"
#include "encoder/Encoder.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

namespace Encode {
namespace {

/** Above 15 frames per second noise reduction is off; the stored level waits for the rates to fall. */
uint32_t noiseReductionLevel() {
  if (Encoder::countHighRateChannels() > 0) {
    TMX_LOG(LOG_DEBUG, "change highrate -> off set ");
    return 0;
  }
  TMX_LOG(LOG_DEBUG, "change 15fps -> reload  set ");
  const std::string level = Config::getInstance()->getCameraConfig(camera_row::DNR_3D);
  return static_cast<uint32_t>(dsp::words::kNoiseReduction.find(level).value_or(0));
}

}  // namespace

/** A DSP that does not take the level does not hold the commit up. */
void CStatus::m_encodeHighRateConbinationSet() { cameraDsp().set3ddnr(noiseReductionLevel(), true); }

/** The output follows the encoders; nor does an output that fails hold the commit up. */
void CStatus::m_followAnalogOutput() {
  Config& config = *Config::getInstance();
  if (isAnalogOutputPossible()) {
    static_cast<void>(CTmxdUtility::setSdkAnalogoutMode(config.get(video_row::VIDEO_OUTPUT)));
    return;
  }
  static_cast<void>(CTmxdUtility::setSdkAnalogoutMode("off"));
  config.set(video_row::VIDEO_OUTPUT, "off");
  CUserConfig::getInstance()->set(video_row::VIDEO_OUTPUT, "off");
  config.save(Family::Video);
}

int32_t CStatus::m_encodeSetDataToSdkcontroler() {
  if (m_convertChannels() < 0) return -status::kInternalError;
  TMX_LOG(LOG_DEBUG, "aspectratio start");
  const int32_t aspect = Encoder::getAspectRatioStatus();
  if (Encoder::setAspectRatioStatus() < 0) {
    TMX_LOG(LOG_ERR, "aspectratio setting error(current %ld) ", static_cast<long>(aspect));
    return -status::kInternalError;
  }
  CameraDSP& dsp = cameraDsp();
  if (aspect != dsp.getAspect()) m_resetBlcArea(dsp);
  dsp.setAspect(aspect);
  const int32_t result = DetectionSet().setAspectTamp(aspect, true);
  if (result < 0) {
    TMX_LOG(LOG_ERR, " failed Aspectratio to detectd ");
  } else {
    TMX_LOG(LOG_DEBUG, "aspectratio end:ret(%ld)", static_cast<long>(result));
  }
  return result;
}

/** Every setting of every channel, up to the first that the encoder refuses. */
int32_t CStatus::m_convertChannels() {
  for (int32_t channel = 0; channel < kChannels; ++channel) {
    for (const auto convert : Encoder::kConversions) {
      if (convert(channel) < 0) return -1;
    }
  }
  return 0;
}

/** An area that was drawn in a picture of the other shape means nothing: it becomes the whole picture, everywhere. */
void CStatus::m_resetBlcArea(CameraDSP& dsp) {
  const std::string whole(34, 'F');
  dsp.setBLCArea(whole);
  static_cast<void>(DetectionSet().setBlcAreaTamp(whole, true));

  const std::string area = CUserConfig::getInstance()->getCameraConfig(camera_row::BLC_AREA);
  Config& config = *Config::getInstance();
  for (int32_t scene = 0; scene < familyInfo(Family::Scene).tables; ++scene) {
    config.setSceneConfig(scene, scene_row::BLC_AREA, area);
    config.saveSceneConfig(scene);
  }
  config.setCameraConfig(camera_row::BLC_AREA, area);
  config.saveCameraConfig();
}

}  // namespace Encode
