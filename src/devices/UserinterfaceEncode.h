#pragma once

#include "devices/CUserinterfaceApiBase.h"
#include "tree/Node.h"

namespace Userinterface {

struct CEncode : CUserinterfaceApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 3}, .without = "1"};
  struct CCbrMode;
};

/** The rate-control word that the user interface remembers for a channel and a codec; it reaches no encoder. */
struct CEncode::CCbrMode : CUserinterfaceApiBase {
  static Cell locate(const Selectors& selectors, Row row);
  static constexpr Words codecs{"jpeg", "h264high", "h264baseline", "mpeg4"};  // in the order of a channel's rows
  static constexpr Selector selector{.empty = status::kNotUnderstood, .takes = SelectorWord{.words = codecs}};
  static constexpr Rule rule{
      .accepts = Words{"afs", "vfs", "vbr", "cbr"},
      .place = {ui_row::UI_ENC1_CBRMODE_JPEG, locate},
      .keeps = Keeps::WriteThrough,
  };
};

}  // namespace Userinterface
