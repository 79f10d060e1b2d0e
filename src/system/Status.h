#pragma once

#include "system/CSystemApiBase.h"
#include "tree/Node.h"

namespace System {

/** Restarts the camera, or puts it back to its factory state and restarts it, once the client has its answer. */
struct CStatus : CSystemApiBase {
  static int32_t initialize(Request& request);
  static constexpr Rule rule{
      .commands = {{{"restart", nullptr, PostAction::Reboot}, {"initialize", initialize, PostAction::Reboot}}}};
};

}  // namespace System
