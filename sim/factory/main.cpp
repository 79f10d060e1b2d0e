/**
 * camera-factory: writes the data with which a simulated camera leaves the factory.
 *
 *     camera-factory [--model NAME] [--without FEATURE]... [--model-only] HOME
 *     camera-factory --zones DIR
 *
 * fills HOME/factory (the factory partition's tree) and HOME/sysinfo; --model-only touches the model and features
 * alone.
 */
#include <cstdio>
#include <cstring>

#include "sim/factory/Zones.h"

namespace sim {

namespace {

struct Order {
  std::string model;
  std::vector<std::string> without;
  bool modelOnly = false;
  Path home;
  Path zones;
};

bool parse(int argc, char** argv, Order& order) {
  for (int at = 1; at < argc; ++at) {
    const std::string word = argv[at];
    const bool more = at + 1 < argc;
    if (word == "--model" && more) {
      order.model = argv[++at];
    } else if (word == "--without" && more) {
      order.without.emplace_back(argv[++at]);
    } else if (word == "--zones" && more) {
      order.zones = argv[++at];
    } else if (word == "--model-only") {
      order.modelOnly = true;
    } else if (order.home.empty() && !word.starts_with("-")) {
      order.home = word;
    } else {
      return false;
    }
  }
  return order.home.empty() != order.zones.empty();
}

constexpr const char* webServer =
    "# The daemon writes the three included files before it starts the server.\n"
    "server.modules = (\"mod_auth\", \"mod_authn_file\", \"mod_openssl\", \"mod_scgi\")\n"
    "server.document-root = \"/var/www/\"\n"
    "server.pid-file = \"/var/run/lighttpd.pid\"\n"
    "server.errorlog = \"/var/log/lighttpd.log\"\n"  // in the syslog each of its lines would be an error
    "index-file.names = (\"index.html\")\n"
    "mimetype.assign = (\".html\" => \"text/html\")\n"
    "include \"lighttpd-inc.conf\"\n"
    "include \"lighttpd-inc2.conf\"\n"
    "include \"lighttpd-inc3.conf\"\n"
    "auth.backend = \"htpasswd\"\n"
    "auth.backend.htpasswd.userfile = \"/etc/lighttpd/.htpasswd\"\n"
    "auth.require = (\"/setup/\" => (\"method\" => \"basic\", \"realm\" => \"camera\", \"require\" => "
    "\"valid-user\"),\n"
    "  \"/console\" => (\"method\" => \"basic\", \"realm\" => \"camera\", \"require\" => \"valid-user\"))\n"
    "scgi.server = (\"/console\" => ((\"bin-path\" => \"/usr/bin/tmx-console\", \"socket\" => "
    "\"/var/run/console.socket\",\n"
    "  \"max-procs\" => 1, \"check-local\" => \"disable\")))\n"
    "$HTTP[\"url\"] =~ \"^/console\" {\n"
    "  server.stream-response-body = 2\n"  // events go out at once, and who does not take them is not waited for
    "  server.max-request-size = 64\n"     // KiB
    "}\n";

void writeEverything(const Path& home) {
  const Path factory = home / "factory";
  writeSettings(factory, home / "sysinfo");
  writeFactoryZone(home / "sysinfo/localtime");
  writeFactoryFile(factory / "lighttpd/lighttpd.conf", webServer);
  writeFactoryFile(factory / "lighttpd/.htpasswd", "");
  std::error_code error;
  std::filesystem::create_directories(factory / "usr/audio", error);
}

int carryOut(const Order& order) {
  if (!order.zones.empty()) {
    writeZones(order.zones);
    return 0;
  }
  if (!order.modelOnly) writeEverything(order.home);
  const Path model = order.home / "factory/model";
  if (!order.model.empty() || !std::filesystem::exists(model)) {
    writeFactoryFile(model, (order.model.empty() ? "KT-A10" : order.model) + "\n");
  }
  return writeFeatures(order.home / "factory", order.without) ? 0 : 1;
}

}  // namespace

}  // namespace sim

int main(int argc, char** argv) {
  sim::Order order;
  if (sim::parse(argc, argv, order)) return sim::carryOut(order);
  std::fputs("usage: camera-factory [--model NAME] [--without FEATURE]... [--model-only] HOME | --zones DIR\n", stderr);
  return 2;
}
