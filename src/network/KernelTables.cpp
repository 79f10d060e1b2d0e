/** The kernel's tables of routes and of IPv6 addresses. */
#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <sstream>

#include "network/LiveNetwork.h"
#include "request/Log.h"

namespace live_network {

namespace {

constexpr size_t kGroups = 8;
constexpr size_t kGroupDigits = 4;

using Groups = std::array<std::string, kGroups>;

/** Where a run of groups begins, and behind its last one. */
struct Run {
  size_t begin = 0;
  size_t end = 0;

  [[nodiscard]] size_t length() const { return end - begin; }
};

Run longestRunOfZeros(const Groups& groups) {
  Run longest;
  for (size_t begin = 0; begin < kGroups; ++begin) {
    size_t end = begin;
    while (end < kGroups && groups[end] == "0")
      ++end;
    if (end - begin > longest.length()) longest = {begin, end};
  }
  return longest;
}

std::string join(const Groups& groups, size_t begin, size_t end) {
  std::string text;
  for (size_t i = begin; i < end; ++i)
    text += (i == begin ? "" : ":") + groups[i];
  return text;
}

}  // namespace

std::string shortenIPv6(std::string_view digits) {
  if (digits.size() != kGroups * kGroupDigits) return {};
  Groups groups;
  for (size_t i = 0; i < kGroups; ++i) {
    const std::string_view group = digits.substr(i * kGroupDigits, kGroupDigits);
    groups[i] = group.substr(std::min(group.find_first_not_of('0'), kGroupDigits - 1));
  }
  const Run zeros = longestRunOfZeros(groups);
  if (zeros.length() == 0) return join(groups, 0, kGroups);
  return join(groups, 0, zeros.begin) + "::" + join(groups, zeros.end, kGroups);
}

std::string findIPv6Address(std::istream& table, std::string_view device, int32_t count, std::string_view scope) {
  int32_t found = 0;
  for (std::string line; std::getline(table, line);) {
    std::istringstream row(line);
    std::string address, index, prefix, rowScope, flags, rowDevice;
    if (!(row >> address >> index >> prefix >> rowScope >> flags >> rowDevice)) continue;
    if (rowDevice == device && rowScope == scope && ++found == count) return shortenIPv6(address);
  }
  return {};
}

std::string getIPv6Address(std::string_view device, int32_t count, std::string_view scope) {
  std::ifstream table("/proc/net/if_inet6");
  if (table.is_open()) return findIPv6Address(table, device, count, scope);
  TMX_LOG(LOG_ERR, "ifstream error");
  return {};
}

std::optional<in_addr> findDefaultGateway(std::istream& table) {
  for (std::string line; std::getline(table, line);) {
    std::istringstream row(line);
    std::string device, destination, gateway, flags;
    if (!(row >> device >> destination >> gateway >> flags)) continue;
    if (destination != "00000000" || flags != "0003") continue;  // up, and by a gateway
    // The kernel prints the number as this machine reads the four bytes of the network order.
    in_addr address{};
    const char* end = gateway.data() + gateway.size();
    if (const auto parsed = std::from_chars(gateway.data(), end, address.s_addr, 16); parsed.ptr == end) return address;
    TMX_LOG(LOG_ERR, "hexToUint32 error(%m)");
    return std::nullopt;
  }
  return in_addr{};
}

std::optional<in_addr> getDefaultGateway() {
  std::ifstream table("/proc/net/route");
  if (table.is_open()) return findDefaultGateway(table);
  TMX_LOG(LOG_ERR, "ifstream error");
  return std::nullopt;
}

}  // namespace live_network
