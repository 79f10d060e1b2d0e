#include "network/CNetworkApiBase.h"

#include <netinet/in.h>
#include <unistd.h>

#include "service/CTmxdNetworkUtility.h"

using Net = CTmxdNetworkUtility;

bool CNetworkApiBase::hasOpenssl() { return access("/bin/openssl", F_OK) == 0; }

bool CNetworkApiBase::hasSnmpd() { return access("/bin/snmpd", F_OK) == 0; }

int32_t CNetworkApiBase::checkAddress(Request& request) {
  in_addr address{};
  const int32_t result = Net::parseAddress(request.value, &address);
  if (result < 0) return -status::kInternalError;
  return result == 1 && Net::checkHostAddress(address) == 0 ? 0 : -status::kNotUnderstood;
}

int32_t CNetworkApiBase::checkAddressOrNone(Request& request) {
  return request.value == "0.0.0.0" ? 0 : checkAddress(request);
}

int32_t CNetworkApiBase::checkNetmask(Request& request) {
  in_addr mask{};
  const int32_t result = Net::parseAddress(request.value, &mask);
  if (result < 0) return -status::kInternalError;
  return result == 1 && Net::checkNetmask(mask) == 0 ? 0 : -status::kNotUnderstood;
}

int32_t CNetworkApiBase::checkName(Request& request) {
  if (request.value == "%00") request.value.clear();
  return Net::checkName(request.value) < 0 ? -status::kNotUnderstood : 0;
}
