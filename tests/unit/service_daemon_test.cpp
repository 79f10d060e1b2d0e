#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "local/Process.h"
#include "service/CTmxdNetworkUtility.h"
#include "service/Daemon.h"

namespace {

using Net = CTmxdNetworkUtility;

/** A pid file in a folder of its own. */
class DaemonTest : public testing::Test {
 protected:
  DaemonTest() {
    std::string folder = "/tmp/daemon_test.XXXXXX";
    m_folder = mkdtemp(folder.data());
  }
  void TearDown() override { std::filesystem::remove_all(m_folder); }

  void put(const std::string& text) const { std::ofstream(pidFile()) << text; }
  [[nodiscard]] std::string pidFile() const { return m_folder / "daemon.pid"; }

  /** A daemon in a few words of shell. */
  [[nodiscard]] Service shell(const std::string& script) const {
    return {"sh", pidFile(), {"-c", script, "sh", pidFile()}};
  }

 private:
  std::filesystem::path m_folder;
};

TEST_F(DaemonTest, ReadsOnePidAndNeverAGroup) {
  EXPECT_EQ(Net::readPid(pidFile()), 0);
  const struct {
    const char* text;
    pid_t pid;
  } cases[] = {{"123\n", 123}, {" 7 8\n", 7}, {"12x", 12},  {"", -1},
               {"x", -1},      {"0\n", -1},   {"-1\n", -1}, {"99999999999\n", -1}};
  for (const auto& c : cases) {
    put(c.text);
    EXPECT_EQ(Net::readPid(pidFile()), c.pid) << c.text;
  }
  put("0\n");
  EXPECT_EQ(Net::stopDaemon(pidFile()), -1);  // and this test lives on
}

TEST_F(DaemonTest, StopsWhatRunsAndForgivesWhatDoesNot) {
  EXPECT_EQ(Net::stopDaemon(pidFile()), 0);
  const pid_t dead = CommonInterface::Process::Fork({"true"});
  waitpid(dead, nullptr, 0);
  put(std::to_string(dead));
  EXPECT_EQ(Net::stopDaemon(pidFile()), 0);

  prctl(PR_SET_CHILD_SUBREAPER, 1);  // the daemon becomes this process's child, which plays the part of init
  const Service daemon = shell("sleep 300 >/dev/null 2>&1 & echo $! > $1");
  ASSERT_EQ(daemon.start(), 0);
  const pid_t pid = Net::readPid(pidFile());
  EXPECT_EQ(kill(pid, 0), 0);
  std::thread init([pid] { waitpid(pid, nullptr, 0); });
  EXPECT_EQ(daemon.stop(), 0);
  EXPECT_NE(kill(pid, 0), 0);
  init.join();
}

TEST_F(DaemonTest, TellsHowAStartFailed) {
  const struct {
    const char* script;
    int32_t result;
  } cases[] = {{"echo 1 > $1; exit 7", 0},  // an exit status is not looked at
               {"echo 1 > $1; kill -9 $$", Service::kNotRun},
               {"true", Service::kNoPidFile}};
  for (const auto& c : cases) {
    std::filesystem::remove(pidFile());
    EXPECT_EQ(shell(c.script).start(), c.result) << c.script;
  }
  EXPECT_EQ((Service{"/no/such/daemon", pidFile()}).start(), Service::kNoPidFile);
}

TEST_F(DaemonTest, WaitsNoLongerThanTold) {
  const pid_t zombie = CommonInterface::Process::Fork({"true"});
  EXPECT_EQ(Net::waitForExit(zombie, 3), -2);  // nobody reaps it meanwhile
  EXPECT_EQ(Net::waitForExit(zombie, 0), -2);
  waitpid(zombie, nullptr, 0);
  EXPECT_EQ(Net::waitForExit(zombie, 3), 0);
  EXPECT_EQ(Net::waitForExit(0, 3), -1);
  EXPECT_EQ(Net::waitForFile(nullptr, 3), -1);
  EXPECT_EQ(Net::waitForFile(pidFile().c_str(), 3), -1);
  put("");
  EXPECT_EQ(Net::waitForFile(pidFile().c_str(), 1), 0);
}

}  // namespace
