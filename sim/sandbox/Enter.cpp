#include "sim/sandbox/Enter.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace sim {

namespace {

/** Joins the namespaces of the camera's first process; the user namespace comes first, as it gives the right. */
bool join(const std::string& init) {
  std::array<std::pair<const char*, Fd>, 6> spaces{
      {{"user", Fd()}, {"pid", Fd()}, {"net", Fd()}, {"uts", Fd()}, {"ipc", Fd()}, {"mnt", Fd()}}};
  for (auto& [name, descriptor] : spaces) {
    if (std::string(name) == "user" && geteuid() == 0) continue;
    descriptor = Fd(open(("/proc/" + init + "/ns/" + name).c_str(), O_RDONLY | O_CLOEXEC));
    if (!descriptor.valid()) return false;
  }
  for (const auto& [name, descriptor] : spaces) {
    if (descriptor.valid() && setns(descriptor.get(), 0) != 0) return false;
  }
  return chdir("/") == 0;
}

/** Gives the terminal to this process's group; without a terminal nothing happens. */
void takeTerminal() {
  std::signal(SIGTTOU, SIG_IGN);
  tcsetpgrp(STDIN_FILENO, getpgrp());
  std::signal(SIGTTOU, SIG_DFL);
}

}  // namespace

int runInside(const Home& home, const Command& command) {
  const int init = std::atoi(readFile(home.run("init.pid")).c_str());
  if (init <= 0 || !join(std::to_string(init))) die("enter the camera");
  const pid_t pid = fork();
  if (pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A group of its own, since a group from outside has no number that a shell inside could go back to.
    setpgid(0, 0);
    takeTerminal();
    Environment environment = daemonEnvironment({});
    if (const char* terminal = std::getenv("TERM")) environment.emplace_back("TERM", terminal);
    environment.emplace_back("PS1", "camera:$PWD# ");
    become(command, environment, Inherit::Nothing);
  }
  std::signal(SIGINT, SIG_IGN);
  std::signal(SIGQUIT, SIG_IGN);
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  takeTerminal();
  return exitStatus(status);
}

}  // namespace sim
