#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "sim/programs/Programs.h"

namespace sim {

/**
 * Becomes the daemon that was built for another machine, under the emulator. That one keeps the daemon's name and gives
 * the preloaded library to the daemon alone: it would count the emulator's own calls beside the daemon's.
 */
int tmxd(const Arguments& arguments) {
  const char* preload = std::getenv("LD_PRELOAD");
  std::vector<std::string> command{program_invocation_name, "-0", program_invocation_name};
  if (preload != nullptr) command.insert(command.end(), {"-E", std::string("LD_PRELOAD=") + preload});
  command.emplace_back("/opt/daemon/bin/tmxd");
  command.insert(command.end(), arguments.begin() + 1, arguments.end());
  unsetenv("LD_PRELOAD");
  std::vector<char*> words;
  for (std::string& word : command)
    words.push_back(word.data());
  words.push_back(nullptr);
  execv("/usr/lib/emulated/tmxd", words.data());
  std::perror("emulator");
  return 127;
}

}  // namespace sim
