#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cassert>

#include "local/ArgumentVector.h"
#include "local/Process.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

namespace {

/** Becomes the program, free of the signals that the daemon blocks. */
[[noreturn]] void runChild(char* const* argv) {
  // _exit: what is to be done at the end of the daemon is not the child's.
  sigset_t all;
  if (sigfillset(&all) < 0) _exit(1);
  if (sigprocmask(SIG_UNBLOCK, &all, nullptr) < 0) _exit(2);
  execvp(argv[0], argv);
  TMX_LOG(LOG_ERR, "execv(%m)");
  _exit(3);
}

}  // namespace

int32_t CTmxdUtility::execProcess(const std::vector<std::string>& argv) {
  assert(!argv.empty());
  const ArgumentVector arguments(argv);
  const pid_t pid = fork();
  if (pid == 0) runChild(arguments.get());
  if (pid < 0) {
    TMX_LOG(LOG_ERR, "fork(%m)");
    return -1;
  }
  const std::optional<int> status = CommonInterface::Process::waitForEnd(pid);
  return status.has_value() && WIFEXITED(*status) ? WEXITSTATUS(*status) : -1;
}
