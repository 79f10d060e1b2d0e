/**
 * tmx-console: the camera in a browser.
 *
 *     tmx-console [--page DIR] [--description FILE] [--state DIR] [--user NAME] [--socket SOCKET]
 *
 * is started by the web server, with the socket that it connects to as standard input.
 */
#include <getopt.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "web/Gateway.h"
#include "web/Opener.h"
#include "web/Privileges.h"

namespace console {
namespace {

struct Options {
  std::string page = "/usr/share/tmxd/console";
  std::string description = "/usr/share/tmxd/parameters.json";
  std::string state = "/mnt/flash/console";
  std::string user = "console";
  std::string socket = "/tmp/request";
};

bool parseOptions(int argc, char** argv, Options& options) {
  constexpr std::array<option, 6> kLongOptions{{{"page", required_argument, nullptr, 'p'},
                                                {"description", required_argument, nullptr, 'd'},
                                                {"state", required_argument, nullptr, 'f'},
                                                {"user", required_argument, nullptr, 'u'},
                                                {"socket", required_argument, nullptr, 's'},
                                                {nullptr, 0, nullptr, 0}}};
  int option = 0;
  while ((option = getopt_long(argc, argv, "", kLongOptions.data(), nullptr)) != -1) {
    switch (option) {
      case 'p':
        options.page = optarg;
        break;
      case 'd':
        options.description = optarg;
        break;
      case 'f':
        options.state = optarg;
        break;
      case 'u':
        options.user = optarg;
        break;
      case 's':
        options.socket = optarg;
        break;
      default:
        return false;
    }
  }
  return optind == argc;
}

[[noreturn]] void die(const std::string& what) {
  std::fprintf(stderr, "tmx-console: %s: %s\n", what.c_str(), std::strerror(errno));
  std::exit(EXIT_FAILURE);
}

[[noreturn]] void run(const Options& options) {
  const FileDescriptor opener = startOpener(options.socket);
  if (!opener.isValid()) die("start the opener");
  // Nothing of anybody else's is read before this.
  if (!becomeUser(options.user, options.state)) die("become the user " + options.user);
  prctl(PR_SET_PDEATHSIG, SIGTERM);  // the web server that comes behind one that was killed starts another
  Catalogue catalogue;
  if (!catalogue.load(options.description)) die("read " + options.description);
  Reactor reactor;
  const Gateway gateway(reactor, FileDescriptor(STDIN_FILENO), opener.get(), options.page, std::move(catalogue));
  reactor.run();
}

}  // namespace
}  // namespace console

int main(int argc, char** argv) {
  console::Options options;
  if (console::parseOptions(argc, argv, options)) console::run(options);
  std::fputs("usage: tmx-console [--page DIR] [--description FILE] [--state DIR] [--user NAME] [--socket SOCKET]\n",
             stderr);
  return 2;
}
