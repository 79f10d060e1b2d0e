#include "service/WebServerFiles.h"

namespace web_server_files {

std::vector<std::string> port(const std::string& httpPort) { return {"server.port = " + httpPort}; }

std::vector<std::string> ipv6(bool isOn) {
  return {isOn ? R"(server.use-ipv6 = "enable")" : R"(server.use-ipv6 = "disable")"};
}

std::vector<std::string> tls(const std::string& httpsPort, bool isOn) {
  return {
      R"($SERVER["socket"] == ":)" + httpsPort + R"(" {)",
      "\t\tssl.engine                = " + std::string(isOn ? R"("enable")" : R"("disable")"),
      "\t\t"
      R"(ssl.pemfile               = "/mnt/flash/lighttpd/server.pem")",
      "\t\t"
      R"(ssl.verifyclient.activate = "disable")",
      "\t\t"
      R"(ssl.verifyclient.enforce  = "disable")",
      "\t\t"
      R"(server.document-root      = "/var/www/")",
      "}",
  };
}

}  // namespace web_server_files
