#include "sim/sandbox/Watch.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "sim/sandbox/Client.h"
#include "sim/sandbox/Supervisor.h"

namespace sim {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds pause{10};
constexpr milliseconds restartLimit{2000};  // a daemon that restores its settings ends shortly before the reboot
constexpr int answerMilliseconds = 5000;
constexpr int linesShown = 15;

bool giveUp(const Home& home, const std::string& reason) {
  std::fprintf(stderr, "camera: %s\n%s%s", reason.c_str(), readFile(home.run("supervisor.log")).c_str(),
               lastLines(home.path("syslog"), linesShown).c_str());
  return false;
}

}  // namespace

int boots(const Home& home) { return std::atoi(readFile(home.run("boots")).c_str()); }

bool waitForAnswer(const Home& home, int wanted, int timeoutSeconds) {
  const auto end = Clock::now() + std::chrono::seconds(timeoutSeconds);
  auto aliveUntil = Clock::now() + restartLimit;
  while (true) {
    const bool booted = boots(home) >= wanted;
    if (booted && !request(home.path(""), "system.model", answerMilliseconds).empty()) return true;
    if (!Supervisor::isOn(home)) return giveUp(home, "the camera went off");
    const std::string status = booted ? readFile(home.run("tmxd.exit")) : "";
    if (status.empty()) aliveUntil = Clock::now() + restartLimit;
    if (Clock::now() >= aliveUntil)
      return giveUp(home, "tmxd ended with exit status " + std::to_string(std::atoi(status.c_str())));
    if (Clock::now() >= end) return giveUp(home, "no answer after " + std::to_string(timeoutSeconds) + " seconds");
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace sim
