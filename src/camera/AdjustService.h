#pragma once

#include <cstdint>

#include "camera/CCameraApiBase.h"
#include "dsp/ServiceTables.h"

/**
 * The constants of the DSP's control loops. Range, place in the frame and partner limit of each stand in the DSP's
 * tables (ServiceTables.h). A value is in force and in both images at once; "save" writes the file.
 */
namespace Camera {

struct CAdjustService : CCameraApiBase {
  using enum scp_service_row::Row;
  struct CAlc;
  struct CIris;
  struct CAtw;
  struct CRange;
  struct CLumx;
  struct CInformation;
  struct CStatus;
};

constexpr Rule serviceRule(scp_service_row::Row row, Act act, Place::Locate locate = nullptr) {
  const dsp::ServiceItem& item = dsp::service::itemOf(row);
  return {
      .accepts = Number{.low = item.minimum, .high = item.maximum, .snap = inDecimals, .logged = item.name},
      .place = {row, locate},
      .act = act,
      .keeps = Keeps::InMemory,
      .shows = {.image = Image::User},
      .answers = {.layer = "camera.adjust_service", .command = ".status=save", .brings = Brings::ToFlash},
      .refusals = {{{dsp::kRefused, status::kPreconditionFailed}}},
  };
}

/** A value that one operation of the DSP takes with its row. */
template <auto Set, scp_service_row::Row row>
struct ServiceValue : CCameraApiBase {
  static int32_t act(Request& request) { return (cameraDsp().*Set)(row, request.number); }
  static constexpr Rule rule = serviceRule(row, act);
};

// ---- Exposure ------------------------------------------------------------------------------------------------------

struct CAdjustService::CAlc : CCameraApiBase {
  template <scp_service_row::Row row>
  using Value = ServiceValue<&CameraDSP::setALC, row>;
  struct CSpeed : Value<ALC_SPEED> {};
  struct CErrEn : Value<ALC_ERR_EN> {};
  struct CErrHigh : Value<ALC_ERR_H> {};
  struct CErrLow : Value<ALC_ERR_L> {};
  struct CRestart : Value<ALC_RESTART> {};
  struct CDnHysteresis;
};

/** Models with and without a cut filter keep theirs in rows of their own. */
struct CAdjustService::CAlc::CDnHysteresis : CCameraApiBase {
  static Cell locate(const Selectors& selectors, Row row);
  static int32_t act(Request& request);
  static constexpr Rule rule = serviceRule(DN_HYSTERESIS_TRUEDN, act, locate);
};

// ---- Iris: each lens has rows of its own ---------------------------------------------------------------------------

[[nodiscard]] Cell locateIris(const Selectors& selectors, Row row);
/** Hands the value over for the row in use, and takes the rows of both lenses over into the stored image. */
[[nodiscard]] int32_t actIris(scp_service_row::Row row, int32_t value);

template <scp_service_row::Row row>
struct IrisValue : CCameraApiBase {
  static int32_t act(Request& request) { return actIris(row, request.number); }
  static constexpr Rule rule = serviceRule(row, act, locateIris);
};

struct CAdjustService::CIris : CCameraApiBase {
  struct CStart : IrisValue<IRIS_START> {};
  struct CIntgain : IrisValue<IRIS_INTGAIN> {};
  struct CProgain : IrisValue<IRIS_PROGAIN> {};
  struct CLimitHigh : IrisValue<IRIS_LIMIT_H> {};
  struct CLimitLow : IrisValue<IRIS_LIMIT_L> {};
};

// ---- White balance -------------------------------------------------------------------------------------------------

struct CAdjustService::CAtw : CCameraApiBase {
  template <scp_service_row::Row row>
  using Value = ServiceValue<&CameraDSP::setATW, row>;
  struct CSpeed : Value<ATW_SPEED> {};
  struct CErrEn : Value<ATW_ERR_EN> {};
  struct CErrHigh : Value<ATW_ERR_H> {};
  struct CErrLow : Value<ATW_ERR_L> {};
  struct CRestart : Value<ATW_RESTART> {};
};

/** The ranges stand under the white balance as well as beside it. */
struct CAdjustService::CRange : CCameraApiBase {
  struct CWide;
  struct CNarrow;
};

struct CAdjustService::CRange::CWide : CCameraApiBase {
  template <scp_service_row::Row row>
  using Value = ServiceValue<&CameraDSP::setATWWide, row>;
  struct CR : Value<W_R_RANGE> {};
  struct CB : Value<W_B_RANGE> {};
  struct CGLow : Value<W_G_RANGE_LOW> {};
  struct CGNorm : Value<W_G_RANGE_NORM> {};
  struct CGHigh : Value<W_G_RANGE_HIGH> {};
  struct CMgLow : Value<W_MG_RANGE_LOW> {};
  struct CMgNorm : Value<W_MG_RANGE_NORM> {};
  struct CMgHigh : Value<W_MG_RANGE_HIGH> {};
};

struct CAdjustService::CRange::CNarrow : CCameraApiBase {
  template <scp_service_row::Row row>
  using Value = ServiceValue<&CameraDSP::setATWNarrow, row>;
  struct CR : Value<N_R_RANGE> {};
  struct CB : Value<N_B_RANGE> {};
  struct CGLow : Value<N_G_RANGE_LOW> {};
  struct CGNorm : Value<N_G_RANGE_NORM> {};
  struct CGHigh : Value<N_G_RANGE_HIGH> {};
  struct CMgLow : Value<N_MG_RANGE_LOW> {};
  struct CMgNorm : Value<N_MG_RANGE_NORM> {};
  struct CMgHigh : Value<N_MG_RANGE_HIGH> {};
};

// ---- The rest ------------------------------------------------------------------------------------------------------

struct CAdjustService::CLumx : CCameraApiBase {
  template <scp_service_row::Row row>
  using Value = ServiceValue<&CameraDSP::setLUMX, row>;
  struct CSpeed : Value<ET_LUMX_SPEED> {};
  struct CGain : Value<ET_LUMX_GAIN> {};
};

/** Identity and versions of the DSP. */
struct CAdjustService::CInformation : CCameraApiBase {
  static constexpr Rule rule{.fetch = fromDsp<&CameraDSP::getSCPInformation>};
};

struct CAdjustService::CStatus : CCameraApiBase {
  static int32_t save(Request& request);
  static constexpr Rule rule{.commands = {{{"save", save}}}};
};

}  // namespace Camera
