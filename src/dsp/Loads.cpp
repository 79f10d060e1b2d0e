#include "config/Config.h"
#include "dsp/CameraDSP.h"
#include "dsp/LoadResult.h"
#include "service/Numbers.h"

using dsp::LoadResult;

int32_t CameraDSP::loadScpServiceData(const dsp::ServiceLoad& load) {
  const struct {
    bool isWanted;
    const dsp::ServiceGroup& group;
  } steps[] = {
      {load.alc, dsp::service::kAlc},
      {load.iris, dsp::service::kIris},
      {load.atw, dsp::service::kAtw},
      {load.atwWide, dsp::service::kWide},
      {load.atwNarrow, dsp::service::kNarrow},
      {load.lumx, dsp::service::kLumx},
      {load.afForIr && m_model.dayNight, dsp::service::kAfForIr},
  };
  LoadResult result;
  for (const auto& step : steps) {
    if (step.isWanted) result += m_loadService(step.group);
  }
  return result.get();
}

/** The offset of the iris was in force until this start; what is stored of it stays. */
int32_t CameraDSP::loadDspAdjustData() {
  LoadResult result;
  for (const dsp::AdjustItem& item : dsp::kAdjustItems) {
    const int32_t value = parseNumber(CUserConfig::getInstance()->getCamdspConfig(item.row)).value_or(0);
    result += setAdjust(item.row, value, item.endsFrame);
  }
  result += setIrisMode("auto", false);
  m_frames.set(dsp::frame::kIrisOffset, 0);
  result += m_send(dsp::frame::kIrisOffset.address, true);
  return result.get();
}

/** Fields that share a frame are set without sending; the last of them puts the frame out. */
int32_t CameraDSP::loadSceneData(bool first) {
  LoadResult result;
  // Mode and speed of the shutter follow the text in the working copy, which comes from the file.
  if (first) store(camera_row::SHUTTER, m_text(camera_row::SHUTTER));
  result += m_loadExposure();
  result += m_loadColor();
  if (first) result += m_loadCameraWide();
  m_storeAgain(camera_row::STEALTH);
  m_storeAgain(camera_row::IDENTIFY);
  result += set3ddnr(static_cast<uint32_t>(getCurrentInt(camera_row::DNR_3D)), false);
  result += setLumxStatus(static_cast<uint32_t>(getCurrentInt(camera_row::LUMX)), true);
  result += setId(m_text(camera_row::COMMENT)) < 0 ? dsp::kSendFailed : dsp::kDone;
  return result.get();
}

int32_t CameraDSP::m_loadExposure() {
  LoadResult result;
  result += setAutoExposurePriority(static_cast<uint32_t>(getCurrentInt(camera_row::AUTO_EXPOSURE_PRIORITY)), false);
  result += setAGC(m_gainCode(), false);
  result += setShutterSpeed(m_shutterMode, m_shutterSpeed, false);
  result += setAutoExposureReference(m_number(camera_row::AUTO_EXPOSURE_REFERENCE), false);
  m_storeAgain(camera_row::ENHANCE_BAND);
  result += setImageGamma(m_text(camera_row::GAMMA), false);
  if (m_model.dayNight) {
    result += setTrueDaynight(static_cast<uint32_t>(getCurrentInt(camera_row::TRUE_DAY_NIGHT)), false);
  } else {
    result += setEasyDaynight(static_cast<uint32_t>(getCurrentInt(camera_row::EASY_DAY_NIGHT)), false);
  }
  result += setAvPkColor(m_number(camera_row::AVPK_COLOR), false);
  result += setAvPkBlackWhite(m_number(camera_row::AVPK_BW), false);
  result += setSenseuplimit(m_number(camera_row::SENSEUP_LIMIT), true);
  result += setBLC(m_text(camera_row::BLC), true);
  return result.get();
}

int32_t CameraDSP::m_loadColor() {
  LoadResult result;
  result += setLensType(m_text(camera_row::IRIS_LENSTYPE));
  m_storeAgain(camera_row::ATW_CONVERGENCE);
  result += setWhiteBalanceMode(static_cast<uint32_t>(getCurrentInt(camera_row::WHITE_BALANCE)));
  result += setSaturation(m_number(camera_row::COLOR), false);
  result += setPedestal(m_number(camera_row::PEDESTAL), false);
  result += setEnhance(m_number(camera_row::ENHANCE), false);
  return result.get();
}

int32_t CameraDSP::m_loadCameraWide() {
  LoadResult result;
  result += setModelType(m_model.dayNight, !m_model.backFocus, true);
  result += setPrivacymaskColor(m_text(camera_row::PRIVACY_MASK_COLOR), true);
  result += setPrivacymaskArea(m_text(camera_row::PRIVACY_MASK_AREA), true);
  result += setPrivacymaskStatus(static_cast<uint32_t>(getCurrentInt(camera_row::PRIVACY_MASK_STATUS)), true);
  result += setAutoExposureArea(m_aeArea, true);
  result += setWBArea({m_number(camera_row::WBAREAH1), m_number(camera_row::WBAREAV1), m_number(camera_row::WBAREAH2),
                       m_number(camera_row::WBAREAV2)},
                      true);
  return result.get();
}
