#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
