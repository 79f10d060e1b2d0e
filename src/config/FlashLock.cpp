#include "config/FlashLock.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <thread>
#include <utility>

#include "config/Config.h"
#include "request/Log.h"

namespace {

constexpr const char* kLockFile = "/tmp/lockflash";
constexpr int kAttempts = 5;
constexpr std::chrono::milliseconds kPause{10};

// This process holds the lock. Record locks belong to the process and do not nest, so only this flag keeps a second
// lock apart from the first.
bool isLocked = false;

// Of a wait without end, the attempts behind the first ones are no news.
int failurePriority = LOG_ERR;

int setRecordLock(int descriptor, int command, short type) {
  struct flock range = {};
  range.l_type = type;
  range.l_whence = SEEK_SET;
  return ::fcntl(descriptor, command, &range);
}

}  // namespace

int32_t Config::lockFlashOne() {
  const int descriptor = ::open(kLockFile, O_RDWR | O_CREAT | O_CLOEXEC, 0400);
  if (descriptor < 0) {
    TMX_LOG(failurePriority, "Config: Failed to open flash lock file.");
    return descriptor;
  }
  if (setRecordLock(descriptor, F_SETLKW, F_WRLCK) < 0) {
    TMX_LOG(failurePriority, "Config: Failed to lock /mnt/flash.:errno(%m)");
    ::close(descriptor);
    return kFailed;
  }
  TMX_LOG(LOG_DEBUG, "Config: /mnt/flash lock lfd=%ld", static_cast<long>(descriptor));
  isLocked = true;
  return descriptor;
}

int32_t Config::lockFlash() {
  if (isLocked) {
    TMX_LOG(LOG_DEBUG, "flag-error (true:%d) ", 1);
    return kFailed;
  }
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const int32_t descriptor = lockFlashOne();
    if (descriptor >= 0) {
      TMX_LOG(LOG_DEBUG, " Successed to GetlockFlash");
      return descriptor;
    }
    TMX_LOG(failurePriority, " Failed to Get lockFlash ");
    std::this_thread::sleep_for(kPause);
  }
  return kFailed;
}

int32_t Config::unlockFlash(int32_t descriptor) {
  if (!isLocked) {
    TMX_LOG(LOG_DEBUG, " lockflag false read ....");
    ::close(descriptor);
    return kFailed;
  }
  if (setRecordLock(descriptor, F_SETLK, F_UNLCK) < 0) {
    TMX_LOG(LOG_ERR, "Config: Failed to unlock /mnt/flash.:errno(%m)");
    ::close(descriptor);
    return kFailed;
  }
  TMX_LOG(LOG_DEBUG, "Config: /mnt/flash unlock lfd=%ld", static_cast<long>(descriptor));
  ::close(descriptor);
  isLocked = false;
  std::this_thread::sleep_for(kPause);
  return kDone;
}

FlashLock::FlashLock(Patience patience) : m_descriptor(Config::lockFlash()) {
  constexpr std::chrono::milliseconds kRetry{100};
  while (patience == Patience::Endless && !isHeld()) {
    failurePriority = LOG_DEBUG;
    std::this_thread::sleep_for(kRetry);
    m_descriptor = Config::lockFlash();
  }
  failurePriority = LOG_ERR;
}

FlashLock::~FlashLock() {
  if (isHeld()) Config::unlockFlash(m_descriptor);
}

int32_t FlashLock::release() { return Config::unlockFlash(std::exchange(m_descriptor, -1)); }

int32_t endResetCamera(FlashLock& lock) {
  if (!lock.isHeld()) return Config::kDone;
  if (lock.release() < 0) {
    TMX_LOG(LOG_ERR, "Config: Can't unlock flash");
    return Config::kLockFailed;
  }
  return Config::kDone;
}

int32_t endLoadConfig(int32_t result, FlashLock& lock, const std::string& path) {
  if (result != Config::kFailed) return result;
  TMX_LOG(LOG_ERR, "Config: Failed to read file %s", path.c_str());
  return endResetCamera(lock) < 0 ? Config::kLockFailed : result;
}
