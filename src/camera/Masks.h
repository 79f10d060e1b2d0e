#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CPrivateMask : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
  class CColor;
  class CArea;
};

class CPrivateMask::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CPrivateMask::CColor : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CPrivateMask::CArea : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
