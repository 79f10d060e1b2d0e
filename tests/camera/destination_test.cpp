// The stream destinations: their values, their senders, the bandwidth, the start of the camera and the encoder commit.

#include <algorithm>

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
    for (int number = 1; number <= 5; ++number)
      camera().ask(of(number, "status=stop"));
    for (int channel = 1; channel <= 3; ++channel) {
      const std::string encode = "encode(" + std::to_string(channel) + ").";
      camera().ask(encode + "type=jpeg&" + encode + "quality=80&" + encode + "framerate=5&" + encode +
                   "framesize=640x480&" + encode + "cbr_mode=vfs");
      const std::string number = std::to_string(channel);
      camera().ask(of(channel, "framerate=30&") + of(channel, "host=225.0." + number + ".1&") +
                   of(channel, "port=" + std::to_string(49150 + 2 * channel)));
    }
    camera().ask("network.destination.userdata=on&network.http(streaming).priority=framerate");
    camera().ask("encode.status=save");
    camera().ask("network.destination.status=save");
    CameraTest::SetUp();
  }

  static std::string row(const char* key) { return camera().row(kNetworkFile, key); }
  static bool isSending(int channel) {
    return camera().exec(
               {"/bin/sh", "-c",
                "exec 2>/dev/null; kill -0 $(cat /var/run/rtpd_channel" + std::to_string(channel) + ".pid)"}) == 0;
  }
};

TEST_F(Destinations, TakeTheirValues) {
  const std::string hint = "&202 Accepted(network.destination(2).status=save)";
  struct Case {
    const char* leaf;
    std::string accepted;  // separated by blanks
    std::string notUnderstood;
    std::string outOfRange;
  };
  const Case cases[] = {
      {"host", "224.0.0.1 239.255.255.255 ff02::1 ff1e::2:3 FF0f::1",
       "192.168.0.1 240.0.0.1 223.255.255.255 fe80::1 ff2e::1 ff::1 225.0.1 225.0.1.256 x :: 1.2.3.4:5", ""},
      {"port", "1 65535 0080", "x 80x 0x50 +80", "0 65536 -1 4294967376"},
      {"framerate", "-1 -30 -5 7.5 1 0.5", "x 5x 0x5 +5 nan inf 1e1", "0 31 -31 30.5 0.0 -30.1"},
      {"userdata", "off", "On x 1", ""},
  };
  for (const Case& c : cases) {
    const std::string path = of(2, c.leaf);
    const std::string before = camera().ask(path);
    const auto expectAll = [&path](const std::string& values, const std::string& answer) {
      std::istringstream words(values);
      for (std::string value; words >> value;)
        EXPECT_EQ(camera().ask(path + "=" + value), path + answer) << value;
    };
    expectAll(c.accepted, hint);
    expectAll(c.notUnderstood, k451);
    expectAll(c.outOfRange, k457);
    EXPECT_EQ(camera().ask(path), before) << "until it is saved";
  }
  expectAnswers(camera(), {
                              {of(2, "protocol"), of(2, "protocol=udp&200 OK")},
                              {of(2, "protocol=udp"), of(2, "protocol&200 OK")},
                              {of(2, "protocol=tcp"), of(2, "protocol") + k451},
                              {of(2, "encode_ch"), of(2, "encode_ch=1&200 OK")},
                              {of(2, "encode_ch=1"), of(2, "encode_ch&200 OK")},
                              {of(2, "encode_ch=2"), of(2, "encode_ch") + k457},
                              {of(2, "interface=one"), of(2, "interface") + k451},
                              {of(2, "interface"), of(2, "interface=1&200 OK")},
                              {of(2, "status=restart"), of(2, "status") + k451},
                              {of(4, "framerate"), of(4, "framerate") + k451},
                              {of(5, "framerate=5"), of(5, "framerate") + k451},
                          });
}

TEST_F(Destinations, ARateIsForPicturesAlone) {
  camera().ask("encode(3).type=h264high");
  EXPECT_EQ(camera().ask(of(3, "framerate")), of(3, "framerate&403 Forbidden"));
  EXPECT_EQ(camera().ask(of(3, "framerate=x")), of(3, "framerate&403 Forbidden"));
  camera().ask("encode(3).type=jpeg");
}

TEST_F(Destinations, AreSavedTogether) {
  camera().ask(of(1, "host=ff05::77&") + of(2, "port=6000&") + of(3, "framerate=-3&") + of(4, "host=239.1.2.3&") +
               of(5, "userdata=off"));
  EXPECT_EQ(row("DEST1_HOST"), "225.0.1.1");
  // What equals the value in force is no change, and leaves what waits as it is; the user data are taken back.
  EXPECT_EQ(camera().ask(of(2, "port=49154&") + of(5, "userdata=on")),
            of(2, "port&200 OK\r\n") + of(5, "userdata&200 OK"));
  // What waits for other services stays where it is.
  camera().ask("network.rtsp.port=7777");
  EXPECT_EQ(camera().ask(of(4, "status=save")), of(4, "status&200 OK"));
  EXPECT_EQ(row("DEST1_HOST"), "ff05::77");
  EXPECT_EQ(row("DEST2_PORT"), "6000");
  EXPECT_EQ(row("DEST3_FRAMERATE"), "-3");
  EXPECT_EQ(row("DEST4_HOST"), "239.1.2.3");
  EXPECT_EQ(row("DEST_USERDATA"), "on");
  EXPECT_EQ(row("RTSP_CONFIG_PORT"), "554");
  camera().ask("network.rtsp.port=554");

  camera().flash("count");
  EXPECT_EQ(camera().ask(of(1, "status=save")), of(1, "status&200 OK"));
  EXPECT_EQ(camera().flashOperations(), 0U);
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
  EXPECT_EQ(camera().ask(of(1, "status")), of(1, "status=on&200 OK"));

  // It is not started twice, stopped once, and a stop behind a crash passes.
  EXPECT_EQ(camera().ask(of(1, "status=start")), of(1, "status=on&200 OK"));
  EXPECT_EQ(camera().ask(of(1, "status=stop")), of(1, "status=off&200 OK"));
  EXPECT_EQ(camera().ask(of(1, "status=stop")), of(1, "status=off&200 OK"));
  EXPECT_EQ(events(camera()), (Texts{"--datatype jpeg(0) --bitrate 6400", "end 0"}));
  EXPECT_EQ(row("DEST1"), "off");
  camera().ask(of(1, "status=start"));
  camera().exec({"/bin/sh", "-c", "kill -9 $(cat /var/run/rtpd_channel0.pid)"});
  EXPECT_EQ(camera().ask(of(1, "status=stop")), of(1, "status=off&200 OK"));

  // Audio and metadata need no channel.
  camera().clearJournal();
  EXPECT_EQ(camera().ask(of(4, "status=start&") + of(5, "status=start")),
            of(4, "status=on&200 OK\r\n") + of(5, "status=on&200 OK"));
  EXPECT_EQ(events(camera()), (Texts{"--datatype ulaw(3) --bitrate 64", "--datatype onvif_motion"}));
}

TEST_F(Destinations, FallBackWhenTheSenderDoesNotStart) {
  for (const char* conduct : {"fail", "nopid"}) {
    camera().tell(std::string("program rtpd ") + conduct);
    EXPECT_EQ(camera().ask(of(2, "status=start")), of(2, "status") + k412) << conduct;
    EXPECT_EQ(camera().ask(of(2, "status")), of(2, "status=off&200 OK")) << conduct;
    EXPECT_EQ(row("DEST2"), "off") << conduct;
  }
  EXPECT_TRUE(camera().isLogged("restartDestd error(-2)"));
  camera().tell("program rtpd slow");
  EXPECT_EQ(camera().ask(of(2, "status=start")), of(2, "status=on&200 OK"));
  EXPECT_EQ(camera().ask(of(2, "status=stop")), of(2, "status=off&200 OK"));
  EXPECT_FALSE(isSending(1));
  camera().exec({"/bin/sh", "-c", "killall -9 rtpd"});
}

TEST_F(Destinations, AStubbornSenderIsNotStopped) {
  camera().ask(of(2, "status=start"));
  camera().tell("program rtpd hang");
  EXPECT_EQ(camera().ask(of(2, "status=stop")), of(2, "status") + k500);
  EXPECT_TRUE(camera().isLogged("stopDaemon error(-3)"));
  EXPECT_EQ(camera().ask(of(2, "status")), of(2, "status=off&200 OK"));
  EXPECT_EQ(row("DEST2"), "on");
  EXPECT_EQ(camera().ask(of(2, "status=start")), of(2, "status") + k412);
  EXPECT_TRUE(camera().isLogged("restartDestd error(-1)"));
  camera().exec({"/bin/sh", "-c", "killall -9 rtpd"});
}

TEST_F(Destinations, StopAtTheBandwidth) {
  const struct {
    const char* sessions;  // what the session daemon is told, separated by commas
    bool fits;
  } cases[] = {
      {"", true},
      {"add jpeg 1 http", true},
      {"add h264high 801 http", false},
      {"add jpeg 400 http,add mpeg4 400 rtsp", true},
  };
  camera().ask(of(1, "framerate=30&") + of(1, "status=save"));  // 19200 kilobits
  for (const auto& c : cases) {
    camera().tell("session clear");
    std::istringstream sessions(c.sessions);
    for (std::string words; std::getline(sessions, words, ',');)
      camera().tell("session " + words);
    EXPECT_EQ(camera().ask(of(1, "status=start")), of(1, "status") + (c.fits ? "=on&200 OK" : k453)) << c.sessions;
    EXPECT_EQ(camera().ask(of(1, "status")), of(1, "status=") + (c.fits ? "on" : "off") + kOk) << c.sessions;
    camera().ask(of(1, "status=stop"));
  }
  camera().tell("session clear");
  for (int slot = 1; slot <= 21; ++slot)
    camera().tell("session add jpeg 0 http");
  camera().tell("session add jpeg 801 http");  // the last slot counts
  EXPECT_EQ(camera().ask(of(1, "status=start")), of(1, "status") + k453);
  camera().ask("network.http(streaming).priority=clientnumber");
  camera().tell("session clear");
  camera().ask("network.http(streaming).priority=clientnumber");
  camera().tell("session add jpeg 801 http");
  EXPECT_EQ(camera().ask(of(1, "status=start")), of(1, "status=on&200 OK"));
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
  camera().exec({"/bin/sh", "-c",
                 "pid=$(cat /var/run/tmxd.pid); kill $pid; while kill -0 $pid 2>/dev/null; do sleep 0.02; done; tmxd"});
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
  EXPECT_EQ(row("DEST1_FRAMERATE"), "10");
  EXPECT_EQ(row("DEST4_PORT"), "6006") << "every save takes over what waits";
  for (const char* key : {"DEST1", "DEST3", "DEST4", "DEST5"})
    EXPECT_EQ(row(key), "on") << key;

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
