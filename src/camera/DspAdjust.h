#pragma once

#include <cstdint>
#include <string>

#include "camera/Area.h"
#include "camera/CCameraApiBase.h"
#include "dsp/ServiceTables.h"

/** The calibration of one camera: what the factory measures, keeps in its own table, and saves there. */
namespace Camera {

struct CDspadjust : CCameraApiBase {
  using enum camdsp_row::Row;
  struct CIris;
  struct CAe;
  struct CAdjustmode;
  struct CSubadjust;
  struct CStaticNum;
  struct CPreWbNormr;
  struct CPreWbNormrKeep;
  struct CPreWbNormb;
  struct CPreWbNormbKeep;
  struct CPreWbLowr;
  struct CPreWbLowrKeep;
  struct CPreWbLowb;
  struct CPreWbLowbKeep;
  struct CPreWbHighr;
  struct CPreWbHighrKeep;
  struct CPreWbHighb;
  struct CPreWbHighbKeep;
  struct CIrygain1;
  struct CIbygain1;
  struct CIryhue1;
  struct CIbyhue1;
  struct CFocus;
  struct CStatus;
  struct CSensor;
};

inline constexpr Hint kSaveAdjust{.layer = "camera.dspadjust", .command = ".status=save", .brings = Brings::ToFlash};
/** Of what the DSP gets at the next start only. */
inline constexpr Hint kKeepAdjust{.layer = "camera.dspadjust", .command = ".status=save"};

/** A value with a field in a frame; the range is the field's. */
template <camdsp_row::Row row>
struct CalibrationValue : CCameraApiBase {
  static int32_t act(Request& request) { return cameraDsp().setAdjust(row, request.number, true); }
  static constexpr Rule rule{
      .accepts = Number{.low = 0, .high = dsp::largestAdjust(row)},
      .place = row,
      .act = act,
      .shows = {.image = Image::User},
      .answers = kSaveAdjust,
  };
};

/** The same value, kept for the next start: neither the DSP nor the frame gets it. */
template <camdsp_row::Row row>
struct KeptCalibrationValue : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = 0, .high = dsp::largestAdjust(row), .snap = inDecimals},
      .place = row,
      .keeps = Keeps::Staged,
      .shows = {.image = Image::User},
      .answers = kKeepAdjust,
  };
};

// The points of the white balance in front of its loop, and the colour in infrared light.
struct CDspadjust::CPreWbNormr : CalibrationValue<PREWBNORMR> {};
struct CDspadjust::CPreWbNormrKeep : KeptCalibrationValue<PREWBNORMR> {};
struct CDspadjust::CPreWbNormb : CalibrationValue<PREWBNORMB> {};
struct CDspadjust::CPreWbNormbKeep : KeptCalibrationValue<PREWBNORMB> {};
struct CDspadjust::CPreWbLowr : CalibrationValue<PREWBLOWR> {};
struct CDspadjust::CPreWbLowrKeep : KeptCalibrationValue<PREWBLOWR> {};
struct CDspadjust::CPreWbLowb : CalibrationValue<PREWBLOWB> {};
struct CDspadjust::CPreWbLowbKeep : KeptCalibrationValue<PREWBLOWB> {};
struct CDspadjust::CPreWbHighr : CalibrationValue<PREWBHIGHR> {};
struct CDspadjust::CPreWbHighrKeep : KeptCalibrationValue<PREWBHIGHR> {};
struct CDspadjust::CPreWbHighb : CalibrationValue<PREWBHIGHB> {};
struct CDspadjust::CPreWbHighbKeep : KeptCalibrationValue<PREWBHIGHB> {};
struct CDspadjust::CIrygain1 : CalibrationValue<IRYGAIN1> {};
struct CDspadjust::CIbygain1 : CalibrationValue<IBYGAIN1> {};
struct CDspadjust::CIryhue1 : CalibrationValue<IRYHUE1> {};
struct CDspadjust::CIbyhue1 : CalibrationValue<IBYHUE1> {};

/** How many static defects are known; a read asks the defect daemon. */
struct CDspadjust::CStaticNum : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = 0, .high = 255},
      .place = SPOTNUM,
      .fetch = fromDsp<&CameraDSP::countDefects>,
      .keeps = Keeps::Staged,
      .answers = kKeepAdjust,
  };
};

struct CDspadjust::CIris : CCameraApiBase {
  struct CEvref;
};

/** An offset of the iris, in force until the next start. */
struct CDspadjust::CIris::CEvref : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = -32, .high = 32},
      .place = EVREF,
      .act = toDsp<&CameraDSP::setEvref>,
      .shows = {.image = Image::User},
  };
};

struct CDspadjust::CAe : CCameraApiBase {
  struct CArea;
};

/** The part of the picture that the exposure looks at, until the next start. */
struct CDspadjust::CAe::CArea : CCameraApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Text{.form = kAreaForm},
      .act = areaToDsp<&CameraDSP::setAutoExposureArea>,
      .fetch = fetch,
  };
};

/** Which procedure the steps of `subadjust` belong to: 1 static defects, 2 white balance. */
struct CDspadjust::CAdjustmode : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = 0, .high = 4},
      .act = toDsp<&CameraDSP::setAdjustmode>,
      .fetch = fromDsp<&CameraDSP::getAdjustmode>,
      .refusals = {{{dsp::kBadArgument, status::kPreconditionFailed}}},
  };
};

/** Goes to a step of the procedure, and shows how far it is. */
struct CDspadjust::CSubadjust : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Number{.low = 0, .high = 255},
      .act = toDsp<&CameraDSP::setSubadjust>,
      .fetch = fromDsp<&CameraDSP::getSubadjust>,
  };
};

/** Makes the present position of the focus, or 0, that of the factory. */
struct CDspadjust::CFocus : CCameraApiBase {
  static int32_t act(Request& request);
  static constexpr Selector selector{.available = has<Feature::FOCUS_CTRL>};
  static constexpr Rule rule{
      .accepts = Words{"set", "initialize"},
      .peer = peer::gpioValue(GpioCommand::FocusPosition),
      .act = act,
  };
};

struct CDspadjust::CStatus : CCameraApiBase {
  static int32_t save(Request& request);
  static int32_t saveWhitePoint(Request& request);
  static constexpr Rule rule{.commands = {{{"save", save}, {"whitepointsave", saveWhitePoint}}}};
};

struct CDspadjust::CSensor : CCameraApiBase {
  static constexpr Rule rule{.accepts = oneOf(1, 2), .act = toDsp<&CameraDSP::setSensor>};
};

}  // namespace Camera
