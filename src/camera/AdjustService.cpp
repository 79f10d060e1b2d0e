#include "camera/AdjustService.h"

#include <array>

#include "config/Config.h"
#include "request/Log.h"

namespace Camera {
namespace {

namespace row = scp_service_row;

constexpr auto irisRows() {
  constexpr int32_t kOfLens = row::IRIS_LIMIT_L - row::IRIS_START + 1;
  std::array<Row, 2 * static_cast<size_t>(kOfLens)> rows;
  for (int32_t i = 0; i < kOfLens; ++i) {
    rows[static_cast<size_t>(i)] = {Family::ScpService, row::IRIS_START + i};
    rows[static_cast<size_t>(kOfLens + i)] = {Family::ScpService, row::SUB_IRIS_START + i};
  }
  return rows;
}

/** The row of the lens that is fitted; a built-in lens is the first one, whatever is stored. */
int32_t rowOfLens(int32_t firstLens) {
  const std::string lens = CUserConfig::getInstance()->get(camera_row::IRIS_LENSTYPE);
  const bool isSecond = lens == "lens2" && !ModelFeature::has(Feature::LENS_MODEL);
  const int32_t inUse = isSecond ? firstLens - row::IRIS_START + row::SUB_IRIS_START : firstLens;
  TMX_LOG(LOG_DEBUG, " runParam(%s):lens(%s): runId(%ld) ", dsp::service::itemOf(static_cast<row::Row>(firstLens)).name,
          lens.c_str(), long{inUse});
  return inUse;
}

}  // namespace

Cell CAdjustService::CAlc::CDnHysteresis::locate(const Selectors& /*selectors*/, Row /*row*/) {
  return {ModelFeature::has(Feature::DAY_NIGHT) ? DN_HYSTERESIS_TRUEDN : DN_HYSTERESIS_EASYDN};
}

int32_t CAdjustService::CAlc::CDnHysteresis::act(Request& request) {
  return cameraDsp().setALC(rule.place.cell(request.selectors).row.number, request.number);
}

Cell locateIris(const Selectors& /*selectors*/, Row row) { return {Row{row.family, rowOfLens(row.number)}}; }

int32_t actIris(scp_service_row::Row row, int32_t value) {
  static constexpr auto kRows = irisRows();
  const int32_t result = cameraDsp().setIris(rowOfLens(row), value);
  if (result == dsp::kDone) Config::getInstance()->adopt(*CUserConfig::getInstance(), kRows);
  return result;
}

int32_t CAdjustService::CStatus::save(Request& /*request*/) {
  return Config::getInstance()->save(Family::ScpService) == Config::kDone ? 0 : -status::kInternalError;
}

}  // namespace Camera
