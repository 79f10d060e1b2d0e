#include "network/Ntp.h"

#include <netinet/in.h>

#include "service/CTmxdNetworkUtility.h"
#include "service/CTmxdUtility.h"
#include "service/NetworkRows.h"

namespace Network {

namespace {

constexpr size_t kLongestHost = 63;

}  // namespace

int32_t CNtp::CHost::checkHost(Request& request) {
  if (request.value == "%00") request.value.clear();
  in_addr address{};
  const bool isName = CTmxdNetworkUtility::parseAddress(request.value, &address) == 0;
  if (isName) return request.value.size() <= kLongestHost ? 0 : -status::kNotUnderstood;
  return checkAddressOrNone(request);
}

int32_t CNtp::CHost::fetch(const Request& /*request*/, std::string& text) {
  if (!network_rows::isLeased(network_row::IF1_DHCP_NTP)) return kShowStored;
  text = CTmxdUtility::readKeyValue("/etc/ntp.conf", "server");
  return 0;
}

}  // namespace Network
