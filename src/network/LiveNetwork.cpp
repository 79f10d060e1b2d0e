#include "network/LiveNetwork.h"

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "local/FileDescriptor.h"
#include "request/Log.h"
#include "service/CTmxdNetworkUtility.h"

namespace {

/** A request about a device, which is the control socket's to carry out. */
ifreq requestFor(const std::string& device) {
  ifreq request{};
  device.copy(request.ifr_name, sizeof request.ifr_name - 1);
  return request;
}

FileDescriptor controlSocket() { return FileDescriptor(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)); }

/** Asks the kernel about the request's device; a failure is logged, unless it is the expected one. */
bool ask(unsigned long command, ifreq& request, int expected = 0) {
  const FileDescriptor control = controlSocket();
  if (!control.isValid()) {
    TMX_LOG(LOG_ERR, "socket(%m)");
    return false;
  }
  if (ioctl(control.get(), command, &request) == 0) return true;
  if (errno != expected) TMX_LOG(LOG_ERR, "ioctl(%m)");
  return false;
}

/** The address that the command asks for. */
std::string addressOf(const std::string& device, unsigned long command) {
  ifreq request = requestFor(device);
  if (!ask(command, request)) return {};
  sockaddr_in address{};
  std::memcpy(&address, &request.ifr_addr, sizeof address);
  if (address.sin_family == AF_INET) return CTmxdNetworkUtility::Inet_ntop(&address.sin_addr);
  TMX_LOG(LOG_ERR, "address family is not INET");
  return {};
}

}  // namespace

namespace live_network {

std::string getIpAddress(const std::string& device) { return addressOf(device, SIOCGIFADDR); }

std::string getNetmask(const std::string& device) { return addressOf(device, SIOCGIFNETMASK); }

std::string getMacAddress(const std::string& device) {
  ifreq request = requestFor(device);
  if (!ask(SIOCGIFHWADDR, request, ENODEV)) return {};
  if (request.ifr_hwaddr.sa_family != ARPHRD_ETHER) {
    TMX_LOG(LOG_ERR, "device is not ethernet device");
    return {};
  }
  std::array<unsigned char, 6> bytes{};
  std::memcpy(bytes.data(), request.ifr_hwaddr.sa_data, bytes.size());
  std::array<char, 13> text{};
  snprintf(text.data(), text.size(), "%02x%02x%02x%02x%02x%02x", bytes[0], bytes[1], bytes[2], bytes[3], bytes[4],
           bytes[5]);
  return text.data();
}

std::string getLinkSpeed(const std::string& device) {
  const FileDescriptor control = controlSocket();
  if (!control.isValid()) {
    TMX_LOG(LOG_ERR, "Cannot get control socket");
    return {};
  }
  ifreq request = requestFor(device);
  ethtool_cmd settings{};
  settings.cmd = ETHTOOL_GSET;
  request.ifr_data = reinterpret_cast<char*>(&settings);
  // A driver without these settings leaves the speed at 0.
  if (ioctl(control.get(), SIOCETHTOOL, &request) < 0 && errno != EOPNOTSUPP) {
    TMX_LOG(LOG_ERR, "Cannot get device settings[%s][%m]", device.c_str());
    return {};
  }
  return linkSpeedText(device, settings.speed, settings.duplex);
}

std::string linkSpeedText(const std::string& device, uint32_t speed, uint8_t duplex) {
  if (speed != SPEED_10 && speed != SPEED_100 && speed != SPEED_1000) {
    TMX_LOG(LOG_ERR, "Speed Unknown(%i)![%s][%m]", static_cast<int>(speed), device.c_str());
    return {};
  }
  if (duplex != DUPLEX_HALF && duplex != DUPLEX_FULL) {
    TMX_LOG(LOG_ERR, "duplex Unknown(%i)![%s][%m]", duplex, device.c_str());
    return {};
  }
  return std::to_string(speed) + (duplex == DUPLEX_FULL ? "full" : "half");
}

}  // namespace live_network
