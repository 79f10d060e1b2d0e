#include "daemon/PidFile.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>

#include "request/Log.h"

namespace {

constexpr const char* kPath = "/var/run/tmxd.pid";

/** Looks at a file that exists: kCreated when its process is gone and the file with it. */
int32_t clearStale(std::istream& file) {
  pid_t pid = 0;
  if (!(file >> pid)) {
    TMX_LOG(LOG_ERR, "ifstream error");
    return PidFile::kFailed;
  }
  if (kill(pid, 0) == 0) return PidFile::kOtherLives;
  if (errno != ESRCH) {
    TMX_LOG(LOG_ERR, "kill error(%m)");
    return PidFile::kFailed;
  }
  if (unlink(kPath) < 0) {
    TMX_LOG(LOG_ERR, "unlink error(%m)");
    return PidFile::kFailed;
  }
  return PidFile::kCreated;
}

}  // namespace

int32_t PidFile::create() {
  if (std::ifstream existing(kPath); existing.is_open()) {
    const int32_t result = clearStale(existing);
    if (result != kCreated) return result;
  }
  std::ofstream file(kPath, std::ios::trunc);
  if (!file.is_open()) {
    TMX_LOG(LOG_ERR, "ifstream error");
    return kFailed;
  }
  const pid_t pid = getpid();
  if (pid < 0) TMX_LOG(LOG_ERR, "getpid error(%m)");
  file << pid << std::endl;
  if (!file) {
    TMX_LOG(LOG_ERR, "ofstream error");
    return kFailed;
  }
  return kCreated;
}

void PidFile::remove() {
  if (unlink(kPath) < 0) TMX_LOG(LOG_ERR, "unlink error(%m)");
}
