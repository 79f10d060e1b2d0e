#include <fcntl.h>
#include <unistd.h>

#include "local/CommonInterface.h"
#include "request/Log.h"

namespace {

constexpr const char* kLockFile = "/tmp/lockflash";
constexpr int kAttempts = 5;
constexpr useconds_t kPause = 10000;  // microseconds

}  // namespace

int32_t CommonInterface::flashStatusChange(int32_t lock) {
  struct flock wholeFile {};
  wholeFile.l_type = lock != 0 ? F_WRLCK : F_UNLCK;
  wholeFile.l_whence = SEEK_SET;
  if (fcntl(m_lockFd.get(), F_SETLKW, &wholeFile) >= 0) return 1;
  TMX_LOG(LOG_ERR, "Failed to %s /mnt/flash.", lock != 0 ? "lock" : "unlock");
  m_lockFd.reset();
  return 0;
}

int32_t CommonInterface::lockFlash() {
  if (m_isLocked) return 0;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    m_lockFd.reset(open(kLockFile, O_RDWR | O_CREAT | O_CLOEXEC, 0400));
    if (m_lockFd.isValid() && flashStatusChange(1) == 1) {
      m_isLocked = true;
      return 1;
    }
    m_lockFd.reset();
    TMX_LOG(LOG_ERR, "Failed to open flash lock file.");
    usleep(kPause);
  }
  return 0;
}

int32_t CommonInterface::unlockFlash() {
  if (!m_isLocked || flashStatusChange(0) == 0) return 0;
  m_lockFd.reset();
  m_isLocked = false;
  return 1;
}
