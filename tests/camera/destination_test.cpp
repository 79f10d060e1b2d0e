// The stream destinations: their values, their senders, the bandwidth, the start of the camera and the encoder commit.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kNetworkFile = "flash/sysconfig/network.conf";

std::string of(int number, std::string_view leaf) {
  return "network.destination(" + std::to_string(number) + ")." + std::string(leaf);
}

/** "JPEG start" and "rtpd ends" in the order in which it happened; of the encoders only what starts them. */
Texts events(const Camera& camera) {
  Texts happened;
  for (const std::string& line : camera.journal()) {
    const std::string who = Camera::field(line, "who");
    const std::string what = Camera::field(line, "what");
    if (who == "encoder" && what == "ctl") happened.push_back("encoder " + Camera::field(line, "channel"));
    if (who != "child" || what.find("rtpd") == std::string::npos) continue;
    const std::string command = Camera::field(line, "command");
    happened.push_back(command.empty() ? "end " + Camera::field(line, "file").substr(21, 1)
                                       : command.substr(5, command.find(" --host") - 5));
  }
  return happened;
}

class Destinations : public CameraTest {
 protected:
  /** No sender runs, nothing is staged, and the three channels make pictures of 100 kilobytes, 5 a second. */
  void SetUp() override {
    camera().tell("program rtpd normal");
    camera().tell("session up");
    camera().tell("session clear");
    camera().flash("off");
    for (const std::string number : {"1", "2", "3", "4", "5"})
      camera().ask("network.destination(" + number + ").status=stop");
    for (const std::string number : {"1", "2", "3"}) {
      for (const std::string item : {"type=jpeg", "quality=80", "framerate=5", "framesize=640x480", "cbr_mode=vfs"})
        camera().ask("encode(" + number + ")." + item);
      for (const std::string& item : {std::string("framerate=30"), "host=225.0." + number + ".1",
                                      "port=" + std::to_string(49150 + 2 * std::stoi(number))})
        camera().ask("network.destination(" + number + ")." + item);
    }
    camera().ask("network.destination.userdata=on&network.http(streaming).priority=framerate");
    camera().ask("encode.status=save");
    camera().ask("network.destination.status=save");
    CameraTest::SetUp();
  }

  static std::string row(const char* key) { return camera().row(kNetworkFile, key); }
  static bool isSending(int channel) {
    return camera().shell("kill -0 $(cat /var/run/rtpd_channel" + std::to_string(channel) + ".pid) && echo yes") ==
           "yes";
  }
};

TEST_F(Destinations, ARateIsForPicturesAlone) {
  camera().ask("encode(3).type=h264high");
  expectAnswers(camera(), {{of(3, "framerate"), "&403 Forbidden"},
                           {of(3, "framerate=x"), "&403 Forbidden"},
                           {of(4, "framerate"), k451},
                           {of(5, "framerate=5"), k451}});
  camera().ask("encode(3).type=jpeg");
}

TEST_F(Destinations, AreSavedTogether) {
  camera().ask(of(1, "host=ff05::77&") + of(2, "port=6000&") + of(3, "framerate=-3&") + of(4, "host=239.1.2.3&") +
               of(5, "userdata=off"));
  EXPECT_EQ(row("DEST1_HOST"), "225.0.1.1");
  // What equals the value in force is no change, and leaves what waits as it is; the user data are taken back.
  expectAnswers(camera(), {{of(2, "port=49154"), kOk}, {of(5, "userdata=on"), kOk}});
  // What waits for other services stays where it is.
  camera().ask("network.rtsp.port=7777");
  expectAnswers(camera(), {{of(4, "status=save"), kOk}});
  expectRows(camera(), kNetworkFile,
             {"DEST1_HOST=ff05::77", "DEST2_PORT=6000", "DEST3_FRAMERATE=-3", "DEST4_HOST=239.1.2.3",
              "DEST_USERDATA=on", "RTSP_CONFIG_PORT=554"});
  camera().ask("network.rtsp.port=554");

  camera().flash("count");
  expectAnswers(camera(), {{of(1, "status=save"), kOk}});
  EXPECT_EQ(camera().flashOperations(), 0U);
  camera().flash("full");
  camera().ask(of(1, "port=6002"));
  expectAnswers(camera(), {{of(1, "status=save"), k500}});
  camera().flash("off");
  camera().ask(of(4, "host=225.0.4.1&") + of(4, "status=save"));
}

TEST_F(Destinations, StartAndStopASender) {
  EXPECT_EQ(camera().ask(of(1, "framerate=10&") + of(1, "status=save&") + of(1, "status=start")),
            of(1, "framerate&202 Accepted(network.destination(1).status=save)\r\n") + of(1, "status&200 OK\r\n") +
                of(1, "status=on&200 OK"));
  EXPECT_EQ(camera().journalFields("child", "command"),
            Texts{"rtpd --datatype jpeg(0) --bitrate 6400 --host 225.0.1.1 --dstport 49152 --ttl 32 --tos 0 --device "
                  "eth0 --framerate 10 --timeout 0 --protocol rtp_udp"});
  EXPECT_TRUE(isSending(0));
  EXPECT_EQ(row("DEST1"), "on");

  // It is not started twice, stopped once, and a stop behind a crash passes.
  const std::string on = "=on&200 OK";
  const std::string off = "=off&200 OK";
  expectAnswers(
      camera(),
      {{of(1, "status"), on}, {of(1, "status=start"), on}, {of(1, "status=stop"), off}, {of(1, "status=stop"), off}});
  EXPECT_EQ(events(camera()), (Texts{"--datatype jpeg(0) --bitrate 6400", "end 0"}));
  EXPECT_EQ(row("DEST1"), "off");
  camera().ask(of(1, "status=start"));
  camera().shell("kill -9 $(cat /var/run/rtpd_channel0.pid)");
  expectAnswers(camera(), {{of(1, "status=stop"), off}});

  // Audio and metadata need no channel.
  camera().clearJournal();
  expectAnswers(camera(), {{of(4, "status=start"), on}, {of(5, "status=start"), on}});
  EXPECT_EQ(events(camera()), (Texts{"--datatype ulaw(3) --bitrate 64", "--datatype onvif_motion"}));
}

TEST_F(Destinations, FallBackWhenTheSenderDoesNotStart) {
  for (const char* conduct : {"fail", "nopid"}) {
    camera().tell(std::string("program rtpd ") + conduct);
    expectAnswers(camera(), {{of(2, "status=start"), k412}, {of(2, "status"), "=off&200 OK"}});
    EXPECT_EQ(row("DEST2"), "off") << conduct;
  }
  EXPECT_TRUE(camera().isLogged("restartDestd error(-2)"));
  camera().tell("program rtpd slow");
  expectAnswers(camera(), {{of(2, "status=start"), "=on&200 OK"}, {of(2, "status=stop"), "=off&200 OK"}});
  EXPECT_FALSE(isSending(1));
  camera().shell("killall -9 rtpd");
}

TEST_F(Destinations, AStubbornSenderIsNotStopped) {
  camera().ask(of(2, "status=start"));
  camera().tell("program rtpd hang");
  expectAnswers(camera(), {{of(2, "status=stop"), k500}, {of(2, "status"), "=off&200 OK"}});
  EXPECT_TRUE(camera().isLogged("stopDaemon error(-3)"));
  EXPECT_EQ(row("DEST2"), "on");
  expectAnswers(camera(), {{of(2, "status=start"), k412}});
  EXPECT_TRUE(camera().isLogged("restartDestd error(-1)"));
  camera().shell("killall -9 rtpd");
}

TEST_F(Destinations, StopAtTheBandwidth) {
  const struct {
    Texts sessions;
    bool fits;
  } cases[] = {
      {{}, true}, {{"jpeg 1 http"}, true}, {{"h264high 801 http"}, false}, {{"jpeg 400 http", "mpeg4 400 rtsp"}, true}};
  camera().ask(of(1, "framerate=30&") + of(1, "status=save"));  // 19200 kilobits
  for (const auto& c : cases) {
    camera().tell("session clear");
    for (const std::string& session : c.sessions)
      camera().tell("session add " + session);
    expectAnswers(camera(), {{of(1, "status=start"), c.fits ? "=on&200 OK" : k453},
                             {of(1, "status"), c.fits ? "=on&200 OK" : "=off&200 OK"}});
    camera().ask(of(1, "status=stop"));
  }
  camera().tell("session clear");
  for (int slot = 1; slot <= 21; ++slot)
    camera().tell("session add jpeg 0 http");
  camera().tell("session add jpeg 801 http");  // the last slot counts
  expectAnswers(camera(), {{of(1, "status=start"), k453}});
  camera().tell("session clear");
  camera().ask("network.http(streaming).priority=clientnumber");
  camera().tell("session add jpeg 801 http");
  expectAnswers(camera(), {{of(1, "status=start"), "=on&200 OK"}});
  camera().tell("session clear");
}

TEST_F(Destinations, FollowTheCamera) {
  camera().ask(of(1, "status=start&") + of(4, "status=start"));
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  Texts started = events(camera());
  std::erase_if(started, [](const std::string& event) { return !event.starts_with("--datatype"); });
  EXPECT_EQ(started, (Texts{"--datatype jpeg(0) --bitrate 19200", "--datatype ulaw(3) --bitrate 64"}));
  EXPECT_TRUE(isSending(0));

  // The daemon alone is started anew: living senders are replaced.
  camera().clearJournal();
  camera().shell("pid=$(cat /var/run/tmxd.pid); kill $pid; while kill -0 $pid 2>/dev/null; do sleep 0.02; done; tmxd");
  ASSERT_TRUE(eventually([] { return camera().ask("system.model") == "system.model=KT-A10&200 OK"; }));
  EXPECT_EQ(events(camera()),
            (Texts{"encoder 0", "encoder 1", "encoder 2", "end 0", "--datatype jpeg(0) --bitrate 19200", "end 3",
                   "--datatype ulaw(3) --bitrate 64"}));

  // A start that fails leaves the wish on flash.
  camera().tell("program rtpd fail");
  ASSERT_TRUE(camera().reboot());
  EXPECT_FALSE(isSending(0));
  EXPECT_EQ(row("DEST1"), "on");
}

TEST_F(Destinations, MakeWayForTheEncoders) {
  camera().ask(of(1, "framerate=5&") + of(3, "framerate=5&") + of(3, "status=save"));
  for (const int number : {1, 3, 4, 5})
    camera().ask(of(number, "status=start"));
  camera().ask(of(4, "port=6006"));
  camera().clearJournal();
  EXPECT_EQ(camera().ask("encode(1).framerate=10&encode.status=save"),
            "encode(1).framerate&202 Accepted(encode(1).status=save)\r\nencode.status&200 OK");
  EXPECT_EQ(events(camera()), (Texts{"end 0", "end 2", "end 4", "encoder 0", "encoder 1", "encoder 2",
                                     "--datatype jpeg(0) --bitrate 6400", "--datatype jpeg(2) --bitrate 3200",
                                     "--datatype onvif_motion"}));
  // Every save takes over what waits.
  expectRows(camera(), kNetworkFile,
             {"DEST1_FRAMERATE=10", "DEST4_PORT=6006", "DEST1=on", "DEST3=on", "DEST4=on", "DEST5=on"});

  // A refused commit brings the streams back, too.
  camera().clearJournal();
  EXPECT_EQ(camera().ask("encode(1).cbr_mode=cbr&encode.status=save"),
            "encode(1).cbr_mode&202 Accepted(encode(1).status=save)\r\nencode.status&412 Precondition Failed");
  EXPECT_EQ(events(camera()), (Texts{"end 0", "end 2", "end 4", "--datatype jpeg(0) --bitrate 6400",
                                     "--datatype jpeg(2) --bitrate 3200", "--datatype onvif_motion"}));
  camera().ask(of(4, "port=49158&") + of(4, "status=save"));
}

}  // namespace
}  // namespace test
