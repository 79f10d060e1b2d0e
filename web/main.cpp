/**
 * tmx-console: the camera in a browser.
 *
 *     tmx-console [OPTION…]         started by the web server, with the socket that it connects to as standard input
 *     tmx-console guard [OPTION…]   started with the camera: puts back what nobody confirms
 */
#include <malloc.h>
#include <sys/prctl.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "access/Opener.h"
#include "access/Options.h"
#include "access/Privileges.h"
#include "web/Gateway.h"
#include "web/Guard.h"

namespace console {
namespace {

struct Options {
  std::string page = "/usr/share/tmxd/console";
  std::string description = "/usr/share/tmxd/parameters.json";
  std::string state = "/mnt/flash/console";
  std::string user = "console";
  std::string socket = "/tmp/request";
  long seconds = kConfirmTime.count();
  bool isGuard = false;
};

constexpr const char* kUsage =
    "usage: tmx-console [guard] [OPTION]...\n"
    "  --page DIR          the page's files\n"
    "  --description FILE  what tmx-describe printed\n"
    "  --state DIR         on flash, for what outlives a restart\n"
    "  --user NAME         the user to run as\n"
    "  --socket SOCKET     the parameter daemon's\n"
    "  --seconds N         guard: the time in which a change must be confirmed\n";
constexpr int kLargeBytes = 32768;
constexpr const char* kRunFolder = "/run/console";

bool parseOptions(int argc, char** argv, Options& options) {
  std::string seconds = std::to_string(options.seconds);
  const int next = tmx::takeOptions(argc, argv,
                                    {{"page", options.page},
                                     {"description", options.description},
                                     {"state", options.state},
                                     {"user", options.user},
                                     {"socket", options.socket},
                                     {"seconds", seconds}});
  options.seconds = std::atol(seconds.c_str());
  options.isGuard = next + 1 == argc && std::string(argv[next]) == "guard";
  return (next == argc || options.isGuard) && options.seconds > 0;
}

[[noreturn]] void die(const std::string& what) {
  std::fprintf(stderr, "tmx-console: %s: %s\n", what.c_str(), std::strerror(errno));
  std::exit(EXIT_FAILURE);
}

[[noreturn]] void run(const Options& options) {
  openlog("tmx-console", LOG_NDELAY, LOG_DAEMON);  // the log's socket may be root's
  const FileDescriptor opener = tmx::startOpener(options.socket, "console-opener");
  if (!opener.isValid()) die("start the opener");
  // Nothing of anybody else's is read before this.
  if (!tmx::becomeUser(options.user, {options.state, kRunFolder})) die("become the user " + options.user);
  const ConfirmFile file(options.state);
  if (options.isGuard) {
    prctl(PR_SET_NAME, "console-guard");
    guard(file, opener.get(), std::chrono::seconds(options.seconds));
  }
  mallopt(M_MMAP_THRESHOLD, kLargeBytes);  // what a burst of requests took goes back
  mallopt(M_TRIM_THRESHOLD, kLargeBytes);
  prctl(PR_SET_PDEATHSIG, SIGTERM);  // the web server that comes behind one that was killed starts another
  tmx::Catalogue catalogue;
  if (!catalogue.load(options.description)) die("read " + options.description);
  tmx::Reactor reactor;
  const Gateway gateway(reactor, FileDescriptor(STDIN_FILENO), opener.get(), options.page, catalogue, file);
  reactor.run();
}

}  // namespace
}  // namespace console

int main(int argc, char** argv) {
  console::Options options;
  if (console::parseOptions(argc, argv, options)) console::run(options);
  std::fputs(console::kUsage, stderr);
  return 2;
}
