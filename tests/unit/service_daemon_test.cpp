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

TEST(NetworkUtility, HostAddresses) {
  const struct {
    const char* text;
    int32_t result;
  } cases[] = {{"192.168.0.1", 0},      {"1.0.0.1", 0},          {"1.0.0.0", -1},
               {"10.0.0.0", 0},       // the subnet's rule comes later
               {"192.168.0.255", 0},  // the same
               {"126.255.255.254", 0},  {"126.255.255.255", -1}, {"127.0.0.1", -1},
               {"0.0.0.0", -1},         {"0.1.2.3", -1},         {"128.0.0.0", -1},
               {"128.0.0.1", 0},        {"191.255.255.254", 0},  {"191.255.255.255", -1},
               {"192.0.0.0", -1},       {"192.0.0.1", 0},        {"223.255.255.254", 0},
               {"223.255.255.255", -1}, {"224.0.0.1", -1},       {"240.0.0.1", -1},
               {"255.255.255.255", -1}};
  for (const auto& c : cases)
    EXPECT_EQ(Net::checkHostAddress({Net::Inet_pton(c.text)}), c.result) << c.text;
}

TEST(NetworkUtility, DottedTexts) {
  for (const char* text : {"1.2.3.4", "255.255.255.255", "0.0.0.0"}) {
    in_addr address{};
    EXPECT_EQ(Net::parseAddress(text, &address), 1) << text;
    EXPECT_EQ(Net::Inet_ntop(&address), text);
  }
  for (const char* text : {"", "1", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1.2.3.4 ", "0x1.2.3.4", "1.2.3.04", "::1"}) {
    in_addr address{};
    EXPECT_EQ(Net::parseAddress(text, &address), 0) << text;
    EXPECT_EQ(Net::Inet_pton(text), INADDR_NONE) << text;
  }
  EXPECT_DEATH(static_cast<void>(Net::Inet_ntop(nullptr)), "address");
}

TEST(NetworkUtility, Gateways) {
  const struct {
    const char* address;
    const char* mask;
    const char* gateway;
    int32_t result;
  } cases[] = {{"192.168.0.10", "255.255.255.0", "0.0.0.0", 0},
               {"192.168.0.10", "255.255.255.0", "192.168.0.1", 0},
               {"192.168.0.10", "255.255.255.0", "192.168.0.254", 0},
               {"192.168.0.10", "255.255.255.0", "192.168.0.10", -1},   // the camera itself
               {"192.168.0.10", "255.255.255.0", "192.168.0.0", -1},    // the subnet
               {"192.168.0.10", "255.255.255.0", "192.168.0.255", -1},  // everybody there
               {"192.168.0.10", "255.255.255.0", "192.168.1.1", -1},
               {"192.168.0.10", "255.255.255.252", "192.168.0.9", 0},
               {"192.168.0.10", "255.255.255.252", "192.168.0.13", -1},
               {"10.1.2.3", "255.0.0.0", "10.255.255.254", 0},
               {"10.1.2.3", "255.0.0.0", "255.255.255.255", -1},
               {"10.1.2.3", "255.0.0.0", "nonsense", -1}};
  for (const auto& c : cases)
    EXPECT_EQ(Net::checkGateway(c.address, c.mask, c.gateway), c.result) << c.gateway << " in " << c.mask;
}

TEST(NetworkUtility, Names) {
  EXPECT_EQ(Net::checkName(""), 0);
  EXPECT_EQ(Net::checkName("Cam-1.example.org"), 0);
  for (const char* name : {"cam_1", "a b", "a\n",
                           "stra\xc3\x9f"
                           "e"})
    EXPECT_EQ(Net::checkName(name), -1) << name;
  EXPECT_EQ(Net::checkName(std::string(63, 'a')), 0);
  EXPECT_EQ(Net::checkName(std::string(64, 'a')), -2);
}

}  // namespace
