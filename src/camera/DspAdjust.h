#pragma once

#include "camera/CCameraApiBase.h"
#include "tree/Node.h"

namespace Camera {

struct CDspadjust : CCameraApiBase {
  struct CIris;
  struct CAe;
  struct CAdjustmode;
  struct CSubadjust;
  struct CStaticNum;
  struct CPreWbNormr;
  struct CPreWbNormrKeep;
  struct CPreWbNormb;
  struct CPreWbNormbKeep;
  struct CPreWbLowr;
  struct CPreWbLowrKeep;
  struct CPreWbLowb;
  struct CPreWbLowbKeep;
  struct CPreWbHighr;
  struct CPreWbHighrKeep;
  struct CPreWbHighb;
  struct CPreWbHighbKeep;
  struct CIrygain1;
  struct CIbygain1;
  struct CIryhue1;
  struct CIbyhue1;
  struct CFocus;
  struct CStatus;
  struct CSensor;
};

struct CDspadjust::CIris : CCameraApiBase {
  struct CEvref;
};

struct CDspadjust::CIris::CEvref : CCameraApiBase {};

struct CDspadjust::CAe : CCameraApiBase {
  struct CArea;
};

struct CDspadjust::CAe::CArea : CCameraApiBase {};

struct CDspadjust::CAdjustmode : CCameraApiBase {};

struct CDspadjust::CSubadjust : CCameraApiBase {};

struct CDspadjust::CStaticNum : CCameraApiBase {};

struct CDspadjust::CPreWbNormr : CCameraApiBase {};

struct CDspadjust::CPreWbNormrKeep : CCameraApiBase {};

struct CDspadjust::CPreWbNormb : CCameraApiBase {};

struct CDspadjust::CPreWbNormbKeep : CCameraApiBase {};

struct CDspadjust::CPreWbLowr : CCameraApiBase {};

struct CDspadjust::CPreWbLowrKeep : CCameraApiBase {};

struct CDspadjust::CPreWbLowb : CCameraApiBase {};

struct CDspadjust::CPreWbLowbKeep : CCameraApiBase {};

struct CDspadjust::CPreWbHighr : CCameraApiBase {};

struct CDspadjust::CPreWbHighrKeep : CCameraApiBase {};

struct CDspadjust::CPreWbHighb : CCameraApiBase {};

struct CDspadjust::CPreWbHighbKeep : CCameraApiBase {};

struct CDspadjust::CIrygain1 : CCameraApiBase {};

struct CDspadjust::CIbygain1 : CCameraApiBase {};

struct CDspadjust::CIryhue1 : CCameraApiBase {};

struct CDspadjust::CIbyhue1 : CCameraApiBase {};

struct CDspadjust::CFocus : CCameraApiBase {
  static constexpr Selector selector{.available = has<Feature::FOCUS_CTRL>};
};

struct CDspadjust::CStatus : CCameraApiBase {};

struct CDspadjust::CSensor : CCameraApiBase {};

}  // namespace Camera
