#pragma once

#include <cstdint>
#include <string>

#include "encode/CEncodeApiBase.h"
#include "encoder/EncodeRangeData.h"

/** What one encoder channel may be set to while the two others do what they do. */
namespace Encode {

/** The selector is the encoder in question, or the encoder and the frame size, "jpeg,1280x720". */
struct CRange : CEncodeApiBase {
  static constexpr Selector selector{
      .empty = status::kNotUnderstood,
      .takes = SelectorWord{.words = Words{"jpeg", "h264high", "h264baseline"}, .firstPartOnly = true}};
  struct CQuality;
  struct CFramesize;
  struct CFramerate;
  struct CBitrate;
  struct CIframeinterval;
  struct CFramerateLimit;
  struct CIframeintervalLimit;
};

/** The question that a path asks. */
struct RangeQuestion {
  explicit RangeQuestion(const Selectors& selectors);

  /** Fills the range with the state of the camera and the question; 0 or -451. */
  [[nodiscard]] int32_t setUp(EncodeRangeData& range) const;

  int32_t channel;  ///< 1 to 3
  std::string encoder;
  std::string framesize;
};

using RangeGetter = std::string (EncodeRangeData::*)(int32_t);
[[nodiscard]] int32_t fetchRange(const Request& request, RangeGetter getter, std::string& text);

/** Rule::fetch of a range by its getter; `Narrow` may change the range of a channel before it is shown. */
template <RangeGetter Getter, std::string (*Narrow)(int32_t, const std::string&) = nullptr>
int32_t range(const Request& request, std::string& text) {
  const int32_t refused = fetchRange(request, Getter, text);
  if constexpr (Narrow != nullptr) {
    if (refused == 0) text = Narrow(CEncodeApiBase::m_getChannel(request.selectors), text);
  }
  return refused;
}

struct CRange::CQuality : CEncodeApiBase {
  /** Only jpeg pictures have a size. */
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

struct CRange::CFramesize : CEncodeApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

struct CRange::CFramerate : CEncodeApiBase {
  static std::string narrow(int32_t channel, const std::string& text);
  static constexpr Rule rule{.fetch = range<&EncodeRangeData::getFramerateRange, narrow>};
};

struct CRange::CBitrate : CEncodeApiBase {
  static constexpr Rule rule{.fetch = range<&EncodeRangeData::getBitrateRange>};
};

struct CRange::CIframeinterval : CEncodeApiBase {
  static std::string narrow(int32_t channel, const std::string& text);
  static constexpr Rule rule{.fetch = range<&EncodeRangeData::getIframeintervalRange, narrow>};
};

/** The same row of the channels 2 and 3. */
template <encode_row::Row Number>
std::vector<Cell> inOtherChannels(const Selectors& /*selectors*/) {
  return {{.row = Number, .table = 1}, {.row = Number, .table = 2}};
}

/** The rule of whether a range ends at what is now configured: one answer for all channels, kept in each of them. */
template <encode_row::Row Number>
constexpr Rule rangeLimit() {
  return {
      .accepts = Words{"on", "off"},
      .place = {Number, nullptr, inOtherChannels<Number>},
      .keeps = Keeps::InMemory,
      .unchanged = Unchanged::BeforeTest,
      .compares = Image::User,
      .answers = kSaveHint,
  };
}

struct CRange::CFramerateLimit : CEncodeApiBase {
  static constexpr Rule rule = rangeLimit<encode_row::RANGE_FRAMERATE_LIMIT>();
};

struct CRange::CIframeintervalLimit : CEncodeApiBase {
  static constexpr Rule rule = rangeLimit<encode_row::RANGE_IFRAMEINTERVAL_LIMIT>();
};

}  // namespace Encode
