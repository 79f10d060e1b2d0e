#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CIris : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CLenstype;
};

class CIris::CLenstype : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
