#include <unistd.h>

#include <cassert>
#include <cerrno>

#include "request/Log.h"
#include "service/CTmxdUtility.h"

ssize_t CTmxdUtility::readData(int32_t fd, void* buf, size_t reqLen) {
  assert(fd >= 0);
  assert(buf != __null);  // NOLINT(modernize-use-nullptr): the assertion's text
  assert(reqLen > 0);
  size_t done = 0;
  while (done < reqLen) {
    const ssize_t count = read(fd, static_cast<uint8_t*>(buf) + done, reqLen - done);
    if (count == 0) break;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      TMX_LOG(LOG_DEBUG, "read(%m)");
      return -1;
    }
    done += static_cast<size_t>(count);
  }
  return static_cast<ssize_t>(done);
}

ssize_t CTmxdUtility::writeData(int32_t fd, const void* buf, size_t reqLen) {
  assert(fd >= 0);
  assert(buf != __null);  // NOLINT(modernize-use-nullptr): the assertion's text
  assert(reqLen > 0);
  size_t done = 0;
  while (done < reqLen) {
    const ssize_t count = write(fd, static_cast<const uint8_t*>(buf) + done, reqLen - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      TMX_LOG(LOG_DEBUG, "write(%m)");
      return -1;
    }
    done += static_cast<size_t>(count);
  }
  return static_cast<ssize_t>(done);
}
