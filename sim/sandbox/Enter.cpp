#include "sim/sandbox/Enter.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace sim {

namespace {

/** What /proc has of the camera's first process. */
Path initFiles(const Home& home) {
  return Path("/proc") / std::to_string(std::atoi(readFile(home.run("init.pid")).c_str()));
}

/** Gives the terminal to this process's group; without a terminal nothing happens. */
void takeTerminal() {
  std::signal(SIGTTOU, SIG_IGN);
  tcsetpgrp(STDIN_FILENO, getpgrp());
  std::signal(SIGTTOU, SIG_DFL);
}

}  // namespace

bool join(const Home& home, const std::vector<const char*>& spaces) {
  std::vector<Fd> descriptors;
  for (const char* space : spaces) {
    if (std::string(space) == "user" && geteuid() == 0) continue;
    descriptors.emplace_back(open((initFiles(home) / "ns" / space).c_str(), O_RDONLY | O_CLOEXEC));
  }
  return std::all_of(descriptors.begin(), descriptors.end(),
                     [](const Fd& descriptor) { return descriptor.valid() && setns(descriptor.get(), 0) == 0; });
}

int runInside(const Home& home, const Command& command) {
  // Below a chroot the root of the camera's mounts is not the camera's.
  const Fd root(open((initFiles(home) / "root").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const bool inside =
      join(home, {"user", "pid", "net", "uts", "ipc", "mnt"}) && fchdir(root.get()) == 0 && chroot(".") == 0;
  if (!inside) die("enter the camera");
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
