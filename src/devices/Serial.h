#pragma once

#include "devices/CPeripheralApiBase.h"
#include "tree/Leaf.h"

namespace Peripheral {

class CSerialCount : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CSerial : public Leaf<CSerial, CPeripheralApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::SERIAL_PASS>,
                                     .takes = SelectorNumber{.low = 1, .high = 1}};
  class CBaud;
  class CBit;
  class CParity;
  class CStopbit;
  class CComment;
  class CRtsOffset;
};

class CSerial::CBaud : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CSerial::CBit : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CSerial::CParity : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CSerial::CStopbit : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CSerial::CComment : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CSerial::CRtsOffset : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

}  // namespace Peripheral
