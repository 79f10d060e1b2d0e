// The services that are switched on and off: RTSP, ONVIF, SNMP, beacon, PSIA; and the access list.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/sysconfig/network.conf";

class Services : public CameraTest {
 protected:
  void SetUp() override {
    for (const char* program : {"rtspd", "nvt_apl", "amx_beacond"})
      camera().tell(std::string("program ") + program + " normal");
    camera().tell("session up");
    camera().tell("detection up");
    camera().flash("off");
    CameraTest::SetUp();
  }

  static std::string row(const char* key) { return camera().row(kFile, key); }
  static int shell(const std::string& script) {
    return camera().exec({"/bin/bash", "-c", "exec 2>/dev/null; " + script});
  }
  static bool runs(const std::string& pidFile) { return shell("kill -0 $(cat /var/run/" + pidFile + ")") == 0; }
  static bool lives(const std::string& program, const Texts& life) {
    return eventually([&] { return camera().lifeOf(program) == life; });
  }
};

TEST_F(Services, RtspRunsAsItIsSet) {
  ASSERT_TRUE(runs("rtsp.pid")) << "since the start";
  const std::string restart = "status=restart";
  expectAnswers(camera(), "network.rtsp.", {{restart, kOk}});
  EXPECT_EQ(camera().lifeOf("rtspd"), Texts{}) << "nothing has changed";
  camera().ask("network.rtsp.port=8554");
  expectAnswers(camera(), "network.rtsp.", {{restart, kOk}});
  EXPECT_EQ(camera().lifeOf("rtspd"), (Texts{"rtspd ends", "rtspd -port 8554 -ipv6status off"}));
  EXPECT_EQ(row("RTSP_CONFIG_PORT"), "8554");

  // A server that has died is found gone; one whose pid file names nobody is left alone.
  shell("kill -9 $(cat /var/run/rtsp.pid)");
  camera().ask("network.rtsp.port=554");
  expectAnswers(camera(), {{"network.rtsp(configuration).status=restart", kOk}});
  EXPECT_TRUE(runs("rtsp.pid"));
  camera().ask("network.rtsp.status=off");
  expectAnswers(camera(), "network.rtsp.", {{restart, kOk}});
  EXPECT_EQ(row("RTSP_SERVER_STATUS"), "off");
  EXPECT_FALSE(runs("rtsp.pid"));
  for (const auto& [pid, port] : TextPairs{{"0", "600"}, {"-1", "554"}}) {
    shell("echo " + pid + " > /var/run/rtsp.pid");
    camera().ask("network.rtsp.port=" + port);
    expectAnswers(camera(), "network.rtsp.", {{restart, kOk}});
    EXPECT_TRUE(camera().isLogged("rtsp pid error :: -1"));
  }
  shell("rm /var/run/rtsp.pid");
  camera().ask("network.rtsp.status=on&network.rtsp.status=restart");
  EXPECT_TRUE(runs("rtsp.pid"));
}

TEST_F(Services, AStubbornRtspServerIsAnError) {
  camera().tell("program rtspd hang");
  camera().ask("network.rtsp.port=600");
  expectAnswers(camera(), {{"network.rtsp.status=restart", k500}});
  EXPECT_TRUE(camera().isLogged("rtsp prosess Zombie :: "));
  camera().tell("program rtspd normal");
  camera().ask("network.rtsp.port=554");
  expectAnswers(camera(), {{"network.rtsp.status=restart", kOk}});
}

TEST_F(Services, AgentAnswersOnLoopback) {
  expectAnswers(camera(), {{"network.snmp_agent.status=on", kOk}});
  // The name of the system, asked for with version 1 and the community "public".
  const std::string question =
      R"(\x30\x26\x02\x01\x00\x04\x06public\xa0\x19\x02\x01\x01\x02\x01\x00\x02\x01\x00\x30\x0e\x30\x0c\x06\x08)"
      R"(\x2b\x06\x01\x02\x01\x01\x05\x00\x05\x00)";
  const std::string ask =
      "exec 3<>/dev/udp/127.0.0.1/161; printf '" + question + "' >&3; timeout 20 head -c 40 <&3 | grep -aq public";
  EXPECT_EQ(shell(ask), 0);
  EXPECT_EQ(shell("tr '\\0' ' ' < /proc/$(cat /var/run/snmpd.pid)/cmdline | grep -qx "
                  "'/bin/snmpd -Lsd -Lf /dev/null -p /var/run/snmpd.pid -a '"),
            0);
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(shell(ask), 0);
  expectAnswers(camera(), {{"network.snmp_agent.status=off", kOk}});
  EXPECT_FALSE(runs("snmpd.pid"));
}

TEST_F(Services, BeaconRunsAsItIsSet) {
  const std::string path = "network.amx_beacon.status";
  ASSERT_TRUE(runs("amx_beacond.pid")) << "since the start";
  expectAnswers(camera(), path, {{"=on", kOk}, {"=restart", kOk}});
  EXPECT_EQ(camera().lifeOf("amx_beacond"), Texts{}) << "nothing has changed";
  expectAnswers(camera(), path, {{"=off", kOk}, {"=on", kOk}});
  EXPECT_EQ(camera().lifeOf("amx_beacond"), (Texts{"amx_beacond ends", "amx_beacond"}));

  // What cannot be done leaves the state as it was.
  camera().tell("program amx_beacond hang");
  expectAnswers(camera(), path, {{"=off", k500}, {"", "=on&200 OK"}});
  EXPECT_EQ(row("AMX_BEACON_SERVER"), "on");
  camera().tell("program amx_beacond normal");
  expectAnswers(camera(), path, {{"=off", kOk}});
  camera().tell("program amx_beacond fail");
  expectAnswers(camera(), path, {{"=on", k500}});
  EXPECT_TRUE(camera().isLogged("startAMXBeacond error"));
  EXPECT_EQ(row("AMX_BEACON_SERVER"), "off");
  camera().tell("program amx_beacond normal");
  camera().ask(path + "=on");
}

class Onvif : public Services {
 protected:
  void TearDown() override {
    camera().tell("program nvt_apl normal");
    camera().ask("network.onvif.status=off");
    EXPECT_TRUE(eventually([] { return !runs("nvt_apld.pid"); })) << "its end is no part of what the next test sees";
  }

  /** What the session daemon heard about the service. */
  static Texts told() {
    Texts states;
    for (const std::string& line : camera().journal("session")) {
      if (Camera::field(line, "what") == "onvif") states.push_back(Camera::field(line, "index"));
    }
    return states;
  }
  static std::string profile(int channel) {
    return camera().shell("cat /etc/onvif/default.vecfg_" + std::to_string(channel)) + "\n";
  }
};

TEST_F(Onvif, IsSwitchedOnAndOff) {
  camera().ask("network.rtsp.status=off&network.rtsp.status=restart&network.destination(5).status=start");
  camera().clearJournal();
  const std::string path = "network.onvif.status";
  expectAnswers(camera(), path, {{"=on", kOk}, {"=on", k456}, {"", "=on&200 OK"}});
  EXPECT_EQ(row("ONVIF_SERVER_STATUS"), "on");
  EXPECT_TRUE(lives("nvt_apl", {"nvt_apl -np 80"}));
  EXPECT_TRUE(eventually([] { return camera().toldDetection() == Texts{"motion.status on"}; }));

  expectAnswers(camera(), path, {{"=off", kOk}});
  EXPECT_TRUE(lives("nvt_apl", {"nvt_apl -np 80", "nvt_apl ends"}));
  expectRows(camera(), kFile, {"ONVIF_SERVER_STATUS=off", "RTSP_SERVER_STATUS=on", "DEST5=off"});
  EXPECT_TRUE(runs("rtsp.pid"));
  expectAnswers(camera(), path, {{"=off", kOk}});
  EXPECT_EQ(told(), (Texts{"1", "0", "0"}));
}

TEST_F(Onvif, StaysOffWhenTheStreamsCannotBeMadeReady) {
  camera().ask("network.onvif.status=on&network.destination(5).status=start");
  ASSERT_TRUE(lives("nvt_apl", {"nvt_apl -np 80"}));
  camera().tell("program rtpd hang");
  expectAnswers(camera(), {{"network.onvif.status=off", k500}, {"network.onvif.status", "=on&200 OK"}});
  camera().tell("program rtpd normal");
}

TEST_F(Onvif, ComesBackWithNewProfiles) {
  camera().ask("network.onvif.status=on");
  ASSERT_TRUE(lives("nvt_apl", {"nvt_apl -np 80"}));
  EXPECT_EQ(profile(0).substr(0, 53), "CODEC_TYPE= \"JPEG\"\nQUALITY= 100.0\nWIDTH= 1920\nHEIGHT=");

  camera().ask(
      "encode(2).type=h264high&encode(2).framerate=7&encode(2).cbr_mode=cbr&encode(2).bitrate=1500999&encode(2)."
      "iframeinterval=60");
  EXPECT_EQ(camera().ask("encode.status=save"), "encode.status&200 OK");
  EXPECT_TRUE(lives("nvt_apl", {"nvt_apl -np 80", "nvt_apl ends", "nvt_apl -np 80"}));
  EXPECT_EQ(profile(1),
            "CODEC_TYPE= \"H264\"\nQUALITY= 0.0  \nWIDTH= 1280\nHEIGHT= 720 \nVIDEORATECONTROL_FPS_LIMIT= 8 \n"
            "VIDEORATECONTROL_BPS_LIMIT= 1500\nH264CFG_GOVLEN= 60 \nH264CFG_PROFILE= \"High\"    \n");

  // The ONVIF user's own commit leaves the service alone; one that dies, for whatever reason, comes back.
  camera().ask("encode(2).framerate=5", UserClass::kOnvif);
  EXPECT_EQ(camera().ask("encode.status=save", UserClass::kOnvif), "encode.status&200 OK");
  shell("killall -9 nvt_apl");
  EXPECT_TRUE(lives("nvt_apl", {"nvt_apl -np 80", "nvt_apl ends", "nvt_apl -np 80", "nvt_apl -np 80"}));
  EXPECT_TRUE(camera().isLogged("child process signaled(9)"));
  camera().ask("encode(2).type=jpeg&encode(2).type=off&encode(2).cbr_mode=vfs&encode.status=save");
}

/** Its thread is anywhere in its round when a commit comes; the last settings win. */
TEST_F(Onvif, LivesBesideRequests) {
  camera().ask("network.onvif.status=on");
  for (const std::string rate : {"10", "5", "10", "5", "10", "5", "10", "5", "10"}) {
    EXPECT_EQ(camera().ask("encode(1).framerate=" + rate), "encode(1).framerate&202 Accepted(encode(1).status=save)");
    EXPECT_EQ(camera().ask("encode(1).status=save"), "encode(1).status&200 OK");
    camera().ask("network.onvif.comment=" + rate + "&camera.comment=" + rate);
  }
  EXPECT_TRUE(eventually([] { return profile(0).find("FPS_LIMIT= 10") != std::string::npos && runs("nvt_apld.pid"); }));
  camera().ask("encode(1).framerate=5&encode(1).status=save");
}

TEST_F(Onvif, IsThereBehindAStartAndEndsWithTheDaemon) {
  camera().ask("network.onvif.status=on");
  ASSERT_TRUE(camera().reboot());
  EXPECT_TRUE(eventually([] { return runs("nvt_apld.pid"); }));
  // Nothing keeps the daemon from its end: a service that does not go, a detection daemon that does not answer.
  for (const std::string fault : {"program nvt_apl hang", "detection silent"}) {
    camera().clearJournal();
    camera().tell(fault);
    if (fault == "detection silent") {
      shell("killall -9 nvt_apl");
      EXPECT_TRUE(eventually([] { return !camera().journal("detection").empty(); }));
    }
    EXPECT_EQ(shell("pid=$(cat /var/run/tmxd.pid); kill $pid; while kill -0 $pid 2>/dev/null; do sleep 0.02; done; "
                    "test ! -e /var/run/tmxd.pid && ! pidof nvt_apl"),
              0)
        << fault;
    camera().tell("program nvt_apl normal");
    camera().tell("detection up");
    shell("tmxd");
    ASSERT_TRUE(eventually([] { return camera().ask("system.model") == "system.model=KT-A10&200 OK"; }));
    EXPECT_TRUE(eventually([] { return runs("nvt_apld.pid"); }));
  }
}

TEST(MissingServices, AreRefused) {
  Camera camera({.without = {"/bin/snmpd", "/bin/rtspd", "/bin/amx_beacond", "/bin/nvt_apl", "/bin/rtpd"}});
  ASSERT_TRUE(camera.up());
  expectAnswers(camera, {
                            {"network.snmp_agent.status", k461},
                            {"network.amx_beacon.status=off", kOk},
                            {"network.amx_beacon.status=on", k500},
                            {"network.rtsp.port=600", "&202 Accepted(network.rtsp(configuration).status=restart)"},
                            {"network.rtsp.status=restart", k500},
                            {"network.destination(4).status=start", k412},
                            {"network.onvif.status=on", kOk},
                            {"network.onvif.status=off", kOk},
                        });
  EXPECT_TRUE(camera.isLogged("/bin/rtspd :: command not found"));
}

}  // namespace
}  // namespace test
