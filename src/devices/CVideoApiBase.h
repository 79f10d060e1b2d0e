#pragma once

#include <cstdint>

#include "tree/CApiBase.h"

/** Base of all nodes of the root `video`. */
class CVideoApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;

 protected:
  /** Takes the staged row over and saves it; a failure is logged and holds nothing up. */
  static void m_saveVideoConfig();
};
