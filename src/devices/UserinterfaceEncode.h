#pragma once

#include "devices/CUserinterfaceApiBase.h"
#include "tree/Leaf.h"

namespace Userinterface {

class CEncode : public Leaf<CEncode, CUserinterfaceApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 3}};
  class CCbrMode;
};

/** The rate-control word that the user interface remembers for a channel and a codec; it reaches no encoder. */
class CEncode::CCbrMode : public Leaf<CCbrMode, CUserinterfaceApiBase> {
 public:
  using Leaf::Leaf;
  static Cell locate(const Selectors& selectors, int32_t row);
  static constexpr Words codecs{"jpeg", "h264high", "h264baseline", "mpeg4"};  // in the order of a channel's rows
  static constexpr Selector selector{.empty = status::kNotUnderstood, .takes = SelectorWord{.words = codecs}};
  static constexpr Rule rule{
      .accepts = Words{"afs", "vfs", "vbr", "cbr"},
      .place = {.family = Family::Ui, .locate = locate},
      .keeps = Keeps::WriteThrough,
  };
};

}  // namespace Userinterface
