#include "network/OnvifProfile.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "encoder/StoredNumber.h"
#include "service/Numbers.h"

namespace onvif_profile {
namespace {

enum class Kind { Quoted, Plain, Decimal };  // in double quotes; as it is; with ".0" where it has no "."

/** A key of the profile and the value that it gets; without a value it stays as it is. */
struct Field {
  std::string_view key;
  Kind kind;
  size_t width;
  std::string value;
};

using Pair = std::pair<std::string, std::string>;

/** The names of an encoder type: codec, and profile of the codec (none for jpeg). */
Pair codecOf(const std::string& type) {
  if (type == "jpeg") return {"JPEG", ""};
  if (type == "mpeg4") return {"MP4", "SP"};
  if (type == "h264baseline") return {"H264", "Baseline"};
  if (type == "h264high") return {"H264", "High"};
  return {};
}

Pair sizeOf(std::string framesize) {
  if (framesize.find('x') == std::string::npos) {
    framesize = framesize == "qvga" ? "320x240" : framesize == "quadvga" ? "1280x960" : "640x480";
  }
  const size_t x = framesize.find('x');
  return {framesize.substr(0, x), framesize.substr(x + 1)};
}

/** "7.5" becomes "8"; a whole rate stays as it is. */
std::string wholeRate(const std::string& rate) {
  const double number = storedDouble(rate);
  if (rate.find('.') == std::string::npos || number <= 0) return rate;
  const std::string rounded = doubleToString(number + 0.5);
  return rounded.substr(0, rounded.find('.'));
}

std::string formed(const Field& field) {
  std::string text = field.value;
  if (field.kind == Kind::Quoted) text = '"' + text + '"';
  if (field.kind == Kind::Decimal && text.find('.') == std::string::npos) text += ".0";
  if (text.size() < field.width) text.resize(field.width, ' ');
  return text;
}

std::array<Field, 8> fieldsOf(const OnvifChannel& channel) {
  const auto [codec, profile] = codecOf(channel.type);
  const auto [width, height] = sizeOf(channel.framesize);
  const bool isJpeg = channel.type == "jpeg";
  const int32_t quality = isJpeg ? qualityValue(width, height, storedInteger(channel.quality)) : 0;
  return {{
      {"CODEC_TYPE", Kind::Quoted, 6, codec},
      {"QUALITY", Kind::Decimal, 5, std::to_string(quality)},
      {"WIDTH", Kind::Plain, 4, width},
      {"HEIGHT", Kind::Plain, 4, height},
      {"VIDEORATECONTROL_FPS_LIMIT", Kind::Plain, 2, wholeRate(channel.framerate)},
      {"VIDEORATECONTROL_BPS_LIMIT", Kind::Plain, 4, std::to_string(storedInteger(channel.bitrate) / 1000)},
      {"H264CFG_GOVLEN", Kind::Plain, 3, isJpeg ? "0" : channel.iframeInterval},
      {"H264CFG_PROFILE", Kind::Quoted, 10, profile},
  }};
}

}  // namespace

int32_t qualityValue(const std::string& width, const std::string& height, int32_t kilobytes) {
  struct Line {
    double slope, offset;
  };
  Line line{4.090909, 10.454545};
  if (width == "1920" && height == "1080") line = {0.375, 20.0};
  if (width == "1280" && (height == "960" || height == "720")) line = {0.75, 35.0};
  if (width == "640" && (height == "480" || height == "360")) line = {1.384615, 10.769231};
  return cutToWhole(kilobytes * line.slope - line.offset + 0.3);
}

std::string refreshed(const std::string& text, const OnvifChannel& channel) {
  const std::array<Field, 8> fields = fieldsOf(channel);
  std::string result;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find('\n', start), text.size());
    std::string line = text.substr(start, end - start);
    for (const Field& field : fields) {
      const std::string head = std::string(field.key) + "= ";
      if (line.starts_with(head) && !field.value.empty()) line = head + formed(field);
    }
    result += line;
    if (end < text.size()) result += '\n';
    start = end + 1;
  }
  return result;
}

}  // namespace onvif_profile
