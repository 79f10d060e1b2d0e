#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

struct CInternal : CCameraApiBase {
  struct CData;
  struct CDeviceid;
  struct CAddress;
};

struct CInternal::CData : CCameraApiBase {};

struct CInternal::CDeviceid : CCameraApiBase {};

struct CInternal::CAddress : CCameraApiBase {};

struct CScpGet : CCameraApiBase {};

struct CScpSet : CCameraApiBase {};

}  // namespace Camera
