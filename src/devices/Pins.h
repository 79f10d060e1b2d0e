#pragma once

#include "devices/CPeripheralApiBase.h"
#include "tree/Leaf.h"

namespace Peripheral {

class CInputPinCount : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class COutputPinCount : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CInputPin : public Leaf<CInputPin, CPeripheralApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  class CPin;
  class CType;
  class CStatus;
  class CPinCount;
};

class CInputPin::CPin : public Leaf<CInputPin::CPin, CPeripheralApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 2}};
  class CChatter;
  class CStatus;
};

class CInputPin::CPin::CChatter : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CInputPin::CPin::CStatus : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CInputPin::CType : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CInputPin::CStatus : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CInputPin::CPinCount : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class COutputPin : public Leaf<COutputPin, CPeripheralApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  class CPin;
  class CStatus;
  class CType;
  class CPinCount;
};

class COutputPin::CPin : public Leaf<COutputPin::CPin, CPeripheralApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 2}};
  class CDuration;
  class CStatus;
};

class COutputPin::CPin::CDuration : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class COutputPin::CPin::CStatus : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class COutputPin::CStatus : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class COutputPin::CType : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class COutputPin::CPinCount : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

class CSwitch : public Leaf<CSwitch, CPeripheralApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  class CStatus;
};

class CSwitch::CStatus : public CPeripheralApiBase {
 public:
  using CPeripheralApiBase::CPeripheralApiBase;
};

}  // namespace Peripheral
