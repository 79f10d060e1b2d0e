#include "sim/sandbox/Options.h"

#include <getopt.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace sim {

namespace {

constexpr const char* usage =
    "usage: camera-sandbox COMMAND [--home DIR] [--build DIR] [OPTION]... [WORD]...\n"
    "  up       boot the camera and wait for its answer\n"
    "             --fresh            begin with a new home\n"
    "             --model NAME       model name\n"
    "             --without FEATURE  switch a feature off (repeatable)\n"
    "             --without /bin/X   leave a program out, until the next up (repeatable)\n"
    "             --daemon BUILD     the build of the daemon, when it is another\n"
    "             --tmxd-arg ARG     argument for the daemon (repeatable)\n"
    "             --env NAME=VALUE   variable for the daemon (repeatable)\n"
    "             --guard-arg ARG    argument for the console's guard (repeatable)\n"
    "             --uplink [ADDRESS:]PORT\n"
    "                                inside, 127.0.0.1:8883 leads there, by default to the host's loopback address\n"
    "             --timeout SECONDS  give up waiting; 0: do not wait\n"
    "             --quiet            no progress\n"
    "  make     make the files of a camera that has none yet, and leave it off\n"
    "  down     stop it in order\n"
    "  reboot   restart it and wait for its answer\n"
    "  cut      cut its power\n"
    "  status   exit status 0 when it runs\n"
    "  shell    a shell inside\n"
    "  exec     run WORD... inside\n"
    "  relay    the web server at WORD, \"[ADDRESS:]PORT\" of the host, by default any free port of its loopback "
    "address;\n"
    "           its encrypted port at a second WORD\n"
    "  flash    count | cut=N[:half|:lose] | fail=N:EINTR|EIO|ENOSPC|EROFS | full | off | show\n";

constexpr std::array<option, 14> longOptions{{{"home", required_argument, nullptr, 'h'},
                                              {"build", required_argument, nullptr, 'b'},
                                              {"daemon", required_argument, nullptr, 'd'},
                                              {"userland", required_argument, nullptr, 'u'},
                                              {"model", required_argument, nullptr, 'm'},
                                              {"without", required_argument, nullptr, 'w'},
                                              {"fresh", no_argument, nullptr, 'f'},
                                              {"quiet", no_argument, nullptr, 'q'},
                                              {"uplink", required_argument, nullptr, 'l'},
                                              {"timeout", required_argument, nullptr, 't'},
                                              {"tmxd-arg", required_argument, nullptr, 'a'},
                                              {"env", required_argument, nullptr, 'e'},
                                              {"guard-arg", required_argument, nullptr, 'g'},
                                              {nullptr, 0, nullptr, 0}}};

bool take(Options& options, int option, const std::string& value) {
  switch (option) {
    case 'h':
      options.home = value;
      return true;
    case 'b':
      options.build = value;
      return true;
    case 'd':
      options.daemon = value;
      return true;
    case 'u':
      options.userland = value;
      return true;
    case 'm':
      options.model = value;
      return true;
    case 'w':
      (value.starts_with('/') ? options.missing : options.without).push_back(value);
      return true;
    case 'f':
      options.fresh = true;
      return true;
    case 'q':
      options.quiet = true;
      return true;
    case 'l':
      options.uplink = value;
      return true;
    case 't':
      options.timeoutSeconds = std::atoi(value.c_str());
      return true;
    case 'a':
      options.daemonArguments.push_back(value);
      return true;
    case 'g':
      options.guardArguments.push_back(value);
      return true;
    case 'e': {
      const std::size_t equals = value.find('=');
      if (equals == std::string::npos) return false;
      options.daemonVariables.emplace_back(value.substr(0, equals), value.substr(equals + 1));
      return true;
    }
    default:
      return false;
  }
}

/** Relative paths would mean something else in a process that has moved. */
void makeAbsolute(Options& options) {
  std::error_code error;
  if (options.build.empty()) {
    options.build = std::filesystem::read_symlink("/proc/self/exe", error).parent_path().parent_path();
  }
  if (options.userland.empty()) {
    options.userland = options.build / "userland";
    // Every build of a checkout shares the packages that were unpacked for the first.
    const Path shared = options.build.parent_path() / "build" / "userland";
    if (!std::filesystem::exists(options.userland, error)) options.userland = shared;
  }
  if (options.daemon.empty()) options.daemon = options.build;
  for (Path* path : {&options.home, &options.build, &options.daemon, &options.userland}) {
    *path = std::filesystem::absolute(*path, error).lexically_normal();
    if (!path->has_filename()) *path = path->parent_path();
  }
}

}  // namespace

std::optional<Options> parseOptions(int argc, char** argv) {
  Options options;
  if (const char* home = std::getenv("CAMERA_HOME")) options.home = home;
  bool sensible = argc > 1;
  if (sensible) options.command = argv[1];
  optind = 2;
  int option = 0;
  while (sensible && (option = getopt_long(argc, argv, "+", longOptions.data(), nullptr)) != -1) {
    sensible = take(options, option, optarg != nullptr ? optarg : "");
  }
  if (!sensible) {
    std::fputs(usage, stderr);
    return std::nullopt;
  }
  for (int word = optind; word < argc; ++word)
    options.words.emplace_back(argv[word]);
  makeAbsolute(options);
  return options;
}

}  // namespace sim
