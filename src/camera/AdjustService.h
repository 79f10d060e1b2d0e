#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

class CAdjustService : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CAlc;
  class CIris;
  class CAtw;
  class CRange;
  class CLumx;
  class CInformation;
  class CStatus;
};

class CAdjustService::CAlc : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CSpeed;
  class CErrEn;
  class CErrHigh;
  class CErrLow;
  class CRestart;
  class CDnHysteresis;
};

class CAdjustService::CAlc::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAlc::CErrEn : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAlc::CErrHigh : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAlc::CErrLow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAlc::CRestart : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAlc::CDnHysteresis : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CIris : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CStart;
  class CIntgain;
  class CProgain;
  class CLimitHigh;
  class CLimitLow;
};

class CAdjustService::CIris::CStart : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CIris::CIntgain : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CIris::CProgain : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CIris::CLimitHigh : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CIris::CLimitLow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAtw : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CSpeed;
  class CErrEn;
  class CErrHigh;
  class CErrLow;
  class CRestart;
};

class CAdjustService::CAtw::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAtw::CErrEn : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAtw::CErrHigh : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAtw::CErrLow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CAtw::CRestart : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CWide;
  class CNarrow;
};

class CAdjustService::CRange::CWide : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CR;
  class CB;
  class CGLow;
  class CGNorm;
  class CGHigh;
  class CMgLow;
  class CMgNorm;
  class CMgHigh;
};

class CAdjustService::CRange::CWide::CR : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CWide::CB : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CWide::CGLow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CWide::CGNorm : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CWide::CGHigh : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CWide::CMgLow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CWide::CMgNorm : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CWide::CMgHigh : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CR;
  class CB;
  class CGLow;
  class CGNorm;
  class CGHigh;
  class CMgLow;
  class CMgNorm;
  class CMgHigh;
};

class CAdjustService::CRange::CNarrow::CR : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow::CB : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow::CGLow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow::CGNorm : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow::CGHigh : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow::CMgLow : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow::CMgNorm : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CRange::CNarrow::CMgHigh : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CLumx : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CSpeed;
  class CGain;
};

class CAdjustService::CLumx::CSpeed : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CLumx::CGain : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CInformation : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CAdjustService::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
