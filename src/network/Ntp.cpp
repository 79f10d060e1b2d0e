#include "network/Ntp.h"

#include <netinet/in.h>

#include "service/CTmxdNetworkUtility.h"

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

}  // namespace Network
