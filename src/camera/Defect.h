#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

struct CDefectDetect : CCameraApiBase {
  struct CStatic;
  struct CDynamic;
};

struct CDefectDetect::CStatic : CCameraApiBase {
  struct CAdjust;
  struct CStatus;
  struct CAdjustDetail;
};

struct CDefectDetect::CStatic::CAdjust : CCameraApiBase {};

struct CDefectDetect::CStatic::CStatus : CCameraApiBase {};

struct CDefectDetect::CStatic::CAdjustDetail : CCameraApiBase {};

struct CDefectDetect::CDynamic : CCameraApiBase {
  struct CStatus;
};

struct CDefectDetect::CDynamic::CStatus : CCameraApiBase {};

struct CFpn : CCameraApiBase {
  struct CAdjust;
  struct CAdjustDetail;
  struct CNum;
};

struct CFpn::CAdjust : CCameraApiBase {};

struct CFpn::CAdjustDetail : CCameraApiBase {};

struct CFpn::CNum : CCameraApiBase {};

}  // namespace Camera
