// The RTSP server: stopped and started where its port or its state has changed, and at the camera's start.

#include <signal.h>
#include <unistd.h>

#include <cerrno>

#include "local/Process.h"
#include "network/Services.h"
#include "request/Log.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/NetworkRows.h"

namespace Network {
namespace {

using Process = CommonInterface::Process;

constexpr const char* kProgram = "/bin/rtspd";
constexpr const char* kPidFile = "/var/run/rtsp.pid";
constexpr int32_t kStopAttempts = 500;

/** 0 when the server has gone. */
int32_t m_stopRtspd(pid_t pid) {
  if (pid < 1) {
    TMX_LOG(LOG_ERR, "rtsp pid error :: %d", pid);
    return -1;
  }
  if (kill(pid, SIGTERM) < 0) return errno == ESRCH ? 0 : -1;
  return CTmxdNetworkUtility::waitForExit(pid, kStopAttempts);
}

/** Whether no server is left; one that the pid file does not name counts, too. */
bool isStopped() {
  const pid_t pid = CTmxdNetworkUtility::readPid(kPidFile);
  if (pid == 0 || m_stopRtspd(pid) == 0) return true;
  TMX_LOG(LOG_WARNING, "rtsp stop error :: %d", pid);
  const auto left = Process::GetPsPID("rtspd");
  if (left.empty()) return true;
  TMX_LOG(LOG_ERR, "rtsp prosess Zombie :: %d", left.front());
  return false;
}

/** It detaches itself; what its starter's exit status says is not looked at. */
int32_t m_execRtspd() {
  if (access(kProgram, F_OK) < 0) {
    TMX_LOG(LOG_ERR, "%s :: command not found", kProgram);
    return -status::kInternalError;
  }
  const pid_t pid = Process::Fork({kProgram, "-port", network_rows::active(network_row::RTSP_CONFIG_PORT),
                                   "-ipv6status", network_rows::active(network_row::IF1_IPV6)});
  if (pid < 0) {
    TMX_LOG(LOG_ERR, "%s :: command exec error", kProgram);
    return -status::kInternalError;
  }
  if (!Process::waitForEnd(pid)) {
    TMX_LOG(LOG_ERR, "%s :: command wait error", kProgram);
    return -status::kInternalError;
  }
  return 0;
}

}  // namespace

int32_t restartRtspd(Request& /*request*/) {
  if (!isStopped()) return -status::kInternalError;
  return network_rows::active(network_row::RTSP_SERVER_STATUS) == "off" ? 0 : m_execRtspd();
}

}  // namespace Network
