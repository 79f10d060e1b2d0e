#include "encoder/QualityTable.h"

#include "config/Framesizes.h"
#include "encoder/StoredNumber.h"

namespace {

struct HeightQuality {
  int32_t height;  ///< of the frame size, which it tells apart from the others
  QualityRow row;
};

constexpr HeightQuality kQualities[] = {
    {1080, {320, 80}}, {960, {180, 60}}, {720, {180, 60}}, {480, {80, 15}},
    {360, {80, 15}},   {240, {27, 5}},   {180, {33, 5}},
};

}  // namespace

const QualityRow* qualityRow(std::string_view framesize) {
  const Framesize* size = findFramesize(framesize);
  if (size == nullptr) return nullptr;
  for (const HeightQuality& quality : kQualities) {
    if (quality.height == size->height) return &quality.row;
  }
  return nullptr;
}

std::optional<std::string> qualityWithinLimits(std::string_view framesize, const std::string& quality) {
  const QualityRow* row = qualityRow(framesize);
  if (row == nullptr) return std::nullopt;
  const int32_t kilobytes = storedInteger(quality);
  if (kilobytes < row->lowerLimit) return std::to_string(row->lowerLimit);
  if (kilobytes > row->limit) return std::to_string(row->limit);
  return quality;
}
