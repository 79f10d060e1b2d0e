#include "local/Process.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "local/ArgumentVector.h"
#include "local/CommandOutput.h"
#include "request/Log.h"

namespace {

constexpr int32_t kPollInterval = 10;  // microseconds
constexpr size_t kPidLength = 10;

void removeIfThere(const std::string& path) {
  if (CommonInterface::isFileExist(path)) CommonInterface::removeFile(path);
}

}  // namespace

pid_t CommonInterface::Process::Start(const std::string& pidFile, const std::vector<std::string>& command) {
  assert(!command.empty());
  CommandLog(command);
  if (isFileExist(pidFile)) return readPid(pidFile, -1);
  const pid_t pid = Fork(command);
  if (pid < 0) {
    TMX_LOG(LOG_ERR, "Fork Fail");
    removeIfThere(pidFile);
    return pid;
  }
  writeLines(pidFile, {std::to_string(pid)});
  return pid;
}

pid_t CommonInterface::Process::StartOnly(const std::string& pidFile, const std::vector<std::string>& command) {
  assert(!command.empty());
  CommandLog(command);
  if (isFileExist(pidFile)) return readPid(pidFile, -1);
  const pid_t pid = Fork(command);
  if (pid < 0) {
    TMX_LOG(LOG_ERR, "StartOnly Fork Fail");
    removeIfThere(pidFile);
  }
  return pid;
}

pid_t CommonInterface::Process::Fork(const std::vector<std::string>& command) {
  assert(!command.empty());
  const ArgumentVector arguments(command);
  const pid_t pid = fork();
  if (pid < 0) TMX_LOG(LOG_ERR, "fork(%m)");
  if (pid != 0) return pid;
  Exec(pid, arguments.get());
  TMX_LOG(LOG_ERR, "fork(%m)");
  _exit(1);  // not exit: what is to be done at the end of the daemon is not the child's
}

int32_t CommonInterface::Process::Exec(pid_t pid, char* const* command) {
  assert(pid == 0);
  sigset_t all;
  if (sigfillset(&all) < 0) {
    TMX_LOG(LOG_ERR, "sigfillset error(%s)", strerror(errno));
    return 1;
  }
  if (sigprocmask(SIG_UNBLOCK, &all, nullptr) < 0) {
    TMX_LOG(LOG_ERR, "sigprocmask error(%s)", strerror(errno));
    return 1;
  }
  execvp(command[0], command);
  TMX_LOG(LOG_ERR, "execv(%m)");
  return 1;
}

std::optional<int> CommonInterface::Process::waitForEnd(pid_t pid, int priority) {
  int status = 0;
  if (waitpid(pid, &status, 0) < 0) {
    if (errno != EINTR) {
      TMX_LOG(LOG_ERR, "waitpid(%m)");
      return std::nullopt;
    }
    kill(pid, SIGTERM);
    waitpid(pid, &status, 0);
    TMX_LOG(priority, "waitpid interrupted");
    return std::nullopt;
  }
  if (WIFSIGNALED(status)) {
    TMX_LOG(priority, "child process signaled(%d)", WTERMSIG(status));
  } else if (!WIFEXITED(status)) {
    TMX_LOG(LOG_ERR, "waitpid status(%d)", status);
  }
  return status;
}

int32_t CommonInterface::Process::Wait(pid_t pid) {
  TMX_LOG(LOG_DEBUG, "wait pid =%d", pid);
  return waitForEnd(pid).has_value() ? 1 : 0;
}

void CommonInterface::stopAndRemovePid(const std::string& pidFile, pid_t pid) {
  Process::stopExec(pid);
  removeIfThere(pidFile);
}

int32_t CommonInterface::Process::stopExec(pid_t pid) {
  TMX_LOG(LOG_DEBUG, "stop pid =%d", pid);
  kill(pid, SIGTERM);
  return Wait(pid);
}

int32_t CommonInterface::Process::StopKillWait(pid_t pid, int32_t polls) {
  if (pid < 1 || polls < 1) return 0;
  TMX_LOG(LOG_DEBUG, "stop pid =%d", pid);
  if (kill(pid, SIGTERM) < 0) return 0;
  for (int32_t poll = 0; poll < polls; ++poll) {
    usleepRetry(kPollInterval);
    if (kill(pid, 0) < 0) return 1;
  }
  return 0;
}

std::vector<pid_t> CommonInterface::Process::GetPsPID(const std::string& name) {
  const std::string command = "ps  | grep " + name + " | grep -v grep |awk '{print $1}'";
  std::vector<pid_t> pids;
  for (const std::string& line : linesOf(command, kPidLength).value_or(std::vector<std::string>())) {
    pids.push_back(static_cast<pid_t>(strtol(line.c_str(), nullptr, 10)));
    TMX_LOG(LOG_DEBUG, "ps  pid =%d", pids.back());
  }
  return pids;
}

void CommonInterface::Process::CommandLog(const std::vector<std::string>& command) {
  std::string line;
  for (const std::string& argument : command)
    line += argument + ' ';
  TMX_LOG(LOG_DEBUG, "command = %s", line.c_str());
}
