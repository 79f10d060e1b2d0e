// The daemon as a process: its exit codes, its single instance, its signals, and what a start sends.

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <future>

#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kModel = "system.model=KT-A10&200 OK";

TEST(Start, WrongOptionsEndWithTheUsage) {
  for (const char* option :
       {"--log=8", "--log=3x", "--log=-1", "--log=4294967296", "--help", "-h", "-?", "--nonsense"}) {
    Camera camera({.daemonArguments = {option}});
    EXPECT_FALSE(camera.up());
    EXPECT_EQ(camera.read("run/tmxd.exit"), "1\n") << option;
  }
}

/** The address client is asked for what the store does not hold itself; without it the store's values are set. */
TEST(Start, TheNetworkComesUpAsStored) {
  const struct {
    const char* rows;
    const char* client;  // what the address client was started with
    const char* inside;  // a command that is true then
  } cases[] = {
      {"IF1_IP=10.1.2.3\nIF1_NETMASK=255.255.0.0\nIF1_BROADCAST=10.1.255.255\nHOSTNAME=gate\nHTTP_CONFIG_PORT=8080\n",
       "",
       "ifconfig eth0 | grep 'inet 10.1.2.3 .*255.255.0.0 .*10.1.255.255' && test $(hostname) = gate && "
       "grep -x 'server.port = 8080' /etc/lighttpd/lighttpd-inc.conf && pidof lighttpd"},
      {"IF1_DHCP=on\n", "dhcpcd -t 75 -N -R eth0", "true"},
      {"IF1_DHCP=on\nIF1_DHCP_NTP=on\nIF1_DHCP_DNS=on\nIF1_DHCP_HOSTNAME=on\nHOSTNAME=gate\n", "dhcpcd -t 75 -H eth0",
       "true"},
  };
  Camera camera;
  ASSERT_TRUE(camera.up());
  for (const auto& c : cases) {
    camera.write("flash/sysconfig/network.conf", c.rows);
    camera.clearJournal();
    ASSERT_TRUE(camera.reboot()) << c.rows;
    std::string client;
    for (const std::string& line : camera.journal("child")) {
      if (Camera::field(line, "what") == "dhcpcd") client += Camera::field(line, "command");
    }
    EXPECT_EQ(client, c.client) << c.rows;
    EXPECT_EQ(camera.exec({"/bin/sh", "-c", c.inside}), 0) << c.rows;
  }
}

class Running : public CameraTest {
 protected:
  static int shell(const std::string& script) { return camera().exec({"/bin/sh", "-c", script}); }
  /** Starts the daemon again by hand, as the start scripts do. */
  static void startDaemon() { shell("tmxd"); }
  /** Ends the daemon by a signal, and waits until it is gone. */
  static void stopDaemon(const std::string& signal) {
    shell("pid=$(cat /var/run/tmxd.pid); kill -" + signal +
          " $pid; while kill -0 $pid 2>/dev/null; do sleep 0.02; done");
  }
  static bool serves() {
    return shell("for i in $(seq 500); do test -S /tmp/request && exit 0; sleep 0.02; done; exit 1") == 0 &&
           camera().ask("system.model") == kModel;
  }
  static size_t timesLogged(std::string_view text) {
    const std::string log = camera().log();
    size_t count = 0;
    for (size_t at = log.find(text); at != std::string::npos; at = log.find(text, at + 1))
      ++count;
    return count;
  }
  /** Whether the daemon goes on by some pauses, with no more lines of that text than these. */
  static bool pausesWith(std::string_view text, size_t lines) {
    const auto pauses = [] {
      return std::stol(camera().shell("sed -n 's/^voluntary_ctxt_switches://p' /proc/$(cat /var/run/tmxd.pid)/status"));
    };
    if (!eventually([&] { return timesLogged(text) >= lines; })) return false;
    const long before = pauses();
    return eventually([&] { return pauses() >= before + 8; }) && timesLogged(text) == lines;
  }
};

/** A sequencer that answers nothing is waited for once; the other messages of the start reach it all the same. */
TEST_F(Running, ASilentSequencerIsWaitedForOnce) {
  stopDaemon("TERM");
  camera().clearJournal();
  startDaemon();
  ASSERT_TRUE(serves());
  const size_t messages = camera().journal("ptz").size();
  stopDaemon("TERM");
  camera().tell("ptz silent");
  camera().clearJournal();
  startDaemon();
  ASSERT_TRUE(serves());
  EXPECT_EQ(camera().journal("ptz").size(), messages);
  ASSERT_TRUE(camera().isLogged("[ptzseq] response timeout"));
  const std::string log = camera().log();
  EXPECT_EQ(log.find("response timeout"), log.rfind("response timeout"));
  camera().tell("ptz up");
}

TEST_F(Running, TellsTheRecorderAndTheLamps) {
  Camera fresh;
  ASSERT_TRUE(fresh.up());
  const std::vector<std::string> told = fresh.journalFields("recorder", "what");
  const std::vector<std::string> arguments = fresh.journalFields("recorder", "arg");
  ASSERT_GE(told.size(), 3U);
  EXPECT_EQ(arguments.front(), "1");                // boot, in colour
  EXPECT_EQ(arguments[arguments.size() - 2], "7");  // orange off
  EXPECT_EQ(arguments.back(), "4");                 // green on
}

TEST_F(Running, ASecondInstanceEndsAtOnce) {
  const auto before = std::filesystem::last_write_time(camera().path("tmp/request"));
  EXPECT_EQ(shell("cp /var/run/tmxd.pid /tmp/before && tmxd"), 0);
  EXPECT_TRUE(eventually([] { return shell("test $(pidof tmxd | wc -w) = 1") == 0; }));
  EXPECT_EQ(shell("cmp /var/run/tmxd.pid /tmp/before"), 0);
  EXPECT_EQ(std::filesystem::last_write_time(camera().path("tmp/request")), before);
  EXPECT_EQ(camera().ask("system.model"), kModel);
}

TEST_F(Running, StopSignalsStopItInOrder) {
  for (const char* name : {"INT", "QUIT", "TERM"}) {
    EXPECT_EQ(shell("pid=$(cat /var/run/tmxd.pid); kill -HUP $pid; kill -USR1 $pid; sleep 0.1; kill -0 $pid"), 0);
    stopDaemon(name);
    EXPECT_FALSE(std::filesystem::exists(camera().path("tmp/request"))) << name;
    EXPECT_EQ(shell("test ! -e /var/run/tmxd.pid"), 0) << name;
    startDaemon();
    EXPECT_TRUE(serves()) << name;
  }
}

TEST_F(Running, PidFilesOfTheDead) {
  shell("cp /var/run/tmxd.pid /tmp/stale");
  stopDaemon("KILL");
  shell("rm /tmp/request");
  startDaemon();
  EXPECT_TRUE(serves());
  EXPECT_NE(shell("cmp -s /tmp/stale /var/run/tmxd.pid"), 0);
}

TEST_F(Running, AStartThatFailsTellsWhereInItsExitCode) {
  const struct {
    const char* exit;
    const char* logged;
    const char* fault;
    const char* mend;
  } cases[] = {
      {"3\n", "createPidFile error", "echo nothing > /var/run/tmxd.pid", "rm /var/run/tmxd.pid"},
      // Without the upreset daemon the camera stays up behind the restore.
      {"5\n", "Config::loadConfig error",
       "mv /var/run/upreset.pid /tmp; cd /mnt/flash/sysconfig; mv video.conf /tmp; echo nothing > video.conf",
       "mv /tmp/upreset.pid /var/run; mv /tmp/video.conf /mnt/flash/sysconfig; rm /var/run/tmxd.pid"},
      {"6\n", "bind error", "mkdir -p /tmp/request/full", "rm -r /tmp/request; rm -f /var/run/tmxd.pid"},
  };
  stopDaemon("TERM");
  for (const auto& c : cases) {
    ASSERT_EQ(shell(c.fault), 0) << c.logged;
    startDaemon();
    EXPECT_TRUE(eventually([&] { return camera().read("run/tmxd.exit") == c.exit; })) << c.logged;
    EXPECT_TRUE(camera().isLogged(c.logged)) << c.logged;
    EXPECT_EQ(camera().ask("system.model"), "<closed>");
    shell(c.mend);
  }
  startDaemon();
  EXPECT_TRUE(serves());
}

TEST_F(Running, ASegmentationFaultEndsIt) {
  stopDaemon("SEGV");
  EXPECT_TRUE(eventually([] { return camera().read("run/tmxd.exit") == "10\n"; }));
  shell("rm -f /tmp/request");
  startDaemon();
  EXPECT_TRUE(serves());
}

/** Between two tries it pauses, and of tries that fail one behind the other the first alone is logged. */
TEST_F(Running, AcceptWaitsForDescriptors) {
  for (const size_t time : {1U, 2U}) {
    shell("prlimit --pid $(cat /var/run/tmxd.pid) --nofile=3:");
    // The descriptor for the next client may have been taken before.
    static_cast<void>(tmx::Client(camera().path("tmp/request"), std::chrono::seconds(1))
                          .exchange(UserClass::kAdmin, LineEnd::kPlain, "encode(1).framerate"));
    EXPECT_TRUE(pausesWith("accept error", time));
    shell("prlimit --pid $(cat /var/run/tmxd.pid) --nofile=1024:");
    EXPECT_EQ(camera().ask("system.model"), kModel);
  }
}

/** Whoever needs the flash lock waits for it, and says so with the first five attempts. */
TEST_F(Running, AWaitForTheFlashLockDoesNotFillTheLog) {
  shell("rm -f /tmp/lockflash; mkdir /tmp/lockflash");
  auto waiting = std::async(std::launch::async, [] { return camera().ask("system.model"); });
  EXPECT_TRUE(pausesWith("Failed to Get lockFlash", 5));
  shell("rmdir /tmp/lockflash");
  EXPECT_EQ(waiting.get(), kModel);
}

/** Also a camera that restarts again and again hears that its power shall go. */
TEST(Cameras, GoOffInTheMiddleOfARestart) {
  Camera camera;
  for (const char* word : {"down", "cut"}) {
    ASSERT_TRUE(camera.up());
    // As long as the daemon stands still, the restart does not get on.
    camera.exec({"/bin/sh", "-c", "kill -STOP $(pidof tmxd)"});
    camera.write("run/power", "reboot");
    const int power = open(camera.path("run/power").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_TRUE(eventually([&] {
      int waiting = -1;
      return ioctl(power, FIONREAD, &waiting) == 0 && waiting == 0;
    }));
    close(power);
    camera.write("run/power", word);
    camera.exec({"/bin/sh", "-c", "kill -CONT $(pidof tmxd)"});
    EXPECT_TRUE(eventually([&] { return !camera.isOn(); })) << word;
    EXPECT_EQ(camera.read("run/boots"), "1\n") << word;
    camera.down();
  }
}

TEST(Cameras, RunSideBySide) {
  Camera one;
  Camera two({.model = "KT-B50"});
  ASSERT_TRUE(one.up());
  ASSERT_TRUE(two.up());
  EXPECT_EQ(one.ask("ui.encode(1).cbr_mode(jpeg)=cbr"), "ui.encode(1).cbr_mode(jpeg)&200 OK");
  EXPECT_EQ(two.ask("ui.encode(1).cbr_mode(jpeg)"), "ui.encode(1).cbr_mode(jpeg)=afs&200 OK");
  EXPECT_EQ(one.ask("system.model"), kModel);
  EXPECT_EQ(two.ask("system.model"), "system.model=KT-B50&200 OK");
}

}  // namespace
}  // namespace test
