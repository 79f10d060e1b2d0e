#include "sim/sandbox/Process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace sim {

Environment cameraEnvironment() {
  return {{"PATH", "/usr/local/bin:/bin:/sbin:/usr/bin:/usr/sbin"},
          {"HOME", "/"},
          {"LC_ALL", "C"},
          {"CAMERA_JOURNAL", "/run/camera/journal.jsonl"}};
}

Environment daemonEnvironment(Environment extra) {
  Environment environment = cameraEnvironment();
  // By its name alone, by which every machine's programs find the one that is theirs.
  environment.emplace_back("LD_PRELOAD", "libcamera_preload.so");
  // The sanitizer's library comes behind the preloaded one; both work in that order.
  environment.emplace_back("ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=1:log_path=/run/camera/sanitizer");
  environment.emplace_back("UBSAN_OPTIONS", "print_stacktrace=1:log_path=/run/camera/sanitizer");
  environment.emplace_back("TSAN_OPTIONS", "log_path=/run/camera/sanitizer");
  for (auto& variable : extra)
    environment.push_back(std::move(variable));
  return environment;
}

void become(const Command& command, const Environment& environment, Inherit inherit) {
  if (inherit == Inherit::Nothing) clearenv();
  for (const auto& [name, value] : environment)
    setenv(name.c_str(), value.c_str(), 1);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  std::signal(SIGPIPE, SIG_DFL);

  std::vector<char*> arguments;
  for (const std::string& argument : command)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  std::fprintf(stderr, "camera: %s: %s\n", arguments[0], std::strerror(errno));
  _exit(127);
}

pid_t spawn(const Command& command, const Environment& environment) {
  const pid_t pid = fork();
  if (pid != 0) return pid;
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO})
    dup2(null, stream);
  become(command, environment, Inherit::Nothing);
}

int run(const Command& command, const Environment& environment) {
  const pid_t pid = fork();
  if (pid == 0) become(command, environment, Inherit::All);
  int status = 0;
  if (pid < 0 || waitpid(pid, &status, 0) != pid) return -1;
  return exitStatus(status);
}

int exitStatus(int waitStatus) {
  return WIFSIGNALED(waitStatus) ? 128 + WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

}  // namespace sim
