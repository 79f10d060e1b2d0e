#include "service/WebServerFiles.h"

namespace web_server_files {

std::vector<std::string> port(const std::string& httpPort) { return {"server.port = " + httpPort}; }

std::vector<std::string> ipv6(bool isOn) {
  return {isOn ? R"(server.use-ipv6 = "enable")" : R"(server.use-ipv6 = "disable")"};
}

std::vector<std::string> tls(const std::string& httpsPort, bool isOn) {
  const auto line = [](const char* setting, const char* value) {
    return std::string("\t\t") + setting + " = \"" + value + "\"";
  };
  return {
      "$SERVER[\"socket\"] == \":" + httpsPort + "\" {",
      line("ssl.engine               ", isOn ? "enable" : "disable"),
      line("ssl.pemfile              ", "/mnt/flash/lighttpd/server.pem"),
      line("ssl.verifyclient.activate", "disable"),
      line("ssl.verifyclient.enforce ", "disable"),
      line("server.document-root     ", "/var/www/"),
      "}",
  };
}

}  // namespace web_server_files
