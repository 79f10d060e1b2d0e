#pragma once

#include "devices/CPeripheralApiBase.h"
#include "tree/Node.h"

namespace Peripheral {

struct CSerialCount : CPeripheralApiBase {};

struct CSerial : CPeripheralApiBase {
  static constexpr Selector selector{.available = has<Feature::SERIAL_PASS>,
                                     .takes = SelectorNumber{.low = 1, .high = 1}};
  struct CBaud;
  struct CBit;
  struct CParity;
  struct CStopbit;
  struct CComment;
  struct CRtsOffset;
};

struct CSerial::CBaud : CPeripheralApiBase {};

struct CSerial::CBit : CPeripheralApiBase {};

struct CSerial::CParity : CPeripheralApiBase {};

struct CSerial::CStopbit : CPeripheralApiBase {};

struct CSerial::CComment : CPeripheralApiBase {};

struct CSerial::CRtsOffset : CPeripheralApiBase {};

}  // namespace Peripheral
