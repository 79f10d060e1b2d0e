#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>

#include "sim/programs/Programs.h"

namespace sim {

namespace {

/** What the address server gives: as it was told to, or an address with everything else from the net's first host. */
struct Lease {
  std::string address = "192.168.0.120";
  std::map<std::string, std::string> options;

  Lease() {
    std::istringstream words(setting("lease", address));
    words >> address;
    const std::string server = address.substr(0, address.rfind('.')) + ".1";
    options = {{"mask", "255.255.255.0"}, {"gateway", server}, {"dns", server}, {"ntp", server}};
    options["hostname"] = "camera-" + address.substr(address.rfind('.') + 1);
    for (std::string word; words >> word;)
      options[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
  }
};

bool has(const Arguments& arguments, const char* word) {
  return std::find(arguments.begin(), arguments.end(), word) != arguments.end();
}

void run(const std::string& command) {
  if (std::system(("(" + command + ") >/dev/null 2>&1").c_str()) < 0) std::perror(command.c_str());
}

}  // namespace

bool takeLease(const Arguments& arguments) {
  Lease lease;
  if (lease.address == "silent") return false;
  std::map<std::string, std::string>& given = lease.options;
  run("ifconfig eth0 " + lease.address + " netmask " + given["mask"]);
  if (!given["gateway"].empty()) run("route del default; route add default gw " + given["gateway"]);
  if (!has(arguments, "-R") && !given["dns"].empty())
    writeText("/etc/resolv.conf", "nameserver " + given["dns"] + "\n");
  if (!has(arguments, "-N") && !given["ntp"].empty()) writeText("/etc/ntp.conf", "server " + given["ntp"] + "\n");
  const std::string& name = given["hostname"];
  if (has(arguments, "-H") && sethostname(name.c_str(), name.size()) < 0) std::perror("sethostname");
  writeText("/etc/dhcpc/dhcpcd-eth0.cache", lease.address + "\n");
  return true;
}

}  // namespace sim
