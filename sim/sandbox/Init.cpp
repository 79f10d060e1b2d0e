#include "sim/sandbox/Init.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <sstream>

namespace sim {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int neighboursMilliseconds = 2000;
constexpr int daemonStopMilliseconds = 10000;
constexpr int othersStopMilliseconds = 1000;
constexpr int pollMilliseconds = 5;

Fd blockedSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGTERM);
  sigaddset(&set, SIGCHLD);
  sigprocmask(SIG_BLOCK, &set, nullptr);
  return Fd(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
}

/** The process of the given name whose parent is this one; zombies too. -1 without one. */
pid_t childNamed(const std::string& name) {
  std::error_code error;
  pid_t found = -1;
  for (const auto& entry : fs::directory_iterator("/proc", error)) {
    pid_t pid = 0;
    const std::string directory = entry.path().filename();
    if (std::from_chars(directory.data(), directory.data() + directory.size(), pid).ec != std::errc()) continue;
    // "12 (tmxd) S 1 …": pid, name, state, parent
    const std::string stat = readFile(entry.path() / "stat");
    const std::size_t close = stat.rfind(')');
    if (close == std::string::npos || stat.find("(" + name + ")") == std::string::npos) continue;
    std::istringstream rest(stat.substr(close + 1));
    char state = 0;
    pid_t parent = 0;
    if (rest >> state >> parent && parent == getpid() && (found < 0 || pid < found)) found = pid;
  }
  return found;
}

/** The name of a child that has perhaps ended, but was not waited for. */
std::string nameOf(pid_t child) {
  std::string name = readFile(fs::path("/proc") / std::to_string(child) / "comm");
  if (!name.empty()) name.pop_back();  // the line end
  return name;
}

bool exist(const std::vector<const char*>& paths) {
  return std::all_of(paths.begin(), paths.end(), [](const char* path) { return access(path, F_OK) == 0; });
}

}  // namespace

Init::Init(const Options& options, Fd progress)
    : m_options(options), m_progress(std::move(progress)), m_signals(blockedSignals()) {}

void Init::serve() {
  startNeighbours();
  [[maybe_unused]] const pid_t upreset = spawn({"upreset"}, cameraEnvironment());
  startDaemon();
  startGuard();
  startAgent();
  pump([this] { return m_stopping; }, -1);
  stop();
}

void Init::startNeighbours() {
  if (spawn({"/opt/camera/bin/camera-neighbours"}, cameraEnvironment()) < 0) die("start the neighbours");
  const auto ready = [] {
    return exist({"/tmp/gpio", "/tmp/ptzseq", "/tmp/localrec", "/tmp/detection_request", "/tmp/session",
                  "/tmp/dd_request", "/tmp/serial", "/tmp/sdrec"});
  };
  tell(pump(ready, neighboursMilliseconds) ? "neighbours are ready" : "not all neighbours are there; going on");
}

void Init::startDaemon() {
  Command command{"/bin/tmxd"};
  command.insert(command.end(), m_options.daemonArguments.begin(), m_options.daemonArguments.end());
  m_starter = spawn(command, daemonEnvironment(m_options.daemonVariables));
  tell("tmxd is starting");
  m_progress.reset();
}

/** What nobody confirms in the browser goes back, also behind this start. */
void Init::startGuard() {
  Command command{"/usr/bin/tmx-console", "guard"};
  command.insert(command.end(), m_options.guardArguments.begin(), m_options.guardArguments.end());
  [[maybe_unused]] const pid_t guard = spawn(command, daemonEnvironment({}));
}

/** Whoever has told it of a broker has it. */
void Init::startAgent() {
  if (!exist({"/mnt/flash/mqtt/agent.conf"})) return;
  [[maybe_unused]] const pid_t agent = spawn({"/usr/bin/tmx-mqtt"}, daemonEnvironment({}));
}

/** The daemon first, while everything that it talks to is still there. */
void Init::stop() {
  const pid_t daemon = m_daemon > 0 ? m_daemon : m_starter;
  if (daemon > 0) {
    kill(daemon, SIGTERM);
    pump([this] { return m_daemon < 0 && m_starter < 0; }, daemonStopMilliseconds);
  }
  kill(-1, SIGTERM);
  pump([] { return waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT) < 0; }, othersStopMilliseconds);
  m_collector.collect();
}

/** Serves syslog and signals until the condition holds or the time is over (negative: never); whether it holds. */
bool Init::pump(const Condition& done, int milliseconds) {
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  while (!done()) {
    if (milliseconds >= 0 && Clock::now() >= end) return false;
    std::array<pollfd, 2> events{{{m_signals.get(), POLLIN, 0}, {m_collector.descriptor(), POLLIN, 0}}};
    poll(events.data(), events.size(), milliseconds < 0 ? -1 : pollMilliseconds);
    m_collector.collect();
    signalfd_siginfo signal{};
    while (read(m_signals.get(), &signal, sizeof signal) == sizeof signal) {
      if (signal.ssi_signo == SIGTERM) m_stopping = true;
    }
    reap();
  }
  return true;
}

/**
 * The starter is asked for first: when it has ended well, the daemon that it left behind has become a child of this
 * process, and must be found before it is reaped itself. So has a daemon that somebody started by hand. A starter that
 * ends meanwhile waits for the next call, which its signal brings about.
 */
void Init::reap() {
  int status = 0;
  if (m_starter > 0 && waitpid(m_starter, &status, WNOHANG) == m_starter) {
    m_starter = -1;
    m_daemon = childNamed("tmxd");
    if (m_daemon < 0) noteExit(status);
  }
  siginfo_t ended{};
  while (waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid > 0 && ended.si_pid != m_starter) {
    const bool isDaemon = nameOf(ended.si_pid) == "tmxd";
    waitpid(ended.si_pid, &status, 0);
    if (ended.si_pid == m_daemon) m_daemon = -1;
    if (isDaemon) noteExit(status);
    ended = {};
  }
}

void Init::noteExit(int waitStatus) {
  m_collector.collect();
  writeFile("/run/camera/tmxd.exit", std::to_string(exitStatus(waitStatus)) + "\n");
}

void Init::tell(const char* step) {
  const std::string line = std::string(step) + "\n";
  // Nobody need be listening.
  if (m_progress.valid()) [[maybe_unused]]
    const ssize_t told = write(m_progress.get(), line.data(), line.size());
}

}  // namespace sim
