#pragma once

#include <cstdint>
#include <string>

#include "encode/CEncodeApiBase.h"

/** The settings of one encoder channel; each write is staged until `encode.status=save`. */
namespace Encode {

/** The codec, or "off" for a channel that is not encoded; a channel that is off keeps its codec for the next "on". */
struct CType : CEncodeApiBase {
  static int32_t act(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Words{"jpeg", "mpeg4", "h264baseline", "h264high", "off"},
      .place = ofChannel(encode_row::ENCTYPE_CH),
      .act = act,
      .fetch = fetch,
      .answers = kSaveHint,
  };
};

struct CFramesize : CEncodeApiBase {
  static constexpr Rule rule =
      staged(Words{"1920x1080", "quadvga", "1280x960", "1280x720", "vga", "640x480", "qvga", "320x240", "640x360"},
             encode_row::FRAME_SIZE);
};

/** Frames per second, 1 to 30, put to the nearest rate below that the encoder has. */
struct CFramerate : CEncodeApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule = staged(Decimal{.low = 1, .high = 30}, encode_row::FRAME_RATE, act);
};

/** Bits per second, within the budget of the live sessions. */
struct CBitrate : CEncodeApiBase {
  static int32_t checkRate(Request& request);
  static constexpr Rule rule =
      staged(Test{checkRate, {"64000 to 8000000, within the budget of the live streams", "1000000", "x"}},
             encode_row::BITRATE);
};

/** The size of a jpeg picture in kilobytes, within the budget of the live sessions; a write may carry the unit too. */
struct CQuality : CEncodeApiBase {
  static int32_t checkSize(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Test{checkSize,
                      {"5 to 320, k behind it is allowed, within the budget of the live streams", "80 80k", "80m x"}},
      .place = ofChannel(encode_row::QUALITY),
      .fetch = fetch,
      .keeps = Keeps::InMemory,
      .unchanged = Unchanged::AfterTest,
      .compares = Image::User,
      .shows = {.suffix = "k"},
      .answers = kSaveHint,
  };
};

struct CIframeinterval : CEncodeApiBase {
  static constexpr Rule rule = staged(Number{.low = 1, .high = 255}, encode_row::IFRAME_INTERVAL);
};

/** Which mode fits which codec is asked when the staged values are taken over. */
struct CCbrMode : CEncodeApiBase {
  static constexpr Rule rule = staged(Words{"vfs", "afs", "vbr", "cbr"}, encode_row::CBR_MODE);
};

struct CSource : CEncodeApiBase {
  static constexpr Rule rule{.shows = {.fixed = "camera"}};
};

}  // namespace Encode
