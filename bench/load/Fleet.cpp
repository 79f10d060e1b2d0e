#include "bench/load/Fleet.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace bench::load {
namespace {

constexpr int kDescriptorsOfAgent = 3;  // its socket, and two that the library takes
constexpr int kOtherDescriptors = 100;

Crowd* sharedCrowd() {
  void* const place = mmap(nullptr, sizeof(Crowd), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (place == MAP_FAILED) throw std::runtime_error("no shared memory");
  return new (place) Crowd;
}

/** How many processes it takes for so many agents, each with all descriptors that it may have. */
int processesFor(int agents) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  const auto most = static_cast<int>(std::min<rlim_t>(limit.rlim_max, 1 << 20));
  if (most <= kOtherDescriptors + kDescriptorsOfAgent) throw std::runtime_error("too few file descriptors");
  const int agentsOfProcess = (most - kOtherDescriptors) / kDescriptorsOfAgent;
  return (agents + agentsOfProcess - 1) / agentsOfProcess;
}

}  // namespace

Fleet::Fleet(const Options& options) : m_options(options), m_crowd(sharedCrowd()) {
  start(processesFor(m_options.agents));
  m_processes = m_players;
  m_processes.push_back(getpid());
}

Fleet::~Fleet() {
  for (const pid_t player : m_players) {
    kill(player, SIGTERM);
    waitpid(player, nullptr, 0);
  }
  munmap(m_crowd, sizeof(Crowd));
}

void Fleet::start(int processes) {
  for (int i = 0; i < processes; ++i) {
    const pid_t player = fork();
    if (player < 0) throw std::runtime_error("no further process");
    if (player > 0) {
      m_players.push_back(player);
      continue;
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    try {
      Share(m_options, *m_crowd, i, processes).play();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "tmx-mqtt-load: %s\n", error.what());
      _exit(1);
    }
  }
}

Clock::time_point Fleet::serveUntil(long wanted, const std::function<long()>& done,
                                    const std::function<long()>& progress) {
  auto last = Clock::now();
  long before = progress();
  while (done() < wanted && Clock::now() - last < std::chrono::seconds(m_options.patience)) {
    m_poll.serve();
    m_observer.care();
    const long now = progress();
    if (now != before) last = Clock::now();
    before = now;
  }
  return last;
}

Row Fleet::rowOfReady(const Meter& meter, const char* phase) {
  const auto end = serveUntil(
      m_options.agents, [&] { return m_crowd->ready.load(); }, [&] { return m_crowd->acknowledged.load(); });
  std::vector<double> waits;
  for (const double wait : m_crowd->waits) {
    if (wait > 0) waits.push_back(wait);
  }
  return meter.row(phase, m_options.agents, m_crowd->ready, end, std::move(waits));
}

Row Fleet::connect() { return rowOfReady(Meter(m_options.watched, m_processes), "connect"); }

Row Fleet::subscribe() {
  const Meter meter(m_options.watched, m_processes);
  const long wanted = static_cast<long>(m_options.agents) * m_options.values;
  m_observer.connect();
  const auto end = serveUntil(wanted, [&] { return m_observer.arrivals().retained; });
  return meter.row("subscribe", wanted, m_observer.arrivals().retained, end, {});
}

Row Fleet::change(int rate) {
  const Meter meter(m_options.watched, m_processes);
  m_observer.reset();
  m_crowd->rate = rate;
  m_crowd->changesFrom = Clock::now();
  ++m_crowd->round;
  const long wanted = static_cast<long>(rate) * m_options.seconds;
  const auto done = [&] { return static_cast<long>(m_observer.arrivals().changes.size()); };
  const auto end = serveUntil(wanted, done);
  return meter.row("change", wanted, done(), end, m_observer.arrivals().changes);
}

Row Fleet::ask() {
  const Meter meter(m_options.watched, m_processes);
  m_observer.reset();
  for (int number = 0; number < m_options.requests; ++number)
    m_observer.ask(number);
  const auto done = [&] { return static_cast<long>(m_observer.arrivals().answers.size()); };
  const auto end = serveUntil(m_options.requests, done);
  return meter.row("ask", m_options.requests, done(), end, m_observer.arrivals().answers);
}

Row Fleet::outage() {
  const Meter meter(m_options.watched, m_processes);
  const long lost = m_crowd->lost;
  m_crowd->waits = {};
  // A broker that inherits the observer's socket keeps it open.
  close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  if (std::system(m_options.outage.c_str()) != 0) throw std::runtime_error("\"" + m_options.outage + "\" failed");
  serveUntil(lost + 1, [&] { return m_crowd->lost.load(); });
  return rowOfReady(meter, "outage");
}

}  // namespace bench::load
