#pragma once

#include "encode/CEncodeApiBase.h"

namespace Encode {

class CType : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CFramesize : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CFramerate : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CBitrate : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CQuality : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CIframeinterval : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CCbrMode : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CSource : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

}  // namespace Encode
