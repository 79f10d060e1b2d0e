#include <unistd.h>

#include <cstdlib>

#include "config/Initialising.h"
#include "local/Process.h"
#include "request/InternalRequest.h"
#include "request/Log.h"
#include "request/Parameter.h"
#include "service/CTmxdUtility.h"
#include "service/NetworkRows.h"

namespace {

constexpr int32_t kStopPolls = 500;

using network_rows::active;
using network_rows::isOn;

/** Carries out what the store holds: an internal request that acts although nothing has changed, and keeps nothing. */
bool replay(const std::string& query) {
  const InitialisingGuard initialising;
  std::string response;
  const int32_t result = execApiCommandInternal(query, &response, user_class::kAdministrator, content_type::kPlain);
  return result >= 0 && response.find("&200") != std::string::npos;
}

void stopDhcpcd() {
  for (const pid_t pid : CommonInterface::Process::GetPsPID("dhcpcd")) {
    if (CommonInterface::Process::StopKillWait(pid, kStopPolls) == 0) TMX_LOG(LOG_ERR, "dhcpcd stop err[%d]", pid);
  }
  if (system("rm /etc/dhcpc/dhcpcd-eth0.cache") < 0) TMX_LOG(LOG_ERR, "system(%m)");
}

void setHostName() {
  const std::string name = active(network_row::HOSTNAME);
  if (sethostname(name.c_str(), name.size()) == 0) return;
  TMX_LOG(LOG_ERR, "sethostname err str[%s] len[%d]", name.c_str(), static_cast<int>(name.size()));
}

/** The address client's command; what it shall not bring is set up from the stored values on the way. */
std::vector<std::string> prepareDhcpcd() {
  std::vector<std::string> command = {"dhcpcd", "-t", "75"};
  if (!isOn(network_row::IF1_DHCP_NTP)) command.emplace_back("-N");
  if (!isOn(network_row::IF1_DHCP_DNS)) {
    command.emplace_back("-R");
    if (!replay("network.dns.status=restart")) TMX_LOG(LOG_ERR, "network.dns.status=restart err");
  }
  if (isOn(network_row::IF1_DHCP_HOSTNAME)) {
    command.emplace_back("-H");
  } else {
    setHostName();
  }
  command.emplace_back("eth0");
  return command;
}

int32_t setFixedAddress() {
  const std::string address = active(network_row::IF1_IP);
  const std::string mask = active(network_row::IF1_NETMASK);
  const std::string broadcast = active(network_row::IF1_BROADCAST);
  const int32_t result =
      CTmxdUtility::execProcess({"/sbin/ifconfig", "eth0", address, "netmask", mask, "broadcast", broadcast});
  if (result != 0) {
    TMX_LOG(LOG_ERR, "ifconfig err ipaddr[%s] netmask[%s] bcastaddr[%s]", address.c_str(), mask.c_str(),
            broadcast.c_str());
  }
  if (!replay("network.gateway.status=save")) TMX_LOG(LOG_ERR, "network.gateway.status=save err");
  return result;
}

}  // namespace

int32_t CTmxdUtility::rebootDhcpcd() {
  stopDhcpcd();
  const std::vector<std::string> command = prepareDhcpcd();
  if (!replay("network.ntp.status=restart")) TMX_LOG(LOG_ERR, "network.ntp.status=restart err");
  const int32_t result = isOn(network_row::IF1_DHCP) ? execProcess(command) : setFixedAddress();
  return result == 0 ? 0 : -1;
}
