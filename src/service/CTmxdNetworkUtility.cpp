#include "service/CTmxdNetworkUtility.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>

#include "request/Log.h"

namespace {

constexpr size_t kLongestName = 63;
constexpr int kShortestMask = 8;
constexpr int kLongestMask = 30;

/** The ends of the classes, of which the nets 0 and 127 are no part; in host order. */
constexpr std::array<uint32_t, 6> kClassEnds{0x01000000, 0x7EFFFFFF, 0x80000000, 0xBFFFFFFF, 0xC0000000, 0xDFFFFFFF};

bool isNameCharacter(char c) {
  return c == '.' || c == '-' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

}  // namespace

std::string CTmxdNetworkUtility::Inet_ntop(const in_addr* address) {
  assert(address != nullptr);
  std::array<char, INET_ADDRSTRLEN> text{};
  if (inet_ntop(AF_INET, address, text.data(), text.size()) != nullptr) return text.data();
  TMX_LOG(LOG_ERR, "inet_ntop(%m)");
  return {};
}

int32_t CTmxdNetworkUtility::parseAddress(const std::string& text, in_addr* address) {
  const int32_t result = inet_pton(AF_INET, text.c_str(), address);
  if (result < 0) TMX_LOG(LOG_ERR, "inet_pton(%m)");
  return result;
}

in_addr_t CTmxdNetworkUtility::Inet_pton(const std::string& text) {
  in_addr address{};
  if (inet_pton(AF_INET, text.c_str(), &address) == 1) return address.s_addr;
  TMX_LOG(LOG_ERR, "inet_pton(%m)");
  return INADDR_NONE;
}

int32_t CTmxdNetworkUtility::checkHostAddress(in_addr address) {
  const uint32_t host = ntohl(address.s_addr);
  const uint32_t net = host >> 24;
  const bool isAboveC = IN_MULTICAST(host) || IN_BADCLASS(host);
  const bool isEnd = std::find(kClassEnds.begin(), kClassEnds.end(), host) != kClassEnds.end();
  return isAboveC || isEnd || net == 0 || net == IN_LOOPBACKNET ? -1 : 0;
}

int32_t CTmxdNetworkUtility::checkNetmask(in_addr mask) {
  const uint32_t host = ntohl(mask.s_addr);
  const int ones = std::countl_one(host);
  return ones >= kShortestMask && ones <= kLongestMask && ones == std::popcount(host) ? 0 : -1;
}

int32_t CTmxdNetworkUtility::checkGateway(const std::string& address, const std::string& mask,
                                          const std::string& gateway) {
  const in_addr_t way = Inet_pton(gateway);
  if (way == INADDR_ANY) return 0;
  const in_addr_t own = Inet_pton(address);
  const in_addr_t bits = Inet_pton(mask);
  const in_addr_t subnet = own & bits;
  const bool isOther = way != own && way != subnet && way != (subnet | ~bits);
  return isOther && (way & bits) == subnet ? 0 : -1;
}

int32_t CTmxdNetworkUtility::checkName(const std::string& name) {
  if (!std::all_of(name.begin(), name.end(), isNameCharacter)) return -1;
  return name.size() <= kLongestName ? 0 : -2;
}
