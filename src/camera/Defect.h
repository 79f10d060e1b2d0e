#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CDefectDetect : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatic;
  class CDynamic;
};

class CDefectDetect::CStatic : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CAdjust;
  class CStatus;
  class CAdjustDetail;
};

class CDefectDetect::CStatic::CAdjust : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDefectDetect::CStatic::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDefectDetect::CStatic::CAdjustDetail : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDefectDetect::CDynamic : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStatus;
};

class CDefectDetect::CDynamic::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFpn : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CAdjust;
  class CAdjustDetail;
  class CNum;
};

class CFpn::CAdjust : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFpn::CAdjustDetail : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CFpn::CNum : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
