#include "system/Status.h"

#include <unistd.h>

#include <cstdlib>

#include "config/FlashHold.h"
#include "request/Log.h"
#include "request/Parameter.h"

namespace System {
namespace {

/** Puts the factory image over the working partition; a command that ran and failed goes unnoticed. 0 or -500. */
int32_t restoreFactoryImage() {
  const FlashHold flash;
  if (std::system("/usr/sbin/flash_eraseall /dev/mtd5") < 0) {
    TMX_LOG(LOG_ERR, "Config: flash_eraseall error(/dev/mtd5)");
    return -status::kInternalError;
  }
  if (std::system("/bin/dd if=/dev/mtd6 of=/dev/mtd5 bs=1k") < 0) {
    TMX_LOG(LOG_ERR, "Config: dd error");
    return -status::kInternalError;
  }
  return 0;
}

}  // namespace

int32_t CStatus::act(Request& request) {
  if (request.number == kInitialize) {
    const int32_t result = restoreFactoryImage();
    if (result < 0) return result;
    sync();
  }
  request.parameter.setPostAction(PostAction::Reboot);
  return 0;
}

}  // namespace System
