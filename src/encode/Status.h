#pragma once

#include "encode/CEncodeApiBase.h"

namespace Encode {

class CStatus : public CEncodeApiBase {
 public:
  using CEncodeApiBase::CEncodeApiBase;
};

}  // namespace Encode
