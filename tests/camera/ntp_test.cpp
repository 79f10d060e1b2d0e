// The time client: what is staged, what a restart does to its daemon, and a daemon that fails.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/sysconfig/network.conf";
const std::string kRestart = "network.ntp.status=restart";
/** Kills the daemon until it is gone: one that has not been reaped yet still takes signals. */
const std::string kKill = "while pkill -9 -x pntpd; do sleep 0.02; done; ";

class NtpTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().flash("off");
    camera().tell("program pntpd normal");
    camera().ask("network.ntp.status=off&network.ntp.host=0.0.0.0&network.ntp.interval=7&network.ntp.unit=hour&" +
                 kRestart);
    camera().shell(kKill + "rm -f /var/run/pntpd.pid");
    CameraTest::SetUp();
  }

  static std::string restart() { return camera().ask(kRestart).substr(std::string("network.ntp.status").size()); }
  /** What became of the daemon since the journal was cleared: its command lines, "pntpd synchronises", "pntpd ends". */
  static Texts news() { return camera().lifeOf("pntpd"); }
  /** A signal is heard some time behind the answer. */
  static void expectNews(const Texts& expected, const std::string& step) {
    static_cast<void>(eventually([&] { return news() == expected; }));
    EXPECT_EQ(news(), expected) << step;
    camera().clearJournal();
  }
  static std::string running() { return camera().shell("pidof pntpd | wc -w"); }
};

/** Each step stages something, restarts, and sees what became of the daemon and of the rows. */
TEST_F(NtpTest, ARestartDoesWhatTheChangeAsksFor) {
  const std::string line = "pntpd --interval ";
  const struct {
    const char* staged;
    Texts news;
    const char* running;
  } steps[] = {
      {"network.ntp.interval=9", {}, "0"},  // off stays off
      {"network.ntp.status=on", {}, "0"},   // on without a server starts nothing
      {"network.ntp.host=192.168.0.9", {line + "9 --unit hour 192.168.0.9"}, "1"},
      {"", {"pntpd synchronises"}, "1"},
      {"network.ntp.unit=day", {"pntpd ends", line + "9 --unit day 192.168.0.9"}, "1"},
      {"network.ntp.host=0.0.0.0", {"pntpd ends"}, "0"},        // changed while on, without a server
      {"network.ntp.host=%00", {line + "9 --unit day "}, "1"},  // an empty host is one
      {"network.ntp.status=off", {"pntpd ends"}, "0"},
      {"", {}, "0"},
      {"network.ntp.status=on&network.ntp.host=time.example&network.ntp.unit=min&network.ntp.interval=60",
       {line + "60 --unit min time.example"},
       "1"},
      {"network.ntp.unit=hour", {"pntpd ends", line + "24 --unit hour time.example"}, "1"},  // at most a day
      {"network.ntp.unit=day&network.ntp.interval=31", {"pntpd ends", line + "31 --unit day time.example"}, "1"},
      {"network.ntp.interval=32", {"pntpd synchronises"}, "1"},  // cut to what is active
      {"network.ntp.interval=3", {"pntpd ends", line + "3 --unit day time.example"}, "1"}};
  for (const auto& step : steps) {
    camera().ask(step.staged);
    EXPECT_EQ(restart(), kOk) << step.staged;
    expectNews(step.news, step.staged);
    EXPECT_EQ(running(), step.running) << step.staged;
  }
  expectRows(camera(), kFile, {"NTP=on", "NTP_HOST=time.example", "NTP_UNIT=day", "NTP_INTERVAL=3"});

  // A start brings the daemon up as stored, and writes nothing.
  const auto written = std::filesystem::last_write_time(camera().path(kFile));
  camera().shell(kKill);
  ASSERT_TRUE(camera().reboot());
  expectNews({line + "3 --unit day time.example"}, "start");
  EXPECT_EQ(std::filesystem::last_write_time(camera().path(kFile)), written);
}

TEST_F(NtpTest, ADaemonThatHasGoneIsStartedAnew) {
  camera().ask("network.ntp.status=on&network.ntp.host=192.168.0.9");
  EXPECT_EQ(restart(), kOk);
  const Texts started = news();
  camera().clearJournal();
  for (const std::string end : {"", "rm /var/run/pntpd.pid"}) {
    camera().shell(kKill + end);
    EXPECT_EQ(restart(), kOk) << end;
    expectNews(started, end);
    EXPECT_EQ(running(), "1") << end;
  }
  camera().shell(kKill + "echo nonsense > /var/run/pntpd.pid");
  EXPECT_EQ(restart(), k500);
  EXPECT_TRUE(camera().isLogged("oneshotNtp error(-2)"));
}

TEST_F(NtpTest, ADaemonThatFails) {
  for (const char* conduct : {"fail", "nopid"}) {
    camera().tell(std::string("program pntpd ") + conduct);
    const size_t length = camera().log().size();
    camera().ask("network.ntp.status=on&network.ntp.host=192.168.0.9");
    EXPECT_EQ(restart(), k500) << conduct;
    EXPECT_TRUE(eventually([&] { return camera().log().find("startNtp error(-4)", length) != std::string::npos; }))
        << conduct;
    EXPECT_EQ(camera().row(kFile, "NTP"), "on") << "what was taken over stays";
    camera().shell(kKill);
    camera().ask("network.ntp.status=off&" + kRestart);
  }
  camera().tell("program pntpd slow");
  camera().ask("network.ntp.status=on");
  EXPECT_EQ(restart(), kOk);
  camera().ask("network.ntp.status=off");
  EXPECT_EQ(restart(), kOk);
  EXPECT_EQ(running(), "0");
}

/** The request waits five seconds for it and gives up. */
TEST_F(NtpTest, ADaemonThatWillNotEnd) {
  camera().ask("network.ntp.status=on&network.ntp.host=192.168.0.9&" + kRestart);
  camera().tell("program pntpd hang");
  camera().ask("network.ntp.status=off");
  EXPECT_EQ(restart(), k500);
  EXPECT_TRUE(camera().isLogged("stopDaemon error(-3)"));
  EXPECT_EQ(running(), "1");
  expectAnswers(camera(), {{"network.ntp.status", "=off&200 OK"}});
}

TEST_F(NtpTest, ALeaseBringsTheServer) {
  camera().tell("dhcp lease 192.168.0.77 ntp=192.168.0.123");
  camera().ask("network.interface.dhcp.status=on&network.interface.dhcp.ntp=on&network.interface.dhcp.status=restart");
  expectAnswers(camera(), {{"network.ntp.host", "=192.168.0.123&200 OK"}});
  // The stored host stands in the command line all the same.
  camera().ask("network.ntp.status=on");
  EXPECT_EQ(restart(), kOk);
  EXPECT_EQ(news(), Texts{"pntpd --interval 7 --unit hour 0.0.0.0"});
  camera().shell("rm /etc/ntp.conf");
  expectAnswers(camera(), {{"network.ntp.host", "=&200 OK"}});
  camera().ask("network.interface.dhcp.status=off&network.interface.dhcp.status=restart");
  expectAnswers(camera(), {{"network.ntp.host", "=0.0.0.0&200 OK"}});
}

TEST_F(NtpTest, AFullFlashKeepsTheDaemonAsItWas) {
  camera().flash("full");
  camera().ask("network.ntp.status=on&network.ntp.host=192.168.0.9");
  EXPECT_EQ(restart(), k500);
  EXPECT_EQ(news(), Texts{});
}

}  // namespace
}  // namespace test
