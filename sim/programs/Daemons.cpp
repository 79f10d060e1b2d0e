#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "sim/common/Journal.h"
#include "sim/programs/Programs.h"

namespace sim {

namespace {

/** What a daemon does on a signal other than SIGTERM. */
using Answer = void (*)();

/** A stand-in of a daemon, whose conduct `./camera tell program NAME` changes (docs/neighbours.md). */
struct Daemon {
  std::string name;
  std::string pidFile;
  Answer answer = nullptr;  ///< without one it ends on every signal

  /** Asked each time that it matters, so that an order reaches a daemon that runs, too. */
  [[nodiscard]] bool isTold(const char* conduct) const { return setting("program." + name, "normal") == conduct; }
  void pauseIfSlow() const {
    if (isTold("slow")) std::this_thread::sleep_for(std::chrono::milliseconds(300));
  }
};

sigset_t awaited() {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : {SIGTERM, SIGHUP, SIGUSR1})
    sigaddset(&set, number);
  return set;
}

/** Serves signals until SIGTERM, then removes the pid file, unless it is another's by now. */
int live(const Daemon& daemon) {
  const sigset_t set = awaited();
  int number = 0;
  while (sigwait(&set, &number) == 0) {
    const bool ends = number == SIGTERM || daemon.answer == nullptr;
    if (ends && !daemon.isTold("hang")) break;
    if (!ends) daemon.answer();
  }
  daemon.pauseIfSlow();
  Journal("child", daemon.name + " ends").text("file", daemon.pidFile).write();
  pid_t pid = 0;
  if (std::ifstream(daemon.pidFile) >> pid && pid == getpid()) unlink(daemon.pidFile.c_str());
  return 0;
}

void writePid(const Daemon& daemon, pid_t pid) {
  daemon.pauseIfSlow();
  if (!daemon.isTold("nopid")) writeText(daemon.pidFile, std::to_string(pid) + "\n");
}

/**
 * Stays behind in the background. The starter ends only when the pid file is there: whoever waited for it finds it.
 */
int detach(const Daemon& daemon) {
  if (daemon.isTold("fail")) return 1;
  const sigset_t set = awaited();
  sigprocmask(SIG_BLOCK, &set, nullptr);
  const pid_t pid = fork();
  if (pid < 0) return 1;
  if (pid > 0) {
    writePid(daemon, pid);
    return 0;
  }
  setsid();
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    dup2(null, stream);
  return live(daemon);
}

int stayInFront(const Daemon& daemon) {
  if (daemon.isTold("fail")) return 1;
  const sigset_t set = awaited();
  sigprocmask(SIG_BLOCK, &set, nullptr);
  if (!daemon.pidFile.empty()) writePid(daemon, getpid());
  return live(daemon);
}

/** The channel stands in brackets behind the data type; the motion metadata has none and is the fifth. */
std::string rtpChannel(const std::string& dataType) {
  const std::size_t open = dataType.find('(');
  return open == std::string::npos ? "4" : dataType.substr(open + 1, dataType.find(')') - open - 1);
}

void restartCamera() {
  Journal("upreset", "restart").write();
  std::ofstream("/run/camera/power") << "reboot\n" << std::flush;
}

}  // namespace

int rtpd(const Arguments& arguments) {
  noteStart(arguments);
  return detach({"rtpd", "/var/run/rtpd_channel" + rtpChannel(optionValue(arguments, "--datatype")) + ".pid"});
}

int rtspd(const Arguments& arguments) {
  noteStart(arguments);
  return detach({"rtspd", "/var/run/rtsp.pid"});
}

int nvtApl(const Arguments& arguments) {
  noteStart(arguments);
  return stayInFront({"nvt_apl", "/var/run/nvt_apld.pid"});
}

int amxBeacond(const Arguments& arguments) {
  noteStart(arguments);
  return detach({"amx_beacond", "/var/run/amx_beacond.pid"});
}

int pntpd(const Arguments& arguments) {
  noteStart(arguments);
  return detach({"pntpd", "/var/run/pntpd.pid", [] { Journal("child", "pntpd synchronises").write(); }});
}

int dhcpcd(const Arguments& arguments) {
  noteStart(arguments);
  if (!takeLease(arguments)) return 1;
  return detach({"dhcpcd", "/var/run/dhcpcd-eth0.pid"});
}

int count(const Arguments& arguments) {
  noteStart(arguments);
  return stayInFront({"count", ""});
}

int upreset(const Arguments&) { return stayInFront({"upreset", "/var/run/upreset.pid", restartCamera}); }

}  // namespace sim
