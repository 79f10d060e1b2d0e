#pragma once

#include <cstdint>

#include "tree/Node.h"

/** Base of all nodes of the root `video`. */
struct CVideoApiBase : CApiBase {
 protected:
  /** Takes the staged row over and saves it; a failure is logged and holds nothing up. */
  static void m_saveVideoConfig();
};
