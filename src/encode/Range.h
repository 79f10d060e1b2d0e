#pragma once

#include <cstdint>
#include <string>

#include "encode/CEncodeApiBase.h"
#include "encoder/EncodeRangeData.h"
#include "tree/Leaf.h"

/** What one encoder channel may be set to while the two others do what they do. */
namespace Encode {

/** The selector is the encoder in question, or the encoder and the frame size, "jpeg,1280x720". */
class CRange : public Leaf<CRange, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{
      .empty = status::kNotUnderstood,
      .takes = SelectorWord{.words = Words{"jpeg", "h264high", "h264baseline"}, .firstPartOnly = true}};
  class CQuality;
  class CFramesize;
  class CFramerate;
  class CBitrate;
  class CIframeinterval;
  class CFramerateLimit;
  class CIframeintervalLimit;
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

/** A range by its getter. `Derived` may state `narrow(channel, text)`, which changes the range before it is shown. */
template <class Derived, std::string (EncodeRangeData::*Getter)(int32_t)>
class RangeItem : public Leaf<Derived, CEncodeApiBase> {
 public:
  using Leaf<Derived, CEncodeApiBase>::Leaf;
  int32_t fetch(const Request& request, std::string& text) {
    const RangeQuestion question(request.selectors);
    EncodeRangeData range;
    const int32_t refused = question.setUp(range);
    if (refused < 0) return refused;
    text = (range.*Getter)(question.channel);
    if constexpr (requires { Derived::narrow(question.channel, text); }) text = Derived::narrow(question.channel, text);
    return 0;
  }
};

class CRange::CQuality : public RangeItem<CQuality, &EncodeRangeData::getQualityRange> {
 public:
  using RangeItem::RangeItem;
  /** Only jpeg pictures have a size. */
  int32_t fetch(const Request& request, std::string& text);
};

class CRange::CFramesize : public Leaf<CFramesize, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

class CRange::CFramerate : public RangeItem<CFramerate, &EncodeRangeData::getFramerateRange> {
 public:
  using RangeItem::RangeItem;
  static std::string narrow(int32_t channel, const std::string& range);
};

class CRange::CBitrate : public RangeItem<CBitrate, &EncodeRangeData::getBitrateRange> {
 public:
  using RangeItem::RangeItem;
};

class CRange::CIframeinterval : public RangeItem<CIframeinterval, &EncodeRangeData::getIframeintervalRange> {
 public:
  using RangeItem::RangeItem;
  static std::string narrow(int32_t channel, const std::string& range);
};

/** Keeps a text in the channels 2 and 3. */
void keepInOtherChannels(int32_t row, const std::string& text);

/** Whether a range ends at what is now configured: one answer for all channels, kept in each of them. */
template <class Derived, int32_t Row>
class RangeLimit : public Leaf<Derived, CEncodeApiBase> {
 public:
  using Leaf<Derived, CEncodeApiBase>::Leaf;
  static constexpr Rule rule{
      .accepts = Words{"on", "off"},
      .place = {.family = Family::Encode, .row = Row},
      .keeps = Keeps::InMemory,
      .unchanged = Unchanged::BeforeTest,
      .compares = Image::User,
      .answers = CEncodeApiBase::kSaveHint,
  };
  int32_t act(Request& request) {
    keepInOtherChannels(Row, request.value);
    return 0;
  }
};

class CRange::CFramerateLimit : public RangeLimit<CFramerateLimit, encode_row::RANGE_FRAMERATE_LIMIT> {
 public:
  using RangeLimit::RangeLimit;
};

class CRange::CIframeintervalLimit : public RangeLimit<CIframeintervalLimit, encode_row::RANGE_IFRAMEINTERVAL_LIMIT> {
 public:
  using RangeLimit::RangeLimit;
};

}  // namespace Encode
