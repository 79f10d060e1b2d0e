#include "network/AccessHost.h"

#include <arpa/inet.h>

#include "request/Log.h"
#include "service/Numbers.h"

namespace {

bool isAddress(int family, const std::string& text) {
  in6_addr address{};
  const int result = inet_pton(family, text.c_str(), &address);
  if (result < 0) TMX_LOG(LOG_ERR, "inet_pton(%m)");
  return result > 0;
}

}  // namespace

std::optional<AccessHost> m_analyzeHost(const std::string& text) {
  if (text.empty()) return AccessHost{};
  const bool isIpv6 = text.find(':') != std::string::npos;
  const size_t slash = text.find('/');
  AccessHost host{.address = text.substr(0, slash)};
  if (!isAddress(isIpv6 ? AF_INET6 : AF_INET, host.address)) return std::nullopt;
  if (slash == std::string::npos || slash + 1 == text.size()) return host;

  const auto prefix = parseNumber(text.substr(slash + 1));
  const int32_t low = isIpv6 ? 16 : 8;
  const int32_t high = isIpv6 ? 126 : 30;
  if (!prefix || *prefix < low || *prefix > high) return std::nullopt;
  host.prefix = *prefix;
  return host;
}
