#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "dsp/ExposureTables.h"
#include "dsp/FocusTables.h"
#include "dsp/Frame.h"
#include "dsp/Results.h"
#include "dsp/ServiceTables.h"
#include "service/Gpio.h"

namespace dsp {

/** What the image channel must know of the camera model. */
struct Model {
  bool dayNight;   ///< true day/night: a cut filter, driven with the picture mode
  bool backFocus;  ///< the back focus can be moved
  bool lens;       ///< the lens is built in, so there is no second lens to choose

  /** The model of this camera. */
  [[nodiscard]] static Model ofCamera();
};

/** Which frames of the service values a load sends. */
struct ServiceLoad {
  bool alc = false;
  bool iris = false;
  bool atw = false;
  bool atwWide = false;
  bool atwNarrow = false;
  bool lumx = false;
  bool afForIr = false;
};

}  // namespace dsp

/**
 * The one gate to the image DSP: turns settings into frames, keeps the last frame of every address, and keeps the
 * live value of every setting in the working copy (CUserConfig).
 *
 * The camera manager owns the one object; the nodes of the camera tree hold a pointer. Results are those of Results.h.
 * A setter checks the value, changes its bytes in the cached frame, sends the frame, and only then stores the text in
 * the working copy; after a failed send the cache is ahead of it. With sendflag false nothing is sent and the rest
 * happens, so that several fields go out with the last of them. Nothing is sent twice: there are no retries.
 * Used from the request thread alone.
 */
class CameraDSP {
 public:
  explicit CameraDSP(dsp::Model model = dsp::Model::ofCamera()) : m_model(model) {}
  CameraDSP(const CameraDSP&) = delete;
  CameraDSP& operator=(const CameraDSP&) = delete;
  virtual ~CameraDSP() = default;

  /** The value of one hexadecimal character, or -1. */
  virtual int32_t convAtoi(char character) const;
  /** Upper-case hexadecimal text, two characters a byte. */
  virtual std::string convItoa(const uint8_t* bytes, size_t count) const;

  // The channel itself (Channel.cpp).
  int32_t sendToCameradsp(dsp::Frame& frame, bool sendflag);
  [[nodiscard]] int32_t recvFromCameradsp(dsp::Frame& frame);
  int32_t setModelType(bool dayNight, bool noBackFocus, bool sendflag);
  int32_t setDayNightMode(int32_t mode);
  /** Tells the DSP that all settings have been loaded: the last frame of a start. */
  int32_t sendLoadComplete();
  /** Writes a row of the camera table in the working copy. A shutter text also sets the shutter mode and speed. */
  void store(int32_t row, const std::string& text);
  /** The number behind the working copy's text of a row with words (Words.h); unknown texts are logged. */
  [[nodiscard]] int32_t getCurrentInt(int32_t row) const;

  // Raw access (Raw.cpp).
  [[nodiscard]] int32_t setVaData(const std::string& hexText, std::string& resultText);
  [[nodiscard]] int32_t getVaData(const std::string& addressText, std::string& resultText);
  [[nodiscard]] int32_t writeRegister(dsp::Field field, int32_t value);
  [[nodiscard]] int32_t readRegister(dsp::Field field, uint32_t& value);
  /** The DSP's identity and versions; the text is empty after a failure. */
  [[nodiscard]] int32_t getSCPInformation(std::string& text);
  /** The camera id that the DSP shows: 40 bytes reach it, the whole text is stored. */
  [[nodiscard]] int32_t setId(const std::string& text);

  // Shutter (Shutter.cpp).
  int32_t setShutterSpeed(int32_t mode, int32_t speed, bool sendflag);
  [[nodiscard]] int32_t setShutterSpeedWithAGC(int32_t mode, int32_t speed);
  [[nodiscard]] int32_t setShutterByName(std::string_view name);
  [[nodiscard]] int32_t stepShutter(std::string_view step);
  [[nodiscard]] std::string getShutterSpeedMode() const;
  int32_t setSenseuplimit(int32_t limit, bool sendflag);
  [[nodiscard]] int32_t stepSenseuplimit(std::string_view step);

  // Gain, iris and the other exposure settings (Exposure.cpp).
  int32_t setAGC(uint32_t code, bool sendflag);
  int32_t setAutoExposurePriority(uint32_t priority, bool sendflag);
  int32_t setIrisMode(std::string_view mode, bool sendflag);
  [[nodiscard]] int32_t getIrisMode() const { return m_irisMode; }
  int32_t setAutoExposureReference(int32_t raw, bool sendflag);
  int32_t setAutoExposureReferenceIndex(int32_t index, bool sendflag);
  [[nodiscard]] int32_t stepAutoExposureReference(std::string_view step);
  [[nodiscard]] int32_t stepAutoExposureReferenceIndex(std::string_view step);
  int32_t setAvPkColor(int32_t value, bool sendflag);
  int32_t setAvPkBlackWhite(int32_t value, bool sendflag);
  int32_t setAutoExposureArea(const dsp::Area& area, bool sendflag);
  [[nodiscard]] const dsp::Area& getAutoExposureArea() const { return m_aeArea; }

  // Day and night (DayNight.cpp).
  int32_t setHighGain(uint32_t mode, bool sendflag);
  int32_t setEasyDaynight(uint32_t mode, bool sendflag);
  int32_t setTrueDaynight(uint32_t mode, bool sendflag);
  [[nodiscard]] int32_t setTrueDaynightAf(bool on);

  // White balance (WhiteBalance.cpp).
  int32_t setAWB(uint32_t mode, uint32_t r, uint32_t b, bool sendflag);
  [[nodiscard]] int32_t setOpWBaction(uint32_t r, uint32_t b);
  [[nodiscard]] int32_t setWhiteBalanceMode(uint32_t mode);
  [[nodiscard]] int32_t setWhiteBalanceR(int32_t gain);
  [[nodiscard]] int32_t setWhiteBalanceB(int32_t gain);
  [[nodiscard]] int32_t stepWhiteBalanceR(std::string_view step);
  [[nodiscard]] int32_t stepWhiteBalanceB(std::string_view step);
  int32_t setWBArea(const dsp::Area& area, bool sendflag);
  /** Four tokens joined by "-", each "s" and a coordinate or a percentage; aspect not 0 is a 4:3 picture. */
  [[nodiscard]] int32_t cameraWBPointconvert(const std::string& text, dsp::Area& area, int32_t aspect) const;

  // Picture (Picture.cpp, BacklightCompensation.cpp).
  int32_t setSaturation(int32_t value, bool sendflag);
  [[nodiscard]] int32_t stepSaturation(std::string_view step);
  int32_t setEnhance(int32_t value, bool sendflag);
  [[nodiscard]] int32_t stepEnhance(std::string_view step);
  int32_t setPedestal(int32_t value, bool sendflag);
  [[nodiscard]] int32_t stepPedestal(std::string_view step);
  int32_t setImageGamma(const std::string& gamma, bool sendflag);
  [[nodiscard]] int32_t stepImageGamma(std::string_view step);
  int32_t set3ddnr(uint32_t level, bool sendflag);
  int32_t setLumxStatus(uint32_t on, bool sendflag);
  int32_t setBLC(const std::string& mode, bool sendflag);
  /** 34 hexadecimal digits; kUnchanged when they are those already kept. */
  int32_t setBLCArea(const std::string& digits);
  void setAspect(int32_t aspect) { m_aspect = aspect; }
  [[nodiscard]] int32_t getAspect() const { return m_aspect; }

  // Focus (Focus.cpp): the GPIO daemon drives the lens and reports; the DSP has to know the result (frame 0x84). While
  // the lens moves, what concerns its place is refused. kSendFailed also when the daemon could not be told or asked.
  /** The word of the state (FocusTables.h). */
  [[nodiscard]] std::string getFocusStateAf() const;
  /** The state as the daemon reports it, by its word or number; a run that has ended refreshes the fields below. */
  [[nodiscard]] int32_t setFocusStateAf(const std::string& text);
  void enterFocusState(dsp::focus::State state) { m_focusState = state; }
  [[nodiscard]] bool isFocusAdjusting() const { return m_focusState == dsp::focus::kAdjusting; }
  /** 0 near, 1 far; -1 when the daemon cannot be asked. */
  [[nodiscard]] int32_t getFocusDirection(int32_t& direction) const;
  /** Where the cut filter is: 0 black-and-white, 1 colour, -1 unknown; recorded, it is what "select" returns to. */
  [[nodiscard]] int32_t getCurrentDspIcr(bool isRecorded);
  int32_t setFocusDirection(int32_t direction);
  int32_t setFocusIrtype(int32_t filter, bool sendflag);
  int32_t setFocusCurrentPos(int32_t position);
  int32_t setFocusFactoryPos(int32_t position);
  int32_t setFocusBlackoutStatus(bool flag, bool sendflag);
  /** The stored place of the filter, "day" or "night". */
  [[nodiscard]] std::string getStoredFilter() const;
  /** The filter has moved, says the daemon: has the focus corrected for its new place. */
  [[nodiscard]] int32_t correctForFilter(const std::string& text);
  // Runs of the lens.
  [[nodiscard]] int32_t stepFocus(int32_t step);
  [[nodiscard]] int32_t setNightFocus(int32_t offset);
  [[nodiscard]] int32_t setFocusOpauto(int32_t run);
  [[nodiscard]] int32_t setFocusFactoryInitialize();
  /** Whether a stored flag says that the focus has not been checked since something moved. */
  [[nodiscard]] static bool isBlackoutFlagged();
  /** Whether the night focus differs from that of the day. */
  [[nodiscard]] static bool hasNightFocusOffset();
  int32_t loadFocusData();
  int32_t setFocusNightOffsetReload();

  // Adjust mode (FocusMode.cpp): "select" leaves the filter to the day/night logic, the other modes hold it.
  [[nodiscard]] std::string getAFadjustmode() const;
  [[nodiscard]] bool isAFadjustmode(dsp::focus::Mode mode) const { return m_afAdjustMode == mode; }
  /** kRefused when the filter's place cannot be read; kNotUnderstood for a mode that this model has not. */
  [[nodiscard]] int32_t setAFadjustmode(int32_t mode);
  /** Whether the filter is back, or need not be, so that a fixed mode can be left; takes 0.4 s where it is. */
  [[nodiscard]] bool checkIcrStateCurrent();
  /** Tells the daemon that a fixed mode has been left. */
  [[nodiscard]] bool releaseAFadjustmode();

  /** A picture that makes focusing easier (FocusAssist.cpp). */
  [[nodiscard]] int32_t setFocusAssist(bool on);
  [[nodiscard]] bool getFocusAssist() const { return m_focusAssist; }

  // Privacy mask (PrivacyMask.cpp).
  int32_t setPrivacymaskStatus(uint32_t on, bool sendflag);
  int32_t setPrivacymaskColor(const std::string& color, bool sendflag);
  int32_t setPrivacymaskArea(const std::string& digits, bool sendflag);
  int32_t setPrivacyMaskAreaData(std::span<const uint8_t> bytes, bool sendflag);

  // Service values (Service.cpp): id is a row of the SCP service table; a foreign id sends the frame as it stands.
  int32_t setALC(int32_t id, int32_t value) { return m_setService(dsp::service::kAlc, id, value); }
  int32_t setIris(int32_t id, int32_t value) { return m_setService(dsp::service::kIris, id, value); }
  int32_t setATW(int32_t id, int32_t value) { return m_setService(dsp::service::kAtw, id, value); }
  int32_t setATWWide(int32_t id, int32_t value) { return m_setService(dsp::service::kWide, id, value); }
  int32_t setATWNarrow(int32_t id, int32_t value) { return m_setService(dsp::service::kNarrow, id, value); }
  int32_t setLUMX(int32_t id, int32_t value) { return m_setService(dsp::service::kLumx, id, value); }
  int32_t setAfForIr(int32_t id, int32_t value) { return m_setService(dsp::service::kAfForIr, id, value); }
  [[nodiscard]] int32_t getALC() { return m_readService(dsp::service::kAlc); }
  [[nodiscard]] int32_t getIris() { return m_readService(dsp::service::kIris); }
  [[nodiscard]] int32_t getATW() { return m_readService(dsp::service::kAtw); }
  [[nodiscard]] int32_t getATWWide() { return m_readService(dsp::service::kWide); }
  [[nodiscard]] int32_t getATWNarrow() { return m_readService(dsp::service::kNarrow); }
  [[nodiscard]] int32_t getLUMX() { return m_readService(dsp::service::kLumx); }
  [[nodiscard]] int32_t getAfForIr() { return m_readService(dsp::service::kAfForIr); }
  [[nodiscard]] int32_t setLensType(const std::string& lens);

  // Calibration (Adjust.cpp): id is a row of the camdsp table that has a place in a frame (ServiceTables.h).
  int32_t setAdjust(int32_t id, int32_t value, bool sendflag);
  int32_t setEvref(int32_t value, bool sendflag);
  [[nodiscard]] int32_t setSensor(int32_t sensor);

  // The adjustment procedures (Subadjust.cpp): one mode, and the step that its procedure has reached.
  /** kOutOfRange; kBadArgument for a mode that cannot be entered from the present one. Mode 0 starts anew. */
  [[nodiscard]] int32_t setAdjustmode(uint32_t mode);
  [[nodiscard]] uint32_t getAdjustmode() const { return m_adjustMode; }
  /** Goes to a step of the present mode; negative when it cannot follow the last one, or could not be ordered. */
  [[nodiscard]] int32_t setSubadjust(uint32_t step);
  /** How far the procedure is: the step reached, 255 after a failure; or a negative result. */
  [[nodiscard]] int32_t getSubadjust();
  /** How many static defects the defect daemon has found, which is stored; or kBadArgument. */
  [[nodiscard]] int32_t countDefects();
  void setSubadjustState(uint32_t state) { m_subadjustState = state; }
  [[nodiscard]] uint32_t getSubadjustState() const { return m_subadjustState; }
  [[nodiscard]] int32_t setWhiteBalanceSubadjust(uint32_t step);
  /** 0 while the point is measured, the step reached when it is done, 255 when it failed; or a negative result. */
  [[nodiscard]] int32_t getWhiteBalanceSubadjust();

  // Loads (Loads.cpp): every step is tried; kSendFailed when a frame did not reach the DSP.
  int32_t loadScpServiceData(const dsp::ServiceLoad& load);
  int32_t loadDspAdjustData();
  int32_t loadSceneData(bool first);

 private:
  [[nodiscard]] std::string m_text(int32_t row) const;
  [[nodiscard]] int32_t m_number(int32_t row) const;
  void m_store(int32_t row, std::string_view text) const;
  void m_store(int32_t row, int32_t number) const;
  void m_storeAgain(int32_t row) const;
  int32_t m_send(uint8_t address, bool sendflag) { return sendToCameradsp(m_frames.at(address), sendflag); }
  [[nodiscard]] int32_t m_sendAll(std::initializer_list<uint8_t> addresses, bool sendflag);
  int32_t m_apply(dsp::Field field, int32_t value, int32_t row, std::string_view text, bool sendflag);

  [[nodiscard]] int32_t m_probeDevice();
  [[nodiscard]] bool m_isSecondBoard() { return m_probeDevice() >= dsp::kSecondBoardId; }

  [[nodiscard]] uint32_t m_gainCode() const;
  [[nodiscard]] int32_t m_checkGain(uint32_t code) const;
  [[nodiscard]] int32_t m_refuseGain(uint32_t code) const;
  [[nodiscard]] int32_t m_compensation();
  [[nodiscard]] int32_t m_gainValue(uint32_t gain);
  int32_t m_setFixedGain(uint32_t code, bool sendflag);
  int32_t m_setAutoGain(uint32_t code, bool sendflag);
  int32_t m_setAvPk(dsp::Field field, int32_t row, int32_t value, bool sendflag);

  [[nodiscard]] int32_t m_pollOnePush(dsp::Frame& answer);
  [[nodiscard]] int32_t m_setDefectSubadjust(uint32_t step);
  [[nodiscard]] int32_t m_getDefectSubadjust();
  int32_t m_sendStoredPoint(int32_t redRow, int32_t blueRow);
  int32_t m_sendBlcArea(std::span<const uint8_t> grid);

  [[nodiscard]] const dsp::ServiceItem* m_serviceItem(const dsp::ServiceGroup& group, int32_t id) const;
  [[nodiscard]] bool m_isInUse(const dsp::ServiceItem& item) const;
  int32_t m_setService(const dsp::ServiceGroup& group, int32_t id, int32_t value);
  int32_t m_loadService(const dsp::ServiceGroup& group);
  int32_t m_readService(const dsp::ServiceGroup& group);

  int32_t m_setFocusField(dsp::Field field, int32_t value, Row row, std::string_view text, bool sendflag);
  int32_t m_refreshFocus();
  [[nodiscard]] bool m_isFocusMoving() const;
  [[nodiscard]] int32_t m_checkFocusStep(int32_t value, int32_t low, int32_t high) const;
  [[nodiscard]] int32_t m_runFocus(GpioCommand command, int32_t argument);
  [[nodiscard]] bool m_checkChangingIRposition(int32_t mode);
  [[nodiscard]] int32_t m_setPictureOfMode(int32_t mode);
  int32_t m_startFocusAssist();
  int32_t m_endFocusAssist();

  int32_t m_loadExposure();
  int32_t m_loadColor();
  int32_t m_loadCameraWide();

  dsp::Model m_model;
  dsp::FrameCache m_frames;
  int32_t m_shutterMode = dsp::shutter::kAuto;
  int32_t m_shutterSpeed = 0;
  int32_t m_irisMode = 1;
  uint32_t m_adjustMode = 0;
  uint32_t m_subadjustState = 0;
  dsp::Area m_aeArea{0, 0, 1920, 1080};
  int32_t m_aspect = 0;

  int32_t m_focusState = dsp::focus::kInitialize;
  int32_t m_afAdjustMode = dsp::focus::kSelect;
  bool m_isFilterMoving = false;                ///< the last change of the mode moves the filter
  int32_t m_filterBefore = dsp::focus::kColor;  ///< where "select" has left it
  bool m_focusAssist = false;
};
