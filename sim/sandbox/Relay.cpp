#include "sim/sandbox/Relay.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "sim/sandbox/Doors.h"
#include "sim/sandbox/Enter.h"

namespace sim {

namespace {

/** Where the web server's files say which port the daemon has given to it, and which it has by itself. */
struct WebPort {
  const char* file;
  const char* line;
  int standard;
};

constexpr std::array<WebPort, 2> webPorts{
    {{"flash/lighttpd/lighttpd-inc.conf", "server.port = %d", 80},
     {"flash/lighttpd/lighttpd-inc3.conf", R"($SERVER["socket"] == ":%d")", 443}}};

Fd reachWebServer(const Home& home, const WebPort& web) {
  int port = web.standard;
  std::sscanf(readFile(home.path(web.file)).c_str(), web.line, &port);
  return join(home, {"user", "net"}) ? connectTo(loopback(port)) : Fd();
}

int portOf(const Fd& listener) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  must(getsockname(listener.get(), reinterpret_cast<sockaddr*>(&address), &size) == 0, "find the port");
  return ntohs(address.sin_port);
}

}  // namespace

void relay(const Home& home, std::vector<std::string> places) {
  if (places.empty()) places.emplace_back("0");
  std::vector<Door> doors;
  for (std::size_t index = 0; index < std::min(places.size(), webPorts.size()); ++index) {
    const WebPort& web = webPorts[index];
    doors.push_back({listenAt(parseAddress(places[index])), [&home, &web] { return reachWebServer(home, web); }});
    std::printf("%d\n", portOf(doors.back().listener));
  }
  std::fflush(stdout);
  serve(doors);
}

}  // namespace sim
