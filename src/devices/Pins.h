#pragma once

#include "devices/CPeripheralApiBase.h"
#include "tree/Node.h"

namespace Peripheral {

struct CInputPinCount : CPeripheralApiBase {};

struct COutputPinCount : CPeripheralApiBase {};

struct CInputPin : CPeripheralApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  struct CPin;
  struct CType;
  struct CStatus;
  struct CPinCount;
};

struct CInputPin::CPin : CPeripheralApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 2}};
  struct CChatter;
  struct CStatus;
};

struct CInputPin::CPin::CChatter : CPeripheralApiBase {};

struct CInputPin::CPin::CStatus : CPeripheralApiBase {};

struct CInputPin::CType : CPeripheralApiBase {};

struct CInputPin::CStatus : CPeripheralApiBase {};

struct CInputPin::CPinCount : CPeripheralApiBase {};

struct COutputPin : CPeripheralApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  struct CPin;
  struct CStatus;
  struct CType;
  struct CPinCount;
};

struct COutputPin::CPin : CPeripheralApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 2}};
  struct CDuration;
  struct CStatus;
};

struct COutputPin::CPin::CDuration : CPeripheralApiBase {};

struct COutputPin::CPin::CStatus : CPeripheralApiBase {};

struct COutputPin::CStatus : CPeripheralApiBase {};

struct COutputPin::CType : CPeripheralApiBase {};

struct COutputPin::CPinCount : CPeripheralApiBase {};

struct CSwitch : CPeripheralApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  struct CStatus;
};

struct CSwitch::CStatus : CPeripheralApiBase {};

}  // namespace Peripheral
