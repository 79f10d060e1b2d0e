#pragma once

#include "system/CSystemApiBase.h"
#include "tree/Leaf.h"

namespace System {

/** Restarts the camera, or puts it back to its factory state and restarts it, once the client has its answer. */
class CStatus : public Leaf<CStatus, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  enum Command { kRestart, kInitialize };
  static constexpr Rule rule{.accepts = Words{Word{"restart", kRestart}, Word{"initialize", kInitialize}}};
  int32_t act(Request& request);
};

}  // namespace System
