#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "cli/Client.h"

namespace tmx {

/** What the process ends with. */
enum ExitStatus : int {
  kExitOk = 0,            ///< every item was answered by 200 or 202
  kExitRefused = 1,       ///< the daemon refused something, or something that was asked for is not there
  kExitUsage = 2,         ///< the command line cannot be understood
  kExitNoConnection = 3,  ///< no daemon, no answer, or none in time
};

/** The command line, understood. */
struct Options {
  std::string program;  ///< as it was called
  std::string socket;   ///< -s, else $TMX_SOCKET, else "/tmp/request"
  bool isSocketGiven = false;
  bool isUserGiven = false;
  UserClass user = UserClass::kAdmin;
  std::chrono::milliseconds timeout{30'000};
  std::chrono::milliseconds interval{1'000};  ///< between two polls of watch
  bool isQuiet = false;
  bool isJson = false;
  bool isRaw = false;     ///< values are shown and sent in their form on the wire
  bool isCommit = false;  ///< accepted writes are committed at once
  bool isDryRun = false;  ///< load tells what it would do
  bool wantsHelp = false;
  bool wantsVersion = false;
  std::vector<std::string> arguments;  ///< the command, if one is named, and what follows
};

/** Reads the command line. False, with a message on standard error, when it cannot be understood. */
[[nodiscard]] bool parseOptions(int argc, char** argv, Options& options);

/** The name that --as takes for the class. */
[[nodiscard]] const char* userName(UserClass user);

}  // namespace tmx
