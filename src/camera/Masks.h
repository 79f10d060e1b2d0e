#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

struct CPrivateMask : CCameraApiBase {
  struct CStatus;
  struct CColor;
  struct CArea;
};

struct CPrivateMask::CStatus : CCameraApiBase {};

struct CPrivateMask::CColor : CCameraApiBase {};

struct CPrivateMask::CArea : CCameraApiBase {};

}  // namespace Camera
