#pragma once

#include <cstdint>
#include <string>

#include "encode/CEncodeApiBase.h"
#include "tree/Leaf.h"

/** The settings of one encoder channel; each write is staged until `encode.status=save`. */
namespace Encode {

/** The codec, or "off" for a channel that is not encoded; a channel that is off keeps its codec for the next "on". */
class CType : public Leaf<CType, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{
      .accepts = Words{"jpeg", "mpeg4", "h264baseline", "h264high", "off"},
      .place = ofChannel(encode_row::ENCTYPE_CH),
      .answers = kSaveHint,
  };
  int32_t fetch(const Request& request, std::string& text);
  int32_t act(Request& request);
};

class CFramesize : public Leaf<CFramesize, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkSize(Request& request);
  static constexpr Rule rule = stagedRule(Test{checkSize}, encode_row::FRAME_SIZE);
};

/** Frames per second, 1 to 30, put to the nearest rate below that the encoder has. */
class CFramerate : public Leaf<CFramerate, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkRate(Request& request);
  static constexpr Rule rule = stagedRule(Test{checkRate}, encode_row::FRAME_RATE);
  int32_t act(Request& request);
};

/** Bits per second, within the budget of the live sessions. */
class CBitrate : public Leaf<CBitrate, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkRate(Request& request);
  static constexpr Rule rule = stagedRule(Test{checkRate}, encode_row::BITRATE);
};

/** The size of a jpeg picture in kilobytes, within the budget of the live sessions; a write may carry the unit too. */
class CQuality : public Leaf<CQuality, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkSize(Request& request);
  static constexpr Rule rule = stagedRule(Test{checkSize}, encode_row::QUALITY, {.suffix = "k"});
  int32_t fetch(const Request& request, std::string& text);
};

class CIframeinterval : public Leaf<CIframeinterval, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule = stagedRule(Number{.low = 1, .high = 255}, encode_row::IFRAME_INTERVAL);
};

/** Which mode fits which codec is asked when the staged values are taken over. */
class CCbrMode : public Leaf<CCbrMode, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule = stagedRule(Words{"vfs", "afs", "vbr", "cbr"}, encode_row::CBR_MODE);
};

class CSource : public Leaf<CSource, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.shows = {.fixed = "camera"}};
};

}  // namespace Encode
