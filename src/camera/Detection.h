#pragma once

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

namespace Camera {

class CDetection : public Leaf<CDetection, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorWord{.words = Words{"motion", "tampering"}}};
  class CStatus;
  class CArea;
  class CLevel;
  class CTemporal;
  class CAreaCount;
};

class CDetection::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDetection::CArea : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDetection::CLevel : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDetection::CTemporal : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDetection::CAreaCount : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
