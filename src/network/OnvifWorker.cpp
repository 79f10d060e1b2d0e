#include "network/OnvifWorker.h"

#include <unistd.h>

#include <fstream>
#include <sstream>

#include "dsp/DetectionSet.h"
#include "local/Process.h"
#include "network/OnvifProfile.h"
#include "request/Log.h"
#include "service/CTmxdNetworkUtility.h"

namespace {

constexpr const char* kPidFile = "/var/run/nvt_apld.pid";
constexpr const char* kProfiles = "/etc/onvif/default.vecfg_";  // and the channel, from 0
constexpr int kSyncs = 8;

/** A camera without the file has no such profile. */
void refreshProfile(const std::string& path, const OnvifChannel& channel) {
  std::ostringstream text;
  {
    const std::ifstream file(path, std::ios::binary);
    if (!file) return;
    text << file.rdbuf();
  }
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << onvif_profile::refreshed(text.str(), channel) << std::flush;
  if (!file) TMX_LOG(LOG_ERR, "write error %s(%m)", path.c_str());
  for (int i = 0; i < kSyncs; ++i)
    sync();
}

}  // namespace

pid_t OnvifWorker::readPid() { return CTmxdNetworkUtility::readPid(kPidFile); }

void OnvifWorker::refreshProfiles(const OnvifSettings& settings) {
  for (size_t channel = 0; channel < settings.channels.size(); ++channel)
    refreshProfile(kProfiles + std::to_string(channel), settings.channels.at(channel));
}

pid_t OnvifWorker::start(const OnvifSettings& settings) {
  static_cast<void>(CTmxdNetworkUtility::stopDaemon(kPidFile));
  const pid_t pid = CommonInterface::Process::Fork({"/bin/nvt_apl", "-np", settings.httpPort});
  if (pid > 0) std::ofstream(kPidFile, std::ios::trunc) << pid << '\n';
  return pid;
}

void OnvifWorker::waitForEnd(pid_t pid) {
  static_cast<void>(CommonInterface::Process::waitForEnd(pid, LOG_ERR));
  unlink(kPidFile);
}

/** A detection daemon that does not hear of it holds nothing up. */
void OnvifWorker::tellDetection() { static_cast<void>(DetectionSet().reportMotion()); }
