#include "network/Resolver.h"

#include <unistd.h>

#include <array>
#include <fstream>
#include <string>

#include "request/Log.h"
#include "service/CTmxdUtility.h"
#include "service/NetworkRows.h"
#include "tree/Commit.h"

namespace resolver {

namespace {

using namespace network_row;
using network_rows::staged;

constexpr const char* kFile = "/etc/resolv.conf";

constexpr std::array<::Row, 6> kRows{DNS, DNS_IP, DOMAINNAME, DOMAINNAME2, DOMAINNAME3, DOMAINNAME4};

/** The search line, empty without a domain. */
std::string searchLine() {
  std::string line;
  for (const auto row : kDomains) {
    const std::string domain = staged(row);
    if (!domain.empty()) line += " " + domain;
  }
  return line.empty() ? line : "search" + line + "\n";
}

int32_t m_createResolvFile(const std::string& server) {
  std::ofstream file(kFile, std::ios::trunc);
  if (!file.is_open()) {
    TMX_LOG(LOG_ERR, "fstream open error");
    return -1;
  }
  file << searchLine() << "nameserver " << server << std::endl;
  return file ? 0 : -1;
}

int32_t m_deleteResolvFile() {
  const int32_t result = unlink(kFile);
  if (result < 0) TMX_LOG(LOG_ERR, "unlink error(%m)");
  return result;
}

int32_t apply(Request& /*request*/) {
  if (network_rows::isLeased(IF1_DHCP_DNS)) return 0;
  const std::string server = staged(DNS_IP);
  const bool isWanted = staged(DNS) == "on" && server != "0.0.0.0";
  const int32_t result = isWanted ? m_createResolvFile(server) : m_deleteResolvFile();
  return result < 0 ? -status::kInternalError : 0;
}

}  // namespace

int32_t fetchServer(const Request& /*request*/, std::string& text) {
  text = CTmxdUtility::readKeyValue(kFile, "nameserver");
  return 0;
}

int32_t restart(Request& request) { return carryOut({.rows = kRows, .apply = apply}, request); }

}  // namespace resolver
