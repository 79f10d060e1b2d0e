#pragma once

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

namespace Camera {

class CDspadjust : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CIris;
  class CAe;
  class CAdjustmode;
  class CSubadjust;
  class CStaticNum;
  class CPreWbNormr;
  class CPreWbNormrKeep;
  class CPreWbNormb;
  class CPreWbNormbKeep;
  class CPreWbLowr;
  class CPreWbLowrKeep;
  class CPreWbLowb;
  class CPreWbLowbKeep;
  class CPreWbHighr;
  class CPreWbHighrKeep;
  class CPreWbHighb;
  class CPreWbHighbKeep;
  class CIrygain1;
  class CIbygain1;
  class CIryhue1;
  class CIbyhue1;
  class CFocus;
  class CStatus;
  class CSensor;
};

class CDspadjust::CIris : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CEvref;
};

class CDspadjust::CIris::CEvref : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CAe : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CArea;
};

class CDspadjust::CAe::CArea : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CAdjustmode : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CSubadjust : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CStaticNum : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbNormr : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbNormrKeep : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbNormb : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbNormbKeep : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbLowr : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbLowrKeep : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbLowb : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbLowbKeep : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbHighr : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbHighrKeep : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbHighb : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CPreWbHighbKeep : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CIrygain1 : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CIbygain1 : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CIryhue1 : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CIbyhue1 : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CFocus : public Leaf<CDspadjust::CFocus, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = has<Feature::FOCUS_CTRL>};
};

class CDspadjust::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CDspadjust::CSensor : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
