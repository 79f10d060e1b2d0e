#include "cli/Options.h"

#include <getopt.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace tmx {
namespace {

constexpr std::array<const char*, 5> kUserNames = {"admin", "operator", "user", "onvif", "debug"};
constexpr const char* kDefaultSocket = "/tmp/request";

bool parseUser(std::string_view text, UserClass& user) {
  for (std::size_t i = 0; i < kUserNames.size(); ++i) {
    if (text != kUserNames[i]) continue;
    user = static_cast<UserClass>(i);
    return true;
  }
  std::fprintf(stderr, "tmxctl: --as takes admin, operator, user, onvif or debug\n");
  return false;
}

/** Seconds, whole or with a fraction, from a millisecond to a day. */
bool parseSeconds(const char* option, const char* text, std::chrono::milliseconds& time) {
  char* end = nullptr;
  const double seconds = std::strtod(text, &end);
  if (end != text && *end == '\0' && seconds >= 0.001 && seconds <= 86'400) {
    time = std::chrono::milliseconds(static_cast<std::chrono::milliseconds::rep>(seconds * 1000));
    return true;
  }
  std::fprintf(stderr, "tmxctl: %s takes a number of seconds from 0.001 to 86400\n", option);
  return false;
}

enum LongOnly : int { kAs = 1000, kJson, kDryRun };

const std::array<option, 12> kLongOptions = {{
    {"socket", required_argument, nullptr, 's'},
    {"timeout", required_argument, nullptr, 't'},
    {"interval", required_argument, nullptr, 'i'},
    {"as", required_argument, nullptr, kAs},
    {"json", no_argument, nullptr, kJson},
    {"dry-run", no_argument, nullptr, kDryRun},
    {"quiet", no_argument, nullptr, 'q'},
    {"raw", no_argument, nullptr, 'r'},
    {"commit", no_argument, nullptr, 'c'},
    {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'V'},
    {nullptr, 0, nullptr, 0},
}};

bool takeOption(int option, const char* argument, Options& options) {
  switch (option) {
    case 's':
      options.socket = argument;
      options.isSocketGiven = true;
      return true;
    case 't':
      return parseSeconds("--timeout", argument, options.timeout);
    case 'i':
      return parseSeconds("--interval", argument, options.interval);
    case kDryRun:
      options.isDryRun = true;
      return true;
    case kAs:
      options.isUserGiven = true;
      return parseUser(argument, options.user);
    case kJson:
      options.isJson = true;
      return true;
    case 'q':
      options.isQuiet = true;
      return true;
    case 'r':
      options.isRaw = true;
      return true;
    case 'c':
      options.isCommit = true;
      return true;
    case 'h':
      options.wantsHelp = true;
      return true;
    case 'V':
      options.wantsVersion = true;
      return true;
    default:
      return false;  // getopt_long has told the user
  }
}

}  // namespace

bool parseOptions(int argc, char** argv, Options& options) {
  options.program = argv[0];
  const char* socket = std::getenv("TMX_SOCKET");
  options.socket = socket != nullptr && *socket != '\0' ? socket : kDefaultSocket;
  int option = 0;
  while ((option = getopt_long(argc, argv, "s:t:i:qrchV", kLongOptions.data(), nullptr)) != -1) {
    if (!takeOption(option, optarg, options)) return false;
  }
  options.arguments.assign(argv + optind, argv + argc);
  return true;
}

const char* userName(UserClass user) { return kUserNames[static_cast<std::size_t>(user)]; }

}  // namespace tmx
