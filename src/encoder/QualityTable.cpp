#include "encoder/QualityTable.h"

#include "encoder/StoredNumber.h"

namespace {

struct FramesizeQuality {
  std::string_view framesize;
  std::string_view secondSpelling;
  QualityRow row;
};

constexpr FramesizeQuality kQualities[] = {
    {"1920x1080", {}, {320, {280, 240, 200, 160, 120}, 80}},
    {"1280x960", "quadvga", {180, {160, 140, 120, 100, 80}, 60}},
    {"1280x720", {}, {180, {160, 140, 120, 100, 80}, 60}},
    {"640x480", "vga", {80, {60, 40, 30, 25, 20}, 15}},
    {"640x360", {}, {80, {60, 40, 30, 25, 20}, 15}},
    {"320x240", "qvga", {27, {20, 13, 10, 8, 7}, 5}},
    {"320x180", {}, {33, {20, 13, 10, 8, 7}, 5}},
};

}  // namespace

const QualityRow* qualityRow(std::string_view framesize) {
  if (framesize.empty()) return nullptr;
  for (const FramesizeQuality& quality : kQualities) {
    if (quality.framesize == framesize || quality.secondSpelling == framesize) return &quality.row;
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
