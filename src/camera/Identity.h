#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CId : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CStealth : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CIdentify : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
