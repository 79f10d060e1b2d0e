#pragma once

#include "encode/CEncodeApiBase.h"
#include "tree/Leaf.h"

namespace Encode {

class CRange : public Leaf<CRange, CEncodeApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{
      .empty = status::kNotUnderstood,
      .takes = SelectorWord{.words = Words{"jpeg", "h264high", "h264baseline"}, .firstPartOnly = true}};
  class CQuality;
  class CFramesize;
  class CFramerate;
  class CBitrate;
  class CIframeinterval;
  class CFramerateLimit;
  class CIframeintervalLimit;
};

class CRange::CQuality : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CRange::CFramesize : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CRange::CFramerate : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CRange::CBitrate : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CRange::CIframeinterval : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CRange::CFramerateLimit : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

class CRange::CIframeintervalLimit : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

}  // namespace Encode
