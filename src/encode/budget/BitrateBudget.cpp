#include "encode/budget/BitrateBudget.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <limits>
#include <string_view>

#include "encoder/StoredNumber.h"
#include "request/Log.h"

namespace {

constexpr std::size_t kChannels = 3;

/** What the sessions take, in kilobits per second by channel, for each kind of encoder. */
template <typename Number>
struct SessionRates {
  using Rates = std::array<Number, kChannels>;

  Rates jpeg{};
  Rates mpeg4{};
  Rates h264{};

  /** The rates that sessions of this encoder add to; nullptr for one that does not count. */
  Rates* of(std::string_view type) {
    if (type == "jpeg") return &jpeg;
    if (type == "mpeg4") return &mpeg4;
    return type == "h264baseline" || type == "h264high" ? &h264 : nullptr;
  }

  void add(const SessionSlot& session, Number rate) {
    Rates* rates = of(session.type);
    const int32_t channel = storedInteger(session.channel);
    if (rates == nullptr || channel < 0 || static_cast<std::size_t>(channel) >= kChannels) return;
    (*rates)[static_cast<std::size_t>(channel)] += rate;
  }
};

/** The product, or the nearest there is when it does not fit. */
int64_t product(std::initializer_list<int64_t> factors) {
  int64_t result = 1;
  for (const int64_t factor : factors) {
    const bool isNegative = (result < 0) != (factor < 0);
    if (__builtin_mul_overflow(result, factor, &result)) {
      result = isNegative ? std::numeric_limits<int64_t>::min() : std::numeric_limits<int64_t>::max();
    }
  }
  return result;
}

/** Puts the sessions' rate of a stream channel to the new bit rate; without a base rate it stays as it is. */
void rescaleStream(float& term, const std::string& oldBits, int32_t newBits) {
  const int64_t base = bitrate_budget::encoderReplaceforOverRate(cutToWhole(term), storedInteger(oldBits)) / 1000;
  const int32_t kilobits = newBits / 1000;
  if (base > 0) term = term * static_cast<float>(kilobits) / static_cast<float>(base);
}

/**
 * Puts the sessions' rate of a jpeg channel to the new picture size, in whole numbers. With legal settings (30 pictures
 * of 320 kilobytes) and a term within the budget the products fit into 32 bits; beyond that the result is held at the
 * 32-bit limits.
 */
void rescaleJpeg(int64_t& term, int32_t framerate, int32_t oldQuality, int32_t newQuality) {
  const int64_t baseBits = product({framerate, oldQuality, 8000});
  const int64_t base = bitrate_budget::encoderReplaceforOverRate(term, baseBits) / 1000;
  if (base <= 0) return;
  term = std::clamp<int64_t>(product({framerate, 8, newQuality, term}) / base, std::numeric_limits<int32_t>::min(),
                             std::numeric_limits<int32_t>::max());
}

}  // namespace

int64_t bitrate_budget::encoderReplaceforOverRate(int64_t sessionKilobits, int64_t baseBits) {
  const int64_t base = baseBits / 1000;
  int64_t bits = base * 1000;
  if (base > 0 && sessionKilobits > 2 * base) bits = sessionKilobits / base * bits;
  TMX_LOG(LOG_WARNING, "base(%ld)kbps:session(%ld)kbps-> abso(%ld)bps", static_cast<long>(base),
          static_cast<long>(sessionKilobits), static_cast<long>(bits));
  return bits;
}

int32_t bitrate_budget::checkForStream(std::span<const SessionSlot> sessions, const Config& config, int32_t newBits,
                                       int32_t channel) {
  SessionRates<float> rates;
  for (const SessionSlot& session : sessions) {
    TMX_LOG(LOG_DEBUG, "rate(%s)", session.rate.c_str());
    TMX_LOG(LOG_DEBUG, "--- session(%s)----", session.type.c_str());
    rates.add(session, storedFloat(session.rate));
  }

  auto* target = rates.of(config.getEncodeConfig(channel, encode_row::ENCTYPE_CH));
  if (target != nullptr && target != &rates.jpeg) {
    rescaleStream(target->at(static_cast<std::size_t>(channel)), config.getEncodeConfig(channel, encode_row::BITRATE),
                  newBits);
  }

  int32_t total = 0;
  for (std::size_t i = 0; i < kChannels; ++i) {
    for (const float rate : {rates.mpeg4[i], rates.h264[i], rates.jpeg[i]}) {
      total = cutToWhole(static_cast<float>(total) + rate);
    }
  }
  TMX_LOG(LOG_INFO, "H264/MPEG4 Total bitrate[%ld kbps] ", static_cast<long>(total));
  return total > kLimitKilobits ? -1 : 0;
}

int32_t bitrate_budget::checkForJpeg(std::span<const SessionSlot> sessions, const Config& config, int32_t newQuality,
                                     int32_t channel) {
  SessionRates<int64_t> rates;
  for (const SessionSlot& session : sessions)
    rates.add(session, storedInteger(session.rate));

  int64_t& target = rates.jpeg.at(static_cast<std::size_t>(channel));
  if (target != 0) {
    rescaleJpeg(target, storedInteger(config.getEncodeConfig(channel, encode_row::FRAME_RATE)),
                storedInteger(config.getEncodeConfig(channel, encode_row::QUALITY)), newQuality);
  }

  int64_t total = 0;
  for (std::size_t i = 0; i < kChannels; ++i)
    total += rates.h264[i] + rates.mpeg4[i] + rates.jpeg[i];
  TMX_LOG(LOG_INFO, "JPEG Total bitrate[%ld] ", static_cast<long>(total));
  return total > kLimitKilobits ? -1 : 0;
}
