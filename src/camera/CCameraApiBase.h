#pragma once

#include "tree/CApiBase.h"

/** Base of all nodes of the root `camera`. */
class CCameraApiBase : public CApiBase {
 public:
  using CApiBase::CApiBase;

 protected:
  /** Day/night switching with a cut filter, or a model that shows its easy day/night setting in that place. */
  [[nodiscard]] static bool hasTrueDaynight();
};
