#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

struct CImage : CCameraApiBase {
  struct CTrueDaynight;
  struct CWhiteBalance;
};

struct CImage::CTrueDaynight : CCameraApiBase {
  struct CIrCounter;
  struct CLedCounter;
};

struct CImage::CTrueDaynight::CIrCounter : CCameraApiBase {};

struct CImage::CTrueDaynight::CLedCounter : CCameraApiBase {};

struct CImage::CWhiteBalance : CCameraApiBase {
  struct CArea;
};

struct CImage::CWhiteBalance::CArea : CCameraApiBase {};

}  // namespace Camera
