#include "network/Routing.h"

#include <unistd.h>

#include <array>

#include "request/Log.h"

namespace Network {

int32_t CHostname::setKernelName(Request& request) {
  if (network_rows::isLeased(network_row::IF1_DHCP_HOSTNAME)) return 0;
  if (sethostname(request.value.c_str(), request.value.size()) < 0) TMX_LOG(LOG_ERR, "sethostname error(%m)");
  return 0;
}

int32_t CHostname::fetchKernelName(const Request& /*request*/, std::string& text) {
  std::array<char, 64> name{};
  if (gethostname(name.data(), name.size()) < 0) return -status::kInternalError;
  text = name.data();
  return 0;
}

}  // namespace Network
