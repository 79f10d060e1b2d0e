#pragma once

#include "devices/CAudioApiBase.h"
#include "tree/Node.h"

namespace Audio {

struct CInput : CAudioApiBase {
  struct CPowersupply;
  struct CDetection;
  struct CHalfduplex;
  struct CGain;
  struct CLoopback;
};

struct CInput::CPowersupply : CAudioApiBase {
  struct CStatus;
};

struct CInput::CPowersupply::CStatus : CAudioApiBase {};

struct CInput::CDetection : CAudioApiBase {
  static constexpr Selector selector{.empty = status::kCommandNotFound, .takes = SelectorNumber{.low = 1, .high = 2}};
  struct CStatus;
  struct CLevel;
  struct CTemporal;
};

struct CInput::CDetection::CStatus : CAudioApiBase {};

struct CInput::CDetection::CLevel : CAudioApiBase {};

struct CInput::CDetection::CTemporal : CAudioApiBase {};

struct CInput::CHalfduplex : CAudioApiBase {};

struct CInput::CGain : CAudioApiBase {};

struct CInput::CLoopback : CAudioApiBase {};

}  // namespace Audio
