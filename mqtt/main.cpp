/**
 * tmx-mqtt: the camera at an MQTT broker.
 *
 *     tmx-mqtt [OPTION…]   started with the camera, where it is told of a broker
 */
#include <malloc.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
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
#include "mqtt/Agent.h"
#include "mqtt/Config.h"

namespace mqtt {
namespace {

struct Options {
  std::string config = "/mnt/flash/mqtt/agent.conf";
  std::string description = "/usr/share/tmxd/parameters.json";
  std::string user = "mqtt";
  std::string socket = "/tmp/request";
};

constexpr const char* kUsage =
    "usage: tmx-mqtt [OPTION]...\n"
    "  --config FILE       where the broker is, and what it gets\n"
    "  --description FILE  what tmx-describe printed\n"
    "  --user NAME         the user to run as\n"
    "  --socket SOCKET     the parameter daemon's\n";
constexpr int kLargeBytes = 32768;
/** Far beyond what is ever needed: a broker may announce a message of 256 MB. */
constexpr rlim_t kMaxData = rlim_t{32} << 20;

bool parseOptions(int argc, char** argv, Options& options) {
  return tmx::takeOptions(argc, argv,
                          {{"config", options.config},
                           {"description", options.description},
                           {"user", options.user},
                           {"socket", options.socket}}) == argc;
}

[[noreturn]] void die(const std::string& what) {
  syslog(LOG_ERR, "%s", what.c_str());
  std::fprintf(stderr, "tmx-mqtt: %s\n", what.c_str());
  std::exit(EXIT_FAILURE);
}

[[noreturn]] void dieOfErrno(const std::string& what) { die(what + ": " + std::strerror(errno)); }

Config configurationOf(const std::string& file) {
  try {
    return readConfig(file);
  } catch (const BadConfig& bad) {
    die(file + ": " + bad.what());
  }
}

FileDescriptor blockedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return FileDescriptor(signalfd(-1, &signals, SFD_CLOEXEC));
}

void boundMemory() {
  mallopt(M_MMAP_THRESHOLD, kLargeBytes);  // what a burst of requests took goes back
  mallopt(M_TRIM_THRESHOLD, kLargeBytes);
#ifndef __SANITIZE_ADDRESS__  // which takes room for all addresses
  const rlimit limit{kMaxData, kMaxData};
  setrlimit(RLIMIT_DATA, &limit);
#endif
}

[[noreturn]] void run(const Options& options) {
  openlog("tmx-mqtt", LOG_NDELAY, LOG_DAEMON);  // the log's socket may be root's
  const FileDescriptor opener = tmx::startOpener(options.socket, "mqtt-opener");
  if (!opener.isValid()) dieOfErrno("start the opener");
  const Config config = configurationOf(options.config);
  if (!tmx::becomeUser(options.user, {})) dieOfErrno("become the user " + options.user);
  boundMemory();
  std::vector<std::string> paths;
  const auto choose = [&](const tmx::Traits& parameter, const std::vector<std::string>& all) {
    for (const std::string& path : all) {
      if (isPublished(config, parameter, path)) paths.push_back(path);
    }
  };
  tmx::Catalogue catalogue;
  if (!catalogue.load(options.description, choose)) die("read " + options.description);
  tmx::Reactor reactor;
  Agent agent(reactor, opener.get(), config, catalogue, std::move(paths), options.description);
  const FileDescriptor signals = blockedSignals();
  reactor.watch(signals.get(), POLLIN, [&agent](short /*events*/) {
    agent.close();
    std::exit(EXIT_SUCCESS);
  });
  reactor.run();
}

}  // namespace
}  // namespace mqtt

int main(int argc, char** argv) {
  mqtt::Options options;
  if (mqtt::parseOptions(argc, argv, options)) mqtt::run(options);
  std::fputs(mqtt::kUsage, stderr);
  return 2;
}
