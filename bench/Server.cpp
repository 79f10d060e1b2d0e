#include "bench/Server.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "bench/Socket.h"

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kTimeout{30};

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

/** The listening process, by its number here even when it lives in a pid namespace of its own. */
pid_t listenerOf(const std::string& path) {
  const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_un address = addressOf(path);
  ucred peer{};
  socklen_t size = sizeof peer;
  const bool isKnown = fd >= 0 && connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                       getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0;
  if (fd >= 0) close(fd);
  return isKnown ? peer.pid : 0;
}

}  // namespace

Server::Server(std::string socket) : m_socket(std::move(socket)), m_client(m_socket, kTimeout) {
  m_pid = listenerOf(m_socket);
}

Cost Server::send(const std::vector<std::string>& frames, int requests) const {
  const double processor = processorTime();
  const auto start = Clock::now();
  for (int i = 0; i < requests; ++i) {
    const tmx::Reply reply = m_client.exchangeFrame(frames[static_cast<std::size_t>(i) % frames.size()]);
    if (reply.outcome != tmx::Outcome::kAnswered) return {-1, 0};
  }
  const double wall = secondsSince(start);
  return {wall / requests, (processorTime() - processor) / requests};
}

OneProcessor::OneProcessor(std::vector<pid_t> others) : m_processes(std::move(others)) {
  m_processes.push_back(getpid());
  sched_getaffinity(0, sizeof m_before, &m_before);
  cpu_set_t one;
  CPU_ZERO(&one);
  CPU_SET(sched_getcpu(), &one);
  for (const pid_t process : m_processes)
    sched_setaffinity(process, sizeof one, &one);
}

OneProcessor::~OneProcessor() {
  for (const pid_t process : m_processes)
    sched_setaffinity(process, sizeof m_before, &m_before);
}

Floor::Floor(const std::string& program, std::string socket, std::string journal)
    : m_socket(std::move(socket)), m_journal(std::move(journal)) {
  unlink(m_socket.c_str());
  m_child = fork();
  if (m_child == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    setenv("CAMERA_JOURNAL", m_journal.c_str(), 1);
    const char* const option = m_journal.empty() ? nullptr : "--frame";
    execl(program.c_str(), program.c_str(), m_socket.c_str(), option, static_cast<char*>(nullptr));
    _exit(127);
  }
  const auto start = Clock::now();
  while (m_child > 0 && !m_isUp && secondsSince(start) < 5) {
    m_isUp = listenerOf(m_socket) == m_child;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

Floor::~Floor() {
  if (m_child > 0) {
    kill(m_child, SIGTERM);
    waitpid(m_child, nullptr, 0);
  }
  unlink(m_socket.c_str());
  if (!m_journal.empty()) unlink(m_journal.c_str());
}

}  // namespace bench
