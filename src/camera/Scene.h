#pragma once

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

namespace Camera {

class CScene : public Leaf<CScene, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 0, .high = 7, .digitsOnly = true}};
  class CImage;
  class CAutoExposure;
  class CStatus;
  class CShutter;
  class CName;
};

class CScene::CImage : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CColor;
  class CGamma;
  class CBrightness;
  class CTrueDaynight;
  class CEasyDaynight;
  class CPedestal;
  class CEnhance;
  class C3ddnr;
  class CSenseupLimit;
  class CWhiteBalance;
  class CLumx;
  class CBlc;
};

class CScene::CImage::CColor : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CGamma : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CBrightness : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CTrueDaynight : public Leaf<CScene::CImage::CTrueDaynight, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = hasTrueDaynight};
  class CAf;
};

class CScene::CImage::CTrueDaynight::CAf : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CEasyDaynight : public Leaf<CScene::CImage::CEasyDaynight, CCameraApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.available = lacks<Feature::DAY_NIGHT>};
};

class CScene::CImage::CPedestal : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CEnhance : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::C3ddnr : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CSenseupLimit : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CWhiteBalance : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CR;
  class CB;
};

class CScene::CImage::CWhiteBalance::CR : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CWhiteBalance::CB : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CLumx : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CImage::CBlc : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CArea;
};

class CScene::CImage::CBlc::CArea : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CAutoExposure : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CAvPk;
  class CReference;
  class CReferenceExt;
  class CPriority;
};

class CScene::CAutoExposure::CAvPk : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
  class CColor;
  class CBlackWhite;
};

class CScene::CAutoExposure::CAvPk::CColor : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CAutoExposure::CAvPk::CBlackWhite : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CAutoExposure::CReference : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CAutoExposure::CReferenceExt : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CAutoExposure::CPriority : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CStatus : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CShutter : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

class CScene::CName : public CCameraApiBase {
 public:
  using CCameraApiBase::CCameraApiBase;
};

}  // namespace Camera
