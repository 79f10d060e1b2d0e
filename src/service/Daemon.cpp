#include "service/Daemon.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>

#include "local/CommonInterface.h"
#include "request/Log.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/CTmxdUtility.h"

namespace {

constexpr int32_t kExitInterval = 10000;  // microseconds between two looks at a process
constexpr int32_t kFileInterval = 10;     // microseconds between two looks at a file
constexpr int32_t kDaemonAttempts = 500;

}  // namespace

pid_t CTmxdNetworkUtility::readPid(const std::string& pidFile) {
  // Without the flash lock, which is not needed for a file in memory.
  std::ifstream file(pidFile);
  if (!file.is_open()) return 0;
  pid_t pid = 0;
  // A number below 1 would mean groups of processes, this daemon's among them.
  if (file >> pid && pid > 0) return pid;
  TMX_LOG(LOG_ERR, "ifstream error");
  return -1;
}

int32_t CTmxdNetworkUtility::stopDaemon(const std::string& pidFile) {
  const pid_t pid = readPid(pidFile);
  if (pid < 1) return pid;
  if (kill(pid, SIGTERM) < 0) {
    if (errno == ESRCH) return 0;
    TMX_LOG(LOG_ERR, "kill error(%m)");
    return -2;
  }
  return waitForExit(pid, kDaemonAttempts) == 0 ? 0 : -3;
}

int32_t CTmxdNetworkUtility::waitForExit(pid_t pid, int32_t attempts) {
  if (pid < 1) return -1;
  for (int32_t attempt = 0; attempt < attempts; ++attempt) {
    CommonInterface::usleepRetry(kExitInterval);
    if (kill(pid, 0) < 0) return 0;
  }
  return -2;
}

int32_t CTmxdNetworkUtility::waitForFile(const char* path, int32_t attempts) {
  if (path == nullptr) return -1;
  for (int32_t attempt = 0; attempt < attempts; ++attempt) {
    usleep(kFileInterval);
    if (std::ifstream(path).is_open()) return 0;
  }
  return -1;
}

int32_t Service::start() const {
  std::vector<std::string> command{program};
  command.insert(command.end(), arguments.begin(), arguments.end());
  if (CTmxdUtility::execProcess(command) < 0) return kNotRun;
  return CTmxdNetworkUtility::waitForFile(pidFile.c_str(), kDaemonAttempts) == 0 ? 0 : kNoPidFile;
}

int32_t Service::stop() const {
  const int32_t result = CTmxdNetworkUtility::stopDaemon(pidFile);
  if (result < 0) TMX_LOG(LOG_ERR, "stopDaemon error(%ld)", static_cast<long>(result));
  return result;
}
