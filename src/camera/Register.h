#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CInternal : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CData;
  class CDeviceid;
  class CAddress;
};

class CInternal::CData : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CInternal::CDeviceid : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CInternal::CAddress : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScpGet : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScpSet : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
