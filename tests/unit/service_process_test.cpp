#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

#include "local/Process.h"
#include "service/CTmxdUtility.h"

namespace {

using Process = CommonInterface::Process;
using Clock = std::chrono::steady_clock;

/** Raises SIGALRM once, with a handler that does not restart what it interrupts. */
class Alarm {
 public:
  Alarm() {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, &m_before);
    const itimerval timer{.it_interval = {}, .it_value = {.tv_sec = 0, .tv_usec = 100000}};
    setitimer(ITIMER_REAL, &timer, nullptr);
  }
  ~Alarm() { sigaction(SIGALRM, &m_before, nullptr); }
  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;

 private:
  struct sigaction m_before {};
};

TEST(ExecProcess, GivesTheExitStatus) {
  const struct {
    std::vector<std::string> command;
    int32_t result;
  } cases[] = {
      {{"true"}, 0},
      {{"sh", "-c", "exit 7"}, 7},
      {{"sh", "-c", "test \"$1\" = 'a b'", "sh", "a b"}, 0},  // arguments are not split
      {{"/no/such/program"}, 3},
      {{"sh", "-c", "kill -9 $$"}, -1},
  };
  for (const auto& c : cases)
    EXPECT_EQ(CTmxdUtility::execProcess(c.command), c.result) << c.command.back();
  EXPECT_DEATH(static_cast<void>(CTmxdUtility::execProcess({})), "empty");
}

TEST(ExecProcess, AChildIsFreeOfTheBlockedSignals) {
  sigset_t term;
  sigset_t before;
  sigemptyset(&term);
  sigaddset(&term, SIGTERM);
  sigprocmask(SIG_BLOCK, &term, &before);
  EXPECT_EQ(CTmxdUtility::execProcess({"sh", "-c", "kill -TERM $$; exit 9"}), -1);
  const pid_t pid = Process::Fork({"sh", "-c", "kill -TERM $$; exit 9"});
  int status = 0;
  waitpid(pid, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

TEST(ExecProcess, AnInterruptedWaitEndsTheChild) {
  const auto begin = Clock::now();
  const Alarm alarm;
  EXPECT_EQ(CTmxdUtility::execProcess({"sleep", "30"}), -1);
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);  // no child is left behind
}

TEST(Process, WaitTellsOfAnInterruption) {
  EXPECT_EQ(Process::Wait(Process::Fork({"false"})), 1);
  const Alarm alarm;
  EXPECT_EQ(Process::Wait(Process::Fork({"sleep", "30"})), 0);
}

TEST(Process, StopExecEndsAndReaps) {
  const pid_t pid = Process::Fork({"sleep", "30"});
  EXPECT_EQ(Process::stopExec(pid), 1);
  EXPECT_EQ(kill(pid, 0), -1);
}

TEST(Process, StopKillWaitNeverTouchesAGroup) {
  EXPECT_EQ(Process::StopKillWait(0, 500), 0);
  EXPECT_EQ(Process::StopKillWait(-1, 500), 0);
  const pid_t pid = Process::Fork({"sleep", "30"});
  EXPECT_EQ(Process::StopKillWait(pid, 0), 0);
  EXPECT_EQ(kill(pid, 0), 0);
  EXPECT_EQ(Process::StopKillWait(pid, 2), 0);  // ended, but not reaped by its parent
  EXPECT_EQ(Process::Wait(pid), 1);
  EXPECT_EQ(Process::StopKillWait(pid, 500), 0);  // nobody to signal
}

TEST(Process, SleepsToTheEndUnlessToldTooLong) {
  const auto begin = Clock::now();
  const Alarm alarm;  // after a tenth of a second
  CommonInterface::usleepRetry(300000);
  const auto slept = Clock::now() - begin;
  EXPECT_GE(slept, std::chrono::milliseconds(300));
  CommonInterface::usleepRetry(1000000);
  EXPECT_LT(Clock::now() - begin - slept, std::chrono::seconds(1));
}

}  // namespace
