#pragma once

#include <string>
#include <vector>

/** The lines of the files that the web server's configuration includes. */
namespace web_server_files {

[[nodiscard]] std::vector<std::string> port(const std::string& httpPort);
[[nodiscard]] std::vector<std::string> ipv6(bool isOn);
[[nodiscard]] std::vector<std::string> tls(const std::string& httpsPort, bool isOn);

}  // namespace web_server_files
