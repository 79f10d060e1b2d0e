#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "config/Config.h"
#include "config/FlashLock.h"
#include "local/CommonInterface.h"
#include "platform/zr_com.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/WebServerFiles.h"

namespace {

constexpr const char* kUpresetPidFile = "/var/run/upreset.pid";
constexpr const char* kLighttpdPidFile = "/var/run/lighttpd.pid";
constexpr unsigned int kLighttpdPause = 3;    // seconds that the web server has to end
constexpr useconds_t kLighttpdInterval = 10;  // microseconds between two polls
constexpr int kLighttpdPolls = 500;

void writeLighttpdFiles() {
  const auto value = [](network_row::Row row) { return Config::getInstance()->get(row); };
  const bool isTlsOn =
      value(network_row::HTTPS_CONFIG_STATUS) == "on" || value(network_row::HTTPS_CONFIG_STREAMING_STATUS) == "on";
  CommonInterface::writeLines("/etc/lighttpd/lighttpd-inc.conf",
                              web_server_files::port(value(network_row::HTTP_CONFIG_PORT)));
  CommonInterface::writeLines("/etc/lighttpd/lighttpd-inc2.conf",
                              web_server_files::ipv6(value(network_row::IF1_IPV6) == "on"));
  CommonInterface::writeLines("/etc/lighttpd/lighttpd-inc3.conf",
                              web_server_files::tls(value(network_row::HTTPS_CONFIG_PORT), isTlsOn));
}

/** Ends the web server and waits until it has gone. */
bool stopLighttpd() {
  if (CTmxdUtility::execProcess({"killall", "lighttpd"}) < 0) return false;
  sleep(kLighttpdPause);
  for (int poll = 0; poll < kLighttpdPolls; ++poll) {
    usleep(kLighttpdInterval);
    if (CTmxdUtility::execProcess({"killall", "-0", "lighttpd"}) != 0) return true;
  }
  return false;
}

/** Tells the daemon that restarts the camera; 0, or -1 with errno set. */
int signalUpreset() {
  // Read without the flash lock's file: closing it would release the lock that the caller holds.
  pid_t pid = 0;
  if (!(std::ifstream(kUpresetPidFile) >> pid) || pid < 1) {
    errno = ESRCH;  // and never the process group that kill(0) means
    return -1;
  }
  return kill(pid, SIGUSR1);
}

}  // namespace

void CTmxdUtility::reboot() {
  FlashLock lock(FlashLock::Patience::Endless);
  for (int i = 0; i < 3; ++i)
    sync();
  if (signalUpreset() < 0) TMX_LOG(LOG_ERR, "reboot error(%s)", strerror(errno));
  if (lock.release() < 0) TMX_LOG(LOG_ERR, "lockFlash error");
}

int32_t CTmxdUtility::rebootLighttpd() {
  writeLighttpdFiles();
  if (CommonInterface::isFileExist(kLighttpdPidFile) && !stopLighttpd()) {
    TMX_LOG(LOG_ERR, "%s:%d::lihgttpd stop error", __func__, __LINE__);
    return -1;
  }
  if (execProcess({"/bin/lighttpd", "-f", "/etc/lighttpd/lighttpd.conf"}) < 0) {
    TMX_LOG(LOG_ERR, "%s:%d::lihgttpd start error", __func__, __LINE__);
    return -1;
  }
  return 0;
}

int32_t CTmxdUtility::setSdkAnalogoutMode(const std::string& word) {
  int mode = 0;
  if (word == "on") {
    mode = 1;
  } else if (word == "colorbar") {
    mode = 3;
  } else if (word != "off") {
    return -1;
  }
  TMX_LOG(LOG_DEBUG, " video out set[ %s:%ld ] ", word.c_str(), static_cast<long>(mode));
  const int32_t result = zr_set_video_analog_out(mode);
  if (result < 0) TMX_LOG(LOG_ERR, "%s: videooutput[zr_set_video_analog_out() error] ", __func__);
  return result;
}
