#include "system/Status.h"

#include <unistd.h>

#include "config/Config.h"
#include "config/FlashLock.h"

namespace System {
namespace {

/** 0, or -1 where a command could not be run. */
int32_t restoreFactoryImage() {
  const FlashLock flash(FlashLock::Patience::Endless);
  return Config::copyFactoryValueToConfig();
}

}  // namespace

int32_t CStatus::initialize(Request& /*request*/) {
  const int32_t result = restoreFactoryImage();
  if (result == 0) sync();
  return result;
}

}  // namespace System
