#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

struct CAdjustService : CCameraApiBase {
  struct CAlc;
  struct CIris;
  struct CAtw;
  struct CRange;
  struct CLumx;
  struct CInformation;
  struct CStatus;
};

struct CAdjustService::CAlc : CCameraApiBase {
  struct CSpeed;
  struct CErrEn;
  struct CErrHigh;
  struct CErrLow;
  struct CRestart;
  struct CDnHysteresis;
};

struct CAdjustService::CAlc::CSpeed : CCameraApiBase {};

struct CAdjustService::CAlc::CErrEn : CCameraApiBase {};

struct CAdjustService::CAlc::CErrHigh : CCameraApiBase {};

struct CAdjustService::CAlc::CErrLow : CCameraApiBase {};

struct CAdjustService::CAlc::CRestart : CCameraApiBase {};

struct CAdjustService::CAlc::CDnHysteresis : CCameraApiBase {};

struct CAdjustService::CIris : CCameraApiBase {
  struct CStart;
  struct CIntgain;
  struct CProgain;
  struct CLimitHigh;
  struct CLimitLow;
};

struct CAdjustService::CIris::CStart : CCameraApiBase {};

struct CAdjustService::CIris::CIntgain : CCameraApiBase {};

struct CAdjustService::CIris::CProgain : CCameraApiBase {};

struct CAdjustService::CIris::CLimitHigh : CCameraApiBase {};

struct CAdjustService::CIris::CLimitLow : CCameraApiBase {};

struct CAdjustService::CAtw : CCameraApiBase {
  struct CSpeed;
  struct CErrEn;
  struct CErrHigh;
  struct CErrLow;
  struct CRestart;
};

struct CAdjustService::CAtw::CSpeed : CCameraApiBase {};

struct CAdjustService::CAtw::CErrEn : CCameraApiBase {};

struct CAdjustService::CAtw::CErrHigh : CCameraApiBase {};

struct CAdjustService::CAtw::CErrLow : CCameraApiBase {};

struct CAdjustService::CAtw::CRestart : CCameraApiBase {};

struct CAdjustService::CRange : CCameraApiBase {
  struct CWide;
  struct CNarrow;
};

struct CAdjustService::CRange::CWide : CCameraApiBase {
  struct CR;
  struct CB;
  struct CGLow;
  struct CGNorm;
  struct CGHigh;
  struct CMgLow;
  struct CMgNorm;
  struct CMgHigh;
};

struct CAdjustService::CRange::CWide::CR : CCameraApiBase {};

struct CAdjustService::CRange::CWide::CB : CCameraApiBase {};

struct CAdjustService::CRange::CWide::CGLow : CCameraApiBase {};

struct CAdjustService::CRange::CWide::CGNorm : CCameraApiBase {};

struct CAdjustService::CRange::CWide::CGHigh : CCameraApiBase {};

struct CAdjustService::CRange::CWide::CMgLow : CCameraApiBase {};

struct CAdjustService::CRange::CWide::CMgNorm : CCameraApiBase {};

struct CAdjustService::CRange::CWide::CMgHigh : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow : CCameraApiBase {
  struct CR;
  struct CB;
  struct CGLow;
  struct CGNorm;
  struct CGHigh;
  struct CMgLow;
  struct CMgNorm;
  struct CMgHigh;
};

struct CAdjustService::CRange::CNarrow::CR : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow::CB : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow::CGLow : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow::CGNorm : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow::CGHigh : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow::CMgLow : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow::CMgNorm : CCameraApiBase {};

struct CAdjustService::CRange::CNarrow::CMgHigh : CCameraApiBase {};

struct CAdjustService::CLumx : CCameraApiBase {
  struct CSpeed;
  struct CGain;
};

struct CAdjustService::CLumx::CSpeed : CCameraApiBase {};

struct CAdjustService::CLumx::CGain : CCameraApiBase {};

struct CAdjustService::CInformation : CCameraApiBase {};

struct CAdjustService::CStatus : CCameraApiBase {};

}  // namespace Camera
