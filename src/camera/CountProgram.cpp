#include "camera/CountProgram.h"

#include <cstdlib>

#include "request/Log.h"
#include "service/CTmxdUtility.h"

namespace {

constexpr int32_t kAttempts = 3;

}  // namespace

namespace count_program {

int32_t start() {
  if (std::system("/bin/count &") < 0) TMX_LOG(LOG_ERR, "system(%m)");
  for (int32_t attempt = 1; attempt <= kAttempts; ++attempt) {
    if (CTmxdUtility::execProcess({"/usr/bin/killall", "-0", "count"}) == 0) {
      TMX_LOG(LOG_INFO, "count start finished");
      return 0;
    }
    TMX_LOG(LOG_WARNING, "count start countup(%ld)", long{attempt});
  }
  return -1;
}

int32_t stop() {
  for (int32_t attempt = 1; attempt <= kAttempts; ++attempt) {
    if (CTmxdUtility::execProcess({"/usr/bin/killall", "count"}) == 0) {
      TMX_LOG(LOG_INFO, "count stop finished");
      return 0;
    }
    TMX_LOG(LOG_WARNING, "count stop countup(%ld)", long{attempt});
  }
  return -1;
}

}  // namespace count_program
