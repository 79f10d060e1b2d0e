#pragma once

#include "devices/CAudioApiBase.h"
#include "tree/Leaf.h"

namespace Audio {

class CInput : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
  class CPowersupply;
  class CDetection;
  class CHalfduplex;
  class CGain;
  class CLoopback;
};

class CInput::CPowersupply : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
  class CStatus;
};

class CInput::CPowersupply::CStatus : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

class CInput::CDetection : public Leaf<CInput::CDetection, CAudioApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.empty = status::kCommandNotFound, .takes = SelectorNumber{.low = 1, .high = 2}};
  class CStatus;
  class CLevel;
  class CTemporal;
};

class CInput::CDetection::CStatus : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

class CInput::CDetection::CLevel : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

class CInput::CDetection::CTemporal : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

class CInput::CHalfduplex : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

class CInput::CGain : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

class CInput::CLoopback : public CAudioApiBase {
 public:
  using CAudioApiBase::CAudioApiBase;
};

}  // namespace Audio
