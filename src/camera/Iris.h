#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

struct CIris : CCameraApiBase {
  struct CLenstype;
};

struct CIris::CLenstype : CCameraApiBase {};

}  // namespace Camera
