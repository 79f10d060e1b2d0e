#include "encode/Range.h"

#include <algorithm>
#include <string_view>

#include "config/Config.h"
#include "encoder/RangeSetup.h"
#include "encoder/StoredNumber.h"

namespace Encode {
namespace {

std::string stored(int32_t channel, int32_t row) { return Config::getInstance()->getEncodeConfig(channel - 1, row); }

bool isLimited(int32_t channel, int32_t limitRow) {
  return stored(1, limitRow) == "on" && stored(channel, encode_row::ENC_STATUS) == "on";
}

struct Ends {
  explicit Ends(const std::string& range)
      : low(range.substr(0, range.find('-'))), high(storedInteger(std::string_view(range).substr(low.size() + 1))) {}

  std::string low;
  int32_t high;
};

}  // namespace

RangeQuestion::RangeQuestion(const Selectors& selectors) : channel(CEncodeApiBase::m_getChannel(selectors)) {
  const std::string& text = selectors[1];
  const size_t comma = std::min(text.find(','), text.size());
  encoder = text.substr(0, comma);
  if (comma < text.size()) framesize = text.substr(comma + 1);
}

int32_t RangeQuestion::setUp(EncodeRangeData& range) const {
  const int32_t result = encoderRangeInfoSetup(range, *Config::getInstance(), encoder, framesize, channel);
  return result < 0 ? -status::kNotUnderstood : 0;
}

int32_t fetchRange(const Request& request, RangeGetter getter, std::string& text) {
  const RangeQuestion question(request.selectors);
  EncodeRangeData range;
  const int32_t refused = question.setUp(range);
  if (refused < 0) return refused;
  text = (range.*getter)(question.channel);
  return 0;
}

int32_t CRange::CQuality::fetch(const Request& request, std::string& text) {
  if (RangeQuestion(request.selectors).encoder != "jpeg") return -status::kNotUnderstood;
  return fetchRange(request, &EncodeRangeData::getQualityRange, text);
}

int32_t CRange::CFramesize::fetch(const Request& request, std::string& text) {
  RangeQuestion question(request.selectors);
  question.framesize = "none";
  EncodeRangeData range;
  const int32_t refused = question.setUp(range);
  if (refused < 0) return refused;
  text = range.getFramesizeRange();
  return 0;
}

std::string CRange::CFramerate::narrow(int32_t channel, const std::string& range) {
  if (!isLimited(channel, encode_row::RANGE_FRAMERATE_LIMIT)) return range;
  const Ends ends(range);
  const double rate = std::min<double>(storedDouble(stored(channel, encode_row::FRAME_RATE)), ends.high);
  return ends.low + "-" + std::to_string(cutToWhole(rate + 0.5));
}

std::string CRange::CIframeinterval::narrow(int32_t channel, const std::string& range) {
  if (!isLimited(channel, encode_row::RANGE_IFRAMEINTERVAL_LIMIT)) return range;
  const Ends ends(range);
  // The first channel's interval ends the range of all channels.
  const int32_t interval = std::min(storedInteger(stored(1, encode_row::IFRAME_INTERVAL)), ends.high);
  return ends.low + "-" + std::to_string(interval);
}

}  // namespace Encode
