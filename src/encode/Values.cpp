#include "encode/Values.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "config/Config.h"
#include "encode/budget/BitrateBudget.h"
#include "encoder/StoredNumber.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/Numbers.h"
#include "service/Session.h"

namespace Encode {
namespace {

int32_t channelIndex(const Request& request) { return CEncodeApiBase::m_getChannel(request.selectors) - 1; }

std::string configText(const Request& request, int32_t row) {
  return Config::getInstance()->getEncodeConfig(channelIndex(request), row);
}

std::string userText(const Request& request, int32_t row) {
  return CUserConfig::getInstance()->getEncodeConfig(channelIndex(request), row);
}

void stage(const Request& request, int32_t row, const std::string& value) {
  CUserConfig::getInstance()->setEncodeConfig(channelIndex(request), row, value);
  Config::getInstance()->setEncodeConfig(channelIndex(request), row, value);
}

std::vector<SessionSlot> liveSessions(const Session& daemon) {
  std::vector<SessionSlot> sessions;
  for (int32_t slot = 1; slot <= bitrate_budget::kSessionSlots; ++slot) {
    const std::string rate = daemon.getSendingBitrate(slot);
    if (rate == "0") continue;  // the slot is free
    sessions.push_back(
        {.channel = daemon.getSendingFromFramesize(slot), .rate = rate, .type = daemon.getSendingFromEncode(slot)});
  }
  return sessions;
}

/** Whether the new value leaves the live sessions within their budget; one session alone always does. */
bool fitsBudget(const Request& request, decltype(bitrate_budget::checkForStream)* check) {
  const Session daemon;
  if (storedInteger(daemon.getSessionCount()) <= 1) return true;
  return check(liveSessions(daemon), *CUserConfig::getInstance(), request.number, channelIndex(request)) >= 0;
}

struct GridRate {
  float atLeast;
  double rate;
};

/** The rates of the encoder, from the highest. */
constexpr GridRate kGrid[] = {
    {30.0F, 30}, {25.0F, 25}, {15.0F, 15}, {10.0F, 10}, {7.0F, 7.5}, {5.0F, 5}, {3.0F, 3}, {2.0F, 2},
};

double toGrid(float rate, bool isJpeg) {
  for (const GridRate& row : kGrid) {
    if (isJpeg && row.rate == 25) continue;
    if (rate >= row.atLeast) return row.rate;
  }
  return 1;
}

}  // namespace

int32_t CType::fetch(const Request& request, std::string& text) {
  const bool isOff = configText(request, encode_row::ENC_STATUS) == "off";
  text = isOff ? "off" : configText(request, encode_row::ENCTYPE_CH);
  return 0;
}

int32_t CType::act(Request& request) {
  if (request.value == "off") {
    if (channelIndex(request) == 0) return -status::kNotUnderstood;  // the first channel is always encoded
    stage(request, encode_row::ENC_STATUS, "off");
    return 0;
  }
  const bool isOff = configText(request, encode_row::ENC_STATUS) == "off";
  const bool isSame = configText(request, encode_row::ENCTYPE_CH) == request.value;
  if (isSame && !isOff) return kNothingWaits;
  stage(request, encode_row::ENC_STATUS, "on");
  if (!isSame) stage(request, encode_row::ENCTYPE_CH, request.value);
  return 0;
}

int32_t CFramerate::act(Request& request) {
  const float rate = parseFloat(request.value).value_or(0);
  const bool isJpeg = userText(request, encode_row::ENCTYPE_CH) == "jpeg";
  request.value = doubleToString(toGrid(rate, isJpeg));
  TMX_LOG(LOG_DEBUG, "set frame(%s) in(%f)", request.value.c_str(), static_cast<double>(rate));
  return 0;
}

int32_t CBitrate::checkRate(Request& request) {
  constexpr int32_t kLowest = 64'000;
  constexpr int32_t kHighest = 8'000'000;
  const auto rate = parseNumber(request.value);
  if (!rate) return -status::kNotUnderstood;
  if (*rate < kLowest || *rate > kHighest) return -status::kInvalidRange;
  request.number = *rate;
  return fitsBudget(request, bitrate_budget::checkForStream) ? 0 : -status::kNotEnoughBandwidth;
}

int32_t CQuality::checkSize(Request& request) {
  constexpr int32_t kSmallest = 5;
  constexpr int32_t kLargest = 320;
  // Only the character behind the number counts, whatever follows it.
  const size_t end = std::min(request.value.find_first_not_of("-0123456789"), request.value.size());
  const bool hasUnit = end < request.value.size();
  if (hasUnit && request.value[end] != 'k' && request.value[end] != 'K') return -status::kNotUnderstood;
  const auto size = parseNumber(std::string_view(request.value).substr(0, end));
  if (!size) return -status::kNotUnderstood;
  request.number = *size;
  if (!fitsBudget(request, bitrate_budget::checkForJpeg)) return -status::kNotEnoughBandwidth;
  if (request.number < kSmallest || request.number > kLargest) return -status::kInvalidRange;
  request.value = std::to_string(request.number);
  return 0;
}

int32_t CQuality::fetch(const Request& request, std::string& text) {
  text = configText(request, encode_row::QUALITY);
  if (text.ends_with('k') || text.ends_with('K')) text.pop_back();  // the built-in values carry the unit
  return 0;
}

}  // namespace Encode
