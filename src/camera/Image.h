#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CImage : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CTrueDaynight;
  class CWhiteBalance;
};

class CImage::CTrueDaynight : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CIrCounter;
  class CLedCounter;
};

class CImage::CTrueDaynight::CIrCounter : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CImage::CTrueDaynight::CLedCounter : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CImage::CWhiteBalance : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CArea;
};

class CImage::CWhiteBalance::CArea : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
