#include "sim/sandbox/Supervisor.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "sim/sandbox/Init.h"
#include "sim/sandbox/Root.h"

namespace sim {

namespace {

constexpr int orderlyMilliseconds = 15000;
constexpr int tickMilliseconds = 10;

Fd openLock(const Home& home) { return Fd(open(home.run("lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644)); }

/** Becomes a process of the background whose errors go to a file of the home. */
void detach(const Home& home) {
  setsid();
  const Fd null(open("/dev/null", O_RDWR | O_CLOEXEC));
  const Fd log(open(home.run("supervisor.log").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644));
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO})
    dup2(null.get(), stream);
  dup2(log.get(), STDERR_FILENO);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGHUP, SIG_IGN);
  std::signal(SIGINT, SIG_IGN);
  if (chdir("/") != 0) die("chdir");
}

}  // namespace

bool Supervisor::isOn(const Home& home) {
  const Fd lock = openLock(home);
  return lock.valid() && flock(lock.get(), LOCK_SH | LOCK_NB) != 0;
}

int Supervisor::ask(const Home& home, const std::string& word) {
  const Fd power(open(home.run("power").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
  const std::string line = word + "\n";
  return write(power.get(), line.data(), line.size()) == static_cast<ssize_t>(line.size()) ? 0 : -1;
}

Fd Supervisor::start() {
  m_lock = openLock(m_home);
  if (!m_lock.valid()) die("open " + m_home.run("lock").string());
  if (flock(m_lock.get(), LOCK_EX | LOCK_NB) != 0) return Fd();
  const std::string power = m_home.run("power");
  unlink(power.c_str());
  if (mkfifo(power.c_str(), 0600) != 0) die("make " + power);
  m_home.give("run/power", consoleUser);
  m_power = Fd(open(power.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  writeFile(m_home.run("boots"), "0\n");

  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) die("pipe");
  Fd progress(ends[0]);
  Fd sender(ends[1]);
  const pid_t pid = fork();
  if (pid < 0) die("fork");
  if (pid == 0) {
    progress.reset();
    detach(m_home);
    serve(std::move(sender));
  }
  return progress;
}

void Supervisor::serve(Fd progress) {
  for (int boots = 1;; ++boots) {
    m_home.power();
    const pid_t init = boot(std::move(progress));
    progress = Fd();
    writeFile(m_home.run("init.pid"), std::to_string(init) + "\n");
    writeFile(m_home.run("boots"), std::to_string(boots) + "\n");
    const Event event = end(init, wait(init));
    m_uplink.reset();
    m_home.settle(event != Event::Cut);
    if (event != Event::Reboot) _exit(0);
  }
}

/** A process in namespaces of its own, the first of its kind there. Without root, a user namespace gives the right. */
pid_t Supervisor::boot(Fd progress) {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  unsigned long flags = CLONE_NEWNS | CLONE_NEWPID | CLONE_NEWNET | CLONE_NEWUTS | CLONE_NEWIPC;
  if (user != 0) flags |= CLONE_NEWUSER;
  if (!m_options.uplink.empty()) m_uplink.emplace(m_options.uplink);
  const long pid = syscall(SYS_clone, flags | SIGCHLD, nullptr, nullptr, nullptr, nullptr);
  if (pid < 0) die("make the namespaces");
  if (pid == 0) beInit(std::move(progress), user, group);
  return static_cast<pid_t>(pid);
}

void Supervisor::beInit(Fd progress, uid_t user, gid_t group) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  prctl(PR_SET_NAME, "init");
  m_lock.reset();
  m_power.reset();
  if (user != 0) {
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
    writeFile("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
  }
  setsid();
  Root(m_options).enter();
  makeNetwork();
  if (m_uplink) m_uplink->open();
  Init(m_options, std::move(progress)).serve();
  _exit(0);
}

Supervisor::Event Supervisor::wait(pid_t init) {
  const Fd ended(static_cast<int>(syscall(SYS_pidfd_open, init, 0)));
  while (true) {
    std::array<pollfd, 2> events{{{ended.get(), POLLIN, 0}, {m_power.get(), POLLIN, 0}}};
    if (poll(events.data(), events.size(), -1) < 0) continue;
    const Event event = asked();
    if (event != Event::Ended || events[0].revents != 0) return event;
  }
}

Supervisor::Event Supervisor::asked() const {
  std::array<char, 256> words{};
  const ssize_t size = read(m_power.get(), words.data(), words.size());
  const std::string text(words.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
  if (text.find("cut") != std::string::npos) return Event::Cut;
  if (text.find("down") != std::string::npos) return Event::Down;
  return text.find("reboot") != std::string::npos ? Event::Reboot : Event::Ended;
}

Supervisor::Event Supervisor::end(pid_t init, Event event) {
  for (int waited = 0; event != Event::Ended && event != Event::Cut && waited < orderlyMilliseconds;
       waited += tickMilliseconds) {
    kill(init, SIGTERM);  // again and again: one that has only begun to boot does not hear it yet
    if (waitpid(init, nullptr, WNOHANG) == init) return event;
    pollfd power{m_power.get(), POLLIN, 0};
    if (poll(&power, 1, tickMilliseconds) > 0) event = std::max(event, asked());
  }
  kill(init, SIGKILL);
  // The first process of a pid namespace is gone only when all the others are.
  waitpid(init, nullptr, 0);
  return event;
}

}  // namespace sim
