#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sim/sandbox/Files.h"
#include "sim/sandbox/Process.h"

namespace sim {

/** The command line: which camera, which build of it, and how it is to start. */
struct Options {
  std::string command;
  Path home = ".camera";
  Path build;     ///< has bin/ and lib/; by default the build this program belongs to
  Path daemon;    ///< the build whose daemon runs: this one, one with sanitizers, or one for another machine
  Path userland;  ///< unpacked packages that the host lacks; need not exist
  std::string model;
  std::vector<std::string> without;  ///< features that are switched off
  std::vector<std::string> missing;  ///< programs that the camera does not have, "/bin/NAME"
  bool fresh = false;
  bool quiet = false;
  std::string uplink;  ///< address of the host that the camera's 127.0.0.1:8883 leads to; empty: it leads nowhere
  int timeoutSeconds = 60;
  std::vector<std::string> daemonArguments;
  Environment daemonVariables;
  std::vector<std::string> guardArguments;
  std::vector<std::string> words;  ///< what stands behind the options
};

/** Parses the command line; nothing when it makes no sense, after saying so on standard error. */
[[nodiscard]] std::optional<Options> parseOptions(int argc, char** argv);

}  // namespace sim
