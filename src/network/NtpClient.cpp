#include "network/NtpClient.h"

#include <signal.h>

#include <array>
#include <string>

#include "network/NtpAction.h"
#include "request/Log.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/CTmxdUtility.h"
#include "service/Daemon.h"
#include "service/NetworkRows.h"
#include "service/Numbers.h"
#include "tree/Commit.h"

namespace ntp_client {

namespace {

using namespace network_row;
using network_rows::staged;

constexpr std::array<::Row, 4> kRows{NTP_UNIT, NTP_INTERVAL, NTP_HOST, NTP};

/** The daemon as the staged rows want it. */
Service daemon() {
  return {"pntpd",
          "/var/run/pntpd.pid",
          {"--interval", staged(NTP_INTERVAL), "--unit", staged(NTP_UNIT), staged(NTP_HOST)}};
}

/** No interval is longer than a day in hours, or a month in days. */
constexpr Words kLongestIntervals{Word{"hour", 24}, Word{"day", 31}};

void boundInterval() {
  const auto longest = kLongestIntervals.find(staged(NTP_UNIT));
  if (!longest || parseNumber(staged(NTP_INTERVAL)).value_or(0) <= *longest) return;
  CUserConfig::getInstance()->set(NTP_INTERVAL, std::to_string(*longest));
}

int32_t m_startNtp() {
  const Service ntp = daemon();
  if (ntp.stop() < 0) return -1;
  if (staged(NTP_INTERVAL).empty()) return -2;
  return ntp.start();
}

/** Lets the daemon synchronise now; starts it when it is not there. */
int32_t m_oneshotNtp() {
  const pid_t pid = CTmxdNetworkUtility::readPid(daemon().pidFile);
  if (pid < 0) return -2;
  if (pid == 0 || kill(pid, 0) < 0) {
    if (m_startNtp() == 0) return 0;
    TMX_LOG(LOG_ERR, "startNtp error");
    return pid == 0 ? -1 : -3;
  }
  if (kill(pid, SIGHUP) == 0) return 0;
  TMX_LOG(LOG_ERR, "kill error(%m)");
  return -4;
}

int32_t m_callDaemon(NtpAction action) {
  int32_t result = 0;
  switch (action) {
    case NtpAction::Nothing:
      break;
    case NtpAction::Start:
      result = m_startNtp();
      if (result < 0) TMX_LOG(LOG_ERR, "startNtp error(%ld)", static_cast<long>(result));
      break;
    case NtpAction::Stop:
      result = daemon().stop();
      break;
    case NtpAction::Synchronise:
      result = m_oneshotNtp();
      if (result < 0) TMX_LOG(LOG_ERR, "oneshotNtp error(%ld)", static_cast<long>(result));
      break;
  }
  return result < 0 ? -status::kInternalError : 0;
}

}  // namespace

int32_t fetchServer(const Request& /*request*/, std::string& text) {
  text = CTmxdUtility::readKeyValue("/etc/ntp.conf", "server");
  return 0;
}

int32_t restart(Request& request) {
  NtpState state{
      .isChanged = false,
      .isSwitched = network_rows::active(NTP) != staged(NTP),
      .isOn = staged(NTP) == "on",
      .hasServer = staged(NTP_HOST) != "0.0.0.0" || network_rows::isOn(IF1_DHCP_NTP),
  };
  boundInterval();
  const int32_t result = carryOut({.rows = kRows}, request);
  if (result < 0) return result;
  state.isChanged = result != kNothingWaits;
  return m_callDaemon(ntpAction(state));
}

}  // namespace ntp_client
