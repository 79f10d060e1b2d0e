#include "managers/CCameraMan.h"

#include "camera/AdjustService.h"
#include "camera/Defect.h"
#include "camera/Detection.h"
#include "camera/DspAdjust.h"
#include "camera/Focus.h"
#include "camera/Identity.h"
#include "camera/Image.h"
#include "camera/Iris.h"
#include "camera/Masks.h"
#include "camera/Motion.h"
#include "camera/OutBlackWorker.h"
#include "camera/Register.h"
#include "camera/Scene.h"
#include "camera/SceneExposure.h"
#include "camera/SceneImage.h"
#include "camera/Status.h"
#include "config/Config.h"
#include "dsp/DetectionSet.h"
#include "encoder/Encoder.h"
#include "local/ModelFeature.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

void CCameraMan::build() {
  add<Camera::CStatus>("status", "-W-W--");
  add<Camera::CId>("id", "RWRWR-");
  add<Camera::CId>("comment", "RWRWR-");

  add<Camera::CDefectDetect>("defect_detect");
  add<Camera::CDefectDetect::CStatic>("defect_detect.static");
  add<Camera::CDefectDetect::CStatic::CAdjust>("defect_detect.static.adjust", "RWRWR-");
  add<Camera::CDefectDetect::CStatic::CStatus>("defect_detect.static.status", "RWRWR-");
  add<Camera::CDefectDetect::CStatic::CAdjustDetail>("defect_detect.static.adjust_detail", "R-R-R-");
  add<Camera::CDefectDetect::CDynamic>("defect_detect.dynamic");
  add<Camera::CDefectDetect::CDynamic::CStatus>("defect_detect.dynamic.status");

  add<Camera::CFpn>("fpn");
  add<Camera::CFpn::CAdjust>("fpn.adjust", "RWRWR-");
  add<Camera::CFpn::CAdjustDetail>("fpn.adjust_detail", "R-R-R-");
  add<Camera::CFpn::CNum>("fpn.num", "R-R-R-");

  add<Camera::CPrivateMask>("private_mask");
  add<Camera::CPrivateMask::CStatus>("private_mask.status", "RWRWR-");
  add<Camera::CPrivateMask::CColor>("private_mask.color", "RWRWR-");
  add<Camera::CPrivateMask::CArea>("private_mask.area", "RWRWR-");

  add<Camera::CDetection>("detection");
  add<Camera::CDetection::CStatus>("detection.status", "RWRWR-");
  add<Camera::CDetection::CArea>("detection.area", "RWRWR-");
  add<Camera::CDetection::CLevel>("detection.level", "RWRWR-");
  add<Camera::CDetection::CTemporal>("detection.temporal", "RWRWR-");
  add<Camera::CDetection::CAreaCount>("detection.area_count", "R-R-R-");

  add<Camera::CStealth>("stealth", "RWRWR-");
  add<Camera::CIdentify>("identify", "RWRWR-");

  add<Camera::CFocus>("focus", "RWRWR-");
  add<Camera::CFocus::CRunCounter>("focus.run_counter", "RWRWR-");
  add<Camera::CFocus::CAdjustMode>("focus.adjust_mode", "RWRWR-");
  add<Camera::CFocus::CProgress>("focus.progress", "R-R-R-");
  add<Camera::CFocus::CStatus>("focus.status", "R-R-R-");
  add<Camera::CFocus::CFinefocus>("focus.finefocus", "RWR-R-");
  add<Camera::CFocus::CNightfocus>("focus.nightfocus", "RWR-R-");
  add<Camera::CFocus::CAbfPos>("focus.abf_pos", "-W----");
  add<Camera::CFocus::CGpiofrom>("focus.gpiofrom");
  add<Camera::CFocus::CGpiofrom::CIcrStatus>("focus.gpiofrom.icr_status", "-W----");
  add<Camera::CFocus::CGpiofrom::CStatus>("focus.gpiofrom.status", "-W----");
  add<Camera::CFocus::CGpiofrom::CCheckStatus>("focus.gpiofrom.check_status", "-W----");
  add<Camera::CFocus::CDate>("focus.date");
  add<Camera::CFocus::CDate::CStatus>("focus.date.status", "R-----");
  add<Camera::CFocus::CAssist>("focus.assist");
  add<Camera::CFocus::CAssist::CStatus>("focus.assist.status", "RWRWR-");

  add<Camera::CFocus::CAssist>("focusassist");
  add<Camera::CFocus::CAssist::CStatus>("focusassist.status", "RWRWR-");

  add<Camera::CMotion>("motion");
  add<Camera::CMotion::CClickoncenter>("motion.clickoncenter", "-W-W--");
  add<Camera::CMotion::CPan>("motion.pan", "RWRWR-");
  add<Camera::CMotion::CPan::CStatus>("motion.pan.status", "RWRWR-");
  add<Camera::CMotion::CPan::CMode>("motion.pan.mode", "RWRWR-");
  add<Camera::CMotion::CPan::CSpeed>("motion.pan.speed", "RWRWR-");
  add<Camera::CMotion::CTilt>("motion.tilt", "RWRWR-");
  add<Camera::CMotion::CTilt::CStatus>("motion.tilt.status", "RWRWR-");
  add<Camera::CMotion::CTilt::CMode>("motion.tilt.mode", "RWRWR-");
  add<Camera::CMotion::CTilt::CSpeed>("motion.tilt.speed", "RWRWR-");
  add<Camera::CMotion::CZoom>("motion.zoom", "RWRWR-");
  add<Camera::CMotion::CZoom::CStatus>("motion.zoom.status", "RWRWR-");
  add<Camera::CMotion::CZoom::CMode>("motion.zoom.mode", "RWRWR-");
  add<Camera::CMotion::CZoom::CSpeed>("motion.zoom.speed", "RWRWR-");
  add<Camera::CMotion::CAbszoom>("motion.abszoom", "RWRWR-");
  add<Camera::CMotion::CPosition>("motion.position");
  add<Camera::CMotion::CPosition::CSpeed>("motion.position.speed", "RWRWR-");
  add<Camera::CMotion::CAutoPatrol>("motion.auto_patrol");
  add<Camera::CMotion::CAutoPatrol::CStatus>("motion.auto_patrol.status", "RWRWR-");
  add<Camera::CMotion::CAutoPatrol::CPosition>("motion.auto_patrol.position", "RWRWR-");
  add<Camera::CMotion::CAutoPatrol::CPosition::CDuration>("motion.auto_patrol.position.duration", "RWRWR-");
  add<Camera::CMotion::CAutoPatrol::CPosition::CSpeed>("motion.auto_patrol.position.speed", "RWRWR-");
  add<Camera::CMotion::CAutoReturn>("motion.auto_return");
  add<Camera::CMotion::CAutoReturn::CStatus>("motion.auto_return.status", "RWRWR-");
  add<Camera::CMotion::CAutoReturn::CMode>("motion.auto_return.mode", "RWRWR-");
  add<Camera::CMotion::CAutoReturn::CTimeout>("motion.auto_return.timeout", "RWRWR-");

  add<Camera::CPosition>("position");
  add<Camera::CPosition::CStatus>("position.status", "RWRWR-");
  add<Camera::CPosition::CPan>("position.pan", "R-R-R-");
  add<Camera::CPosition::CTilt>("position.tilt", "R-R-R-");
  add<Camera::CPosition::CZoom>("position.zoom", "R-R-R-");
  add<Camera::CPosition::CComment>("position.comment", "RWRWRW");

  add<Camera::CImage>("image");
  add<Camera::CImage::CTrueDaynight>("image.true_daynight");
  add<Camera::CImage::CTrueDaynight::CIrCounter>("image.true_daynight.ir_counter", "RWRWR-");
  add<Camera::CImage::CTrueDaynight::CLedCounter>("image.true_daynight.led_counter", "RWRWR-");
  add<Camera::CImage::CWhiteBalance>("image.white_balance");
  add<Camera::CImage::CWhiteBalance::CArea>("image.white_balance.area", "RWRWR-");

  add<Camera::CScene>("scene");
  add<Camera::CScene::CStatus>("scene.status", "RWRWR-");
  add<Camera::CScene::CImage>("scene.image");
  add<Camera::CScene::CImage::CColor>("scene.image.color", "RWRWR-");
  add<Camera::CScene::CImage::CGamma>("scene.image.gamma", "RWRWR-");
  add<Camera::CScene::CImage::CBrightness>("scene.image.brightness", "RWRWR-");
  add<Camera::CScene::CImage::CEasyDaynight>("scene.image.brightness.highgain", "RWRWR-");
  add<Camera::CScene::CImage::CEasyDaynight>("scene.image.brightness.easy_daynight", "RWRWR-");
  add<Camera::CScene::CImage::CTrueDaynight>("scene.image.true_daynight", "RWRWR-");
  add<Camera::CScene::CImage::CTrueDaynight::CAf>("scene.image.true_daynight.af", "RWRWR-");
  add<Camera::CScene::CImage::CEasyDaynight>("scene.image.easy_daynight", "RWRWR-");
  add<Camera::CScene::CImage::CPedestal>("scene.image.pedestal", "RWRWR-");
  add<Camera::CScene::CImage::CEnhance>("scene.image.enhance", "RWRWR-");
  add<Camera::CScene::CImage::C3ddnr>("scene.image.3ddnr", "RWRWR-");
  add<Camera::CScene::CImage::CSenseupLimit>("scene.image.senseup_limit", "RWRWR-");
  add<Camera::CScene::CImage::CWhiteBalance>("scene.image.white_balance", "RWRWR-");
  add<Camera::CScene::CImage::CWhiteBalance::CR>("scene.image.white_balance.r", "RWRWR-");
  add<Camera::CScene::CImage::CWhiteBalance::CB>("scene.image.white_balance.b", "RWRWR-");
  add<Camera::CScene::CImage::CLumx>("scene.image.lumx", "RWRWR-");
  add<Camera::CScene::CImage::CBlc>("scene.image.blc", "RWRWR-");
  add<Camera::CScene::CImage::CBlc::CArea>("scene.image.blc.area", "RWRWR-");
  add<Camera::CScene::CShutter>("scene.shutter", "RWRWR-");
  add<Camera::CScene::CAutoExposure>("scene.auto_exposure");
  add<Camera::CScene::CAutoExposure::CReference>("scene.auto_exposure.reference", "RWRWR-");
  add<Camera::CScene::CAutoExposure::CReferenceExt>("scene.auto_exposure.reference_ext", "RWRWR-");
  add<Camera::CScene::CAutoExposure::CPriority>("scene.auto_exposure.priority", "RWRWR-");
  add<Camera::CScene::CAutoExposure::CAvPk>("scene.auto_exposure.av_pk");
  add<Camera::CScene::CAutoExposure::CAvPk::CColor>("scene.auto_exposure.av_pk.color", "RWRWR-");
  add<Camera::CScene::CAutoExposure::CAvPk::CBlackWhite>("scene.auto_exposure.av_pk.black_white", "RWRWR-");
  add<Camera::CScene::CName>("scene.name", "R-R-R-");

  add<Camera::CIris>("iris", "-W----");
  add<Camera::CIris::CLenstype>("iris.lenstype", "RWR-R-");

  add<Camera::CDspadjust>("dspadjust");
  add<Camera::CDspadjust::CAdjustmode>("dspadjust.adjustmode", "RWR-R-");
  add<Camera::CDspadjust::CSubadjust>("dspadjust.subadjust", "RWR-R-");
  add<Camera::CDspadjust::CIris>("dspadjust.iris");
  add<Camera::CDspadjust::CIris::CEvref>("dspadjust.iris.evref", "RWR-R-");
  add<Camera::CDspadjust::CAe>("dspadjust.ae");
  add<Camera::CDspadjust::CAe::CArea>("dspadjust.ae.area", "RWRWR-");
  add<Camera::CDspadjust::CStaticNum>("dspadjust.static_num", "RWR-R-");
  add<Camera::CDspadjust::CPreWbNormr>("dspadjust.pre_wb_normr", "RWR-R-");
  add<Camera::CDspadjust::CPreWbNormrKeep>("dspadjust.pre_wb_normr_keep", "RWR-R-");
  add<Camera::CDspadjust::CPreWbNormb>("dspadjust.pre_wb_normb", "RWR-R-");
  add<Camera::CDspadjust::CPreWbNormbKeep>("dspadjust.pre_wb_normb_keep", "RWR-R-");
  add<Camera::CDspadjust::CPreWbLowr>("dspadjust.pre_wb_lowr", "RWR-R-");
  add<Camera::CDspadjust::CPreWbLowrKeep>("dspadjust.pre_wb_lowr_keep", "RWR-R-");
  add<Camera::CDspadjust::CPreWbLowb>("dspadjust.pre_wb_lowb", "RWR-R-");
  add<Camera::CDspadjust::CPreWbLowbKeep>("dspadjust.pre_wb_lowb_keep", "RWR-R-");
  add<Camera::CDspadjust::CPreWbHighr>("dspadjust.pre_wb_highr", "RWR-R-");
  add<Camera::CDspadjust::CPreWbHighrKeep>("dspadjust.pre_wb_highr_keep", "RWR-R-");
  add<Camera::CDspadjust::CPreWbHighb>("dspadjust.pre_wb_highb", "RWR-R-");
  add<Camera::CDspadjust::CPreWbHighbKeep>("dspadjust.pre_wb_highb_keep", "RWR-R-");
  add<Camera::CDspadjust::CIrygain1>("dspadjust.irygain1", "RWR-R-");
  add<Camera::CDspadjust::CIbygain1>("dspadjust.ibygain1", "RWR-R-");
  add<Camera::CDspadjust::CIryhue1>("dspadjust.iryhue1", "RWR-R-");
  add<Camera::CDspadjust::CIbyhue1>("dspadjust.ibyhue1", "RWR-R-");
  add<Camera::CDspadjust::CFocus>("dspadjust.focus", "RWR-R-");
  add<Camera::CDspadjust::CStatus>("dspadjust.status", "-W----");
  add<Camera::CDspadjust::CSensor>("dspadjust.sensor", "-W----");

  add<Camera::CInternal>("internal");
  add<Camera::CInternal::CData>("internal.data", "RWR-R-");
  add<Camera::CInternal::CDeviceid>("internal.deviceid", "-W----");
  add<Camera::CInternal::CAddress>("internal.address", "-W----");

  add<Camera::CAdjustService>("adjust_service");
  add<Camera::CAdjustService::CAlc>("adjust_service.alc");
  add<Camera::CAdjustService::CAlc::CSpeed>("adjust_service.alc.speed", "RWRWRW");
  add<Camera::CAdjustService::CAlc::CErrEn>("adjust_service.alc.err_en", "RWRWRW");
  add<Camera::CAdjustService::CAlc::CErrHigh>("adjust_service.alc.err_high", "RWRWRW");
  add<Camera::CAdjustService::CAlc::CErrLow>("adjust_service.alc.err_low", "RWRWRW");
  add<Camera::CAdjustService::CAlc::CRestart>("adjust_service.alc.restart", "RWRWRW");
  add<Camera::CAdjustService::CAlc::CDnHysteresis>("adjust_service.alc.dn_hysteresis", "RWRWRW");
  add<Camera::CAdjustService::CIris>("adjust_service.iris");
  add<Camera::CAdjustService::CIris::CStart>("adjust_service.iris.start", "RWRWRW");
  add<Camera::CAdjustService::CIris::CIntgain>("adjust_service.iris.intgain", "RWRWRW");
  add<Camera::CAdjustService::CIris::CProgain>("adjust_service.iris.progain", "RWRWRW");
  add<Camera::CAdjustService::CIris::CLimitHigh>("adjust_service.iris.limit_high", "RWRWRW");
  add<Camera::CAdjustService::CIris::CLimitLow>("adjust_service.iris.limit_low", "RWRWRW");
  add<Camera::CAdjustService::CAtw>("adjust_service.atw");
  add<Camera::CAdjustService::CAtw::CSpeed>("adjust_service.atw.speed", "RWRWRW");
  add<Camera::CAdjustService::CAtw::CErrEn>("adjust_service.atw.err_en", "RWRWRW");
  add<Camera::CAdjustService::CAtw::CErrHigh>("adjust_service.atw.err_high", "RWRWRW");
  add<Camera::CAdjustService::CAtw::CErrLow>("adjust_service.atw.err_low", "RWRWRW");
  add<Camera::CAdjustService::CAtw::CRestart>("adjust_service.atw.restart", "RWRWRW");
  add<Camera::CAdjustService::CRange>("adjust_service.atw.range");
  add<Camera::CAdjustService::CRange::CWide>("adjust_service.atw.range.wide");
  add<Camera::CAdjustService::CRange::CWide::CR>("adjust_service.atw.range.wide.r", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CB>("adjust_service.atw.range.wide.b", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CGLow>("adjust_service.atw.range.wide.g_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CGNorm>("adjust_service.atw.range.wide.g_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CGHigh>("adjust_service.atw.range.wide.g_high", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CMgLow>("adjust_service.atw.range.wide.mg_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CMgNorm>("adjust_service.atw.range.wide.mg_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CMgHigh>("adjust_service.atw.range.wide.mg_high", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow>("adjust_service.atw.range.narrow");
  add<Camera::CAdjustService::CRange::CNarrow::CR>("adjust_service.atw.range.narrow.r", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CB>("adjust_service.atw.range.narrow.b", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CGLow>("adjust_service.atw.range.narrow.g_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CGNorm>("adjust_service.atw.range.narrow.g_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CGHigh>("adjust_service.atw.range.narrow.g_high", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CMgLow>("adjust_service.atw.range.narrow.mg_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CMgNorm>("adjust_service.atw.range.narrow.mg_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CMgHigh>("adjust_service.atw.range.narrow.mg_high", "RWRWRW");
  add<Camera::CAdjustService::CRange>("adjust_service.range");
  add<Camera::CAdjustService::CRange::CWide>("adjust_service.range.wide");
  add<Camera::CAdjustService::CRange::CWide::CR>("adjust_service.range.wide.r", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CB>("adjust_service.range.wide.b", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CGLow>("adjust_service.range.wide.g_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CGNorm>("adjust_service.range.wide.g_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CGHigh>("adjust_service.range.wide.g_high", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CMgLow>("adjust_service.range.wide.mg_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CMgNorm>("adjust_service.range.wide.mg_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CWide::CMgHigh>("adjust_service.range.wide.mg_high", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow>("adjust_service.range.narrow");
  add<Camera::CAdjustService::CRange::CNarrow::CR>("adjust_service.range.narrow.r", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CB>("adjust_service.range.narrow.b", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CGLow>("adjust_service.range.narrow.g_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CGNorm>("adjust_service.range.narrow.g_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CGHigh>("adjust_service.range.narrow.g_high", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CMgLow>("adjust_service.range.narrow.mg_low", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CMgNorm>("adjust_service.range.narrow.mg_norm", "RWRWRW");
  add<Camera::CAdjustService::CRange::CNarrow::CMgHigh>("adjust_service.range.narrow.mg_high", "RWRWRW");
  add<Camera::CAdjustService::CLumx>("adjust_service.lumx");
  add<Camera::CAdjustService::CLumx::CSpeed>("adjust_service.lumx.speed", "RWRWRW");
  add<Camera::CAdjustService::CLumx::CGain>("adjust_service.lumx.gain", "RWRWRW");
  add<Camera::CAdjustService::CInformation>("adjust_service.information", "R-----");
  add<Camera::CAdjustService::CStatus>("adjust_service.status", "-W-W-W");

  add<Camera::CScpGet>("scp_get", "RW----");
  add<Camera::CScpSet>("scp_set", "RW----");
}

void CCameraMan::replay() {
  CCameraApiBase::m_setCurrentSceneid();
  m_setUpEncoders();
  m_loadPicture();
  m_tellNeighbours();
  m_loadFocus();
  m_setGpioInitDone();
  m_replayShutters();
  m_replayMotion();
  // The replay has spoken of every scene.
  CCameraApiBase::m_setCurrentSceneid();
  m_dsp.sendLoadComplete();
}

void CCameraMan::m_setUpEncoders() {
  if (Encoder::setAspectRatioStatus() < 0) {
    TMX_LOG(LOG_ERR, " aspectratio setting error(current %ld) ", static_cast<long>(Encoder::getAspectRatioStatus()));
  }
  Encoder::loadAll();
  if (Encoder::updatePassMode() < 0) TMX_LOG(LOG_ERR, " isp pass setting(1st load )  error ");
  static_cast<void>(Encoder(*Config::getInstance()).SetEncoder());
}

void CCameraMan::m_loadPicture() {
  m_dsp.loadScpServiceData(
      {.alc = true, .iris = true, .atw = true, .atwWide = true, .atwNarrow = true, .lumx = true, .afForIr = false});
  m_dsp.loadDspAdjustData();
  m_dsp.loadSceneData(true);
}

/** Brings the daemons that follow the picture up to it; one that is not there yet asks nothing of the start. */
void CCameraMan::m_tellNeighbours() {
  DetectionSet detection;
  static_cast<void>(detection.motionResend());
  static_cast<void>(detection.tamperResend());
}

void CCameraMan::m_loadFocus() {
  if (!ModelFeature::has(Feature::FOCUS_CTRL)) return;
  m_dsp.loadFocusData();
  m_blackOutInitialize();
}

/** The power has gone while the focus was not checked: the date of that is kept. */
void CCameraMan::m_blackOutInitialize() {
  if (!CameraDSP::isBlackoutFlagged()) return;
  TMX_LOG(LOG_INFO, "status set moving  for set blackout flag");
  m_dsp.enterFocusState(dsp::focus::kInitialize);
  OutBlackWorker().KeepTmpFile();
}

void CCameraMan::m_setGpioInitDone() {
  if (ModelFeature::has(Feature::ALARM_IO)) static_cast<void>(gpio::tell(GpioCommand::InitDone));
}

void CCameraMan::m_replayShutters() {
  for (int32_t scene = 0; scene < CCameraApiBase::kScenes; ++scene) {
    m_replay("camera.scene(" + std::to_string(scene) + ").shutter",
             Config::getInstance()->getSceneConfig(scene, scene_row::SHUTTER));
  }
}

void CCameraMan::m_replayMotion() {
  m_replayStored("camera.motion.position.speed");
  m_replayStored("camera.motion.auto_return.status");
  const bool returns = Config::getInstance()->getCameraConfig(camera_row::RETURN_STATUS) == "on";
  if (returns) m_replay("camera.motion.auto_return.status=start");
  m_replayStored("camera.motion.auto_return.mode");
  m_replayStored("camera.motion.auto_return.timeout");
  m_replay("camera.motion.tilt.mode=down");
  m_replay("camera.motion.tilt.speed=50");
  m_replay("camera.motion.pan.mode=right");
  m_replay("camera.motion.pan.speed=50");
  for (int32_t step = 0; step < CCameraApiBase::kPatrolSteps; ++step) {
    const std::string position = "camera.motion.auto_patrol(0).position(" + std::to_string(step) + ")";
    for (const char* item : {"", ".duration", ".speed"}) {
      m_replayStored(position + item);
    }
  }
  m_replay("camera.motion.zoom.mode=in");
  m_replay("camera.motion.zoom.speed=50");
}
