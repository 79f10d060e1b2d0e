#pragma once

#include <cstdint>
#include <span>

#include "config/Rows.h"
#include "dsp/Frame.h"

namespace dsp {

/** How a limit stands to its partner limit in the working copy. */
enum class Order { Free, Above, Below };

/** One service value: its row, its place in the frame, its range. */
struct ServiceItem {
  int32_t row;
  Field field;
  int32_t minimum;
  int32_t maximum;
  const char* name;  ///< as the logs name it
  Order order = Order::Free;
  int32_t partnerRow = -1;
  const char* orderText = nullptr;
};

/** The service values that share a frame. */
struct ServiceGroup {
  uint8_t address;
  std::span<const ServiceItem> items;
  const char* sendFailed;  ///< logged with the text of errno behind it
  const char* readFailed;
};

namespace service {
namespace row = scp_service_row;

inline constexpr ServiceItem kAlcItems[] = {
    {row::ALC_SPEED, frame::kAlcSpeed, 1, 100, "speed"},
    {row::ALC_ERR_EN, frame::kAlcErrEn, 0, 1600, "err_en"},
    {row::ALC_ERR_H, frame::kAlcErrHigh, 0, 1600, "err_h", Order::Above, row::ALC_ERR_L, "err_h smaller than err_l"},
    {row::ALC_ERR_L, frame::kAlcErrLow, 0, 1600, "err_l", Order::Below, row::ALC_ERR_H, "err_l larger than err_h"},
    {row::ALC_RESTART, frame::kAlcRestart, 0, 5, "restart"},
    {row::DN_HYSTERESIS_TRUEDN, frame::kAlcDayNightHysteresis, 6, 30, "dn_hysteresis"},
    {row::DN_HYSTERESIS_EASYDN, frame::kAlcDayNightHysteresis, 6, 30, "dn_hysteresis"},
};

inline constexpr char kHighSmaller[] = "limit_high smaller than limit_low";
inline constexpr char kLowLarger[] = "limit_low larger than limit_high";

/** The iris loop has one set of values for each lens. */
inline constexpr ServiceItem kIrisItems[] = {
    {row::IRIS_START, frame::kIrisStart, 0, 3318, "start"},
    {row::IRIS_INTGAIN, frame::kIrisIntGain, 1, 3200, "intgain"},
    {row::IRIS_PROGAIN, frame::kIrisProGain, 1, 3200, "progain"},
    {row::IRIS_LIMIT_H, frame::kIrisLimitHigh, 0, 3318, "limit_high", Order::Above, row::IRIS_LIMIT_L, kHighSmaller},
    {row::IRIS_LIMIT_L, frame::kIrisLimitLow, 0, 3318, "limit_low", Order::Below, row::IRIS_LIMIT_H, kLowLarger},
    {row::SUB_IRIS_START, frame::kIrisStart, 0, 3318, "start"},
    {row::SUB_IRIS_INTGAIN, frame::kIrisIntGain, 1, 3200, "intgain"},
    {row::SUB_IRIS_PROGAIN, frame::kIrisProGain, 1, 3200, "progain"},
    {row::SUB_IRIS_LIMIT_H, frame::kIrisLimitHigh, 0, 3318, "limit_high", Order::Above, row::SUB_IRIS_LIMIT_L,
     kHighSmaller},
    {row::SUB_IRIS_LIMIT_L, frame::kIrisLimitLow, 0, 3318, "limit_low", Order::Below, row::SUB_IRIS_LIMIT_H,
     kLowLarger},
};

inline constexpr ServiceItem kAtwItems[] = {
    {row::ATW_SPEED, frame::kAtwSpeed, 1, 255, "speed"},
    {row::ATW_ERR_EN, frame::kAtwErrEn, 1, 1600, "err_en"},
    {row::ATW_ERR_H, frame::kAtwErrHigh, 1, 1600, "err_h", Order::Above, row::ATW_ERR_L, "err_h smaller than err_l"},
    {row::ATW_ERR_L, frame::kAtwErrLow, 1, 1600, "err_l", Order::Below, row::ATW_ERR_H, "err_l larger than err_h"},
    {row::ATW_RESTART, frame::kAtwRestart, 0, 100, "restart"},
};

inline constexpr ServiceItem kWideItems[] = {
    {row::W_R_RANGE, {frame::kAtwWide, 1, 1}, -15, 16, "w_r"},
    {row::W_B_RANGE, {frame::kAtwWide, 2, 1}, -15, 16, "w_b"},
    {row::W_G_RANGE_LOW, {frame::kAtwWide, 3, 1}, 1, 16, "w_g_low"},
    {row::W_G_RANGE_NORM, {frame::kAtwWide, 4, 1}, 1, 16, "w_g_norm"},
    {row::W_G_RANGE_HIGH, {frame::kAtwWide, 5, 1}, 1, 16, "w_g_high"},
    {row::W_MG_RANGE_LOW, {frame::kAtwWide, 6, 1}, 1, 16, "w_mg_low"},
    {row::W_MG_RANGE_NORM, {frame::kAtwWide, 7, 1}, 1, 16, "w_mg_norm"},
    {row::W_MG_RANGE_HIGH, {frame::kAtwWide, 8, 1}, 1, 16, "w_mg_high"},
};

inline constexpr ServiceItem kNarrowItems[] = {
    {row::N_R_RANGE, {frame::kAtwNarrow, 1, 1}, -15, 16, "n_r"},
    {row::N_B_RANGE, {frame::kAtwNarrow, 2, 1}, -15, 16, "n_b"},
    {row::N_G_RANGE_LOW, {frame::kAtwNarrow, 3, 1}, 1, 16, "n_g_low"},
    {row::N_G_RANGE_NORM, {frame::kAtwNarrow, 4, 1}, 1, 16, "n_g_norm"},
    {row::N_G_RANGE_HIGH, {frame::kAtwNarrow, 5, 1}, 1, 16, "n_g_high"},
    {row::N_MG_RANGE_LOW, {frame::kAtwNarrow, 6, 1}, 1, 16, "n_mg_low"},
    {row::N_MG_RANGE_NORM, {frame::kAtwNarrow, 7, 1}, 1, 16, "n_mg_norm"},
    {row::N_MG_RANGE_HIGH, {frame::kAtwNarrow, 8, 1}, 1, 16, "n_mg_high"},
};

inline constexpr ServiceItem kLumxItems[] = {
    {row::ET_LUMX_SPEED, frame::kLumxSpeed, 1, 255, "speed"},
    {row::ET_LUMX_GAIN, frame::kLumxGain, 1, 5, "gain"},
};

inline constexpr ServiceItem kAfForIrItems[] = {
    {row::AF_FOR_IR, frame::kAfForIr, 0, 100, "af_for_ir"},
};

inline constexpr ServiceGroup kAlc{0x38, kAlcItems, "ALC send error", "get alc error "};
inline constexpr ServiceGroup kIris{0x39, kIrisItems, "iris send error", "get iris error "};
inline constexpr ServiceGroup kAtw{0x58, kAtwItems, "ATW send error", "get atw error "};
inline constexpr ServiceGroup kWide{0x59, kWideItems, "ATW WIDE send error", "get atw wide error "};
inline constexpr ServiceGroup kNarrow{0x5A, kNarrowItems, " ATW NARROW send error", "get atw narrow error "};
inline constexpr ServiceGroup kLumx{0x78, kLumxItems, "LUMX send error", "get lumx error "};
inline constexpr ServiceGroup kAfForIr{0x82, kAfForIrItems, "af for ir send error", "get af for ir error "};

inline constexpr const ServiceGroup* kGroups[] = {&kAlc, &kIris, &kAtw, &kWide, &kNarrow, &kLumx, &kAfForIr};

/** What the tables say of a row. */
[[nodiscard]] constexpr const ServiceItem& itemOf(row::Row row) {
  const ServiceItem* found = nullptr;
  for (const ServiceGroup* group : kGroups) {
    for (const ServiceItem& item : group->items) {
      if (item.row == row) found = &item;
    }
  }
  return *found;
}
}  // namespace service

/** One calibration value of the camdsp table: its place in the frame; the value is cut to the field's width. */
struct AdjustItem {
  int32_t row;
  Field field;
  bool endsFrame;  ///< the last one of its frame in a load, which sends the frame
};

inline constexpr AdjustItem kAdjustItems[] = {
    {camdsp_row::PREWBNORMR, frame::kPreWbNormalRed, false},
    {camdsp_row::PREWBNORMB, frame::kPreWbNormalBlue, false},
    {camdsp_row::PREWBLOWR, frame::kPreWbLowRed, false},
    {camdsp_row::PREWBLOWB, frame::kPreWbLowBlue, false},
    {camdsp_row::PREWBHIGHR, frame::kPreWbHighRed, true},
    {camdsp_row::PREWBHIGHB, frame::kPreWbHighBlue, true},
    {camdsp_row::IRYGAIN1, frame::kIrYGain, false},
    {camdsp_row::IBYGAIN1, frame::kIbYGain, false},
    {camdsp_row::IRYHUE1, frame::kIrYHue, false},
    {camdsp_row::IBYHUE1, frame::kIbYHue, true},
};

/** The largest value that fits into the field of a row of kAdjustItems. */
[[nodiscard]] constexpr int32_t largestAdjust(camdsp_row::Row row) {
  const AdjustItem* item = kAdjustItems;
  while (item->row != row)
    ++item;
  return (1 << 8 * item->field.width) - 1;
}

}  // namespace dsp
