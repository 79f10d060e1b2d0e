#include "system/Status.h"

#include <unistd.h>

#include "config/Config.h"
#include "config/FlashHold.h"

namespace System {
namespace {

/** 0, or -1 where a command could not be run. */
int32_t restoreFactoryImage() {
  const FlashHold flash;
  return Config::copyFactoryValueToConfig();
}

}  // namespace

int32_t CStatus::initialize(Request& /*request*/) {
  const int32_t result = restoreFactoryImage();
  if (result == 0) sync();
  return result;
}

}  // namespace System
