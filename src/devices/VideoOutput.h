#pragma once

#include "devices/CVideoApiBase.h"

namespace Video {

class COutput : public CVideoApiBase {
 public:
  using CVideoApiBase::CVideoApiBase;
  class CStatus;
  class CVideoSignal;
};

class COutput::CStatus : public CVideoApiBase {
 public:
  using CVideoApiBase::CVideoApiBase;
};

class COutput::CVideoSignal : public CVideoApiBase {
 public:
  using CVideoApiBase::CVideoApiBase;
};

}  // namespace Video
