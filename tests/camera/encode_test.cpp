// The settings of the encoder channels as they are staged, their ranges, and the budget of the live sessions.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* k202 = "&202 Accepted(encode(2).status=save)";

/** One setting of channel 2: what is written, the answer behind the path, and what is read then. */
struct Write {
  std::string value;
  std::string answer;
  std::string reads;
};

class EncodeTest : public CameraTest {
 protected:
  void SetUp() override {
    CameraTest::SetUp();
    camera().tell("session up");
    camera().tell("session clear");
  }

  static void expectWrites(const std::string& path, std::initializer_list<Write> writes) {
    for (const Write& write : writes) {
      EXPECT_EQ(camera().ask(path + "=" + write.value), path + write.answer) << path << "=" << write.value;
      EXPECT_EQ(camera().ask(path), path + "=" + write.reads + kOk) << path << "=" << write.value;
    }
  }
};

TEST_F(EncodeTest, ValuesAreStaged) {
  const std::string file = camera().read("flash/sysconfig/encode/encode1.conf");
  expectWrites("encode(2).type", {{"off", k202, "off"},
                                  {"jpeg", k202, "jpeg"},  // the stored one: only switched on
                                  {"jpeg", kOk, "jpeg"},
                                  {"h264high", k202, "h264high"},
                                  {"off", k202, "off"},
                                  {"off", k202, "off"},
                                  {"h264high", k202, "h264high"},
                                  {"H264high", k451, "h264high"}});
  expectWrites("encode(2).framesize",
               {{"quadvga", k202, "quadvga"}, {"quadvga", kOk, "quadvga"}, {"320x180", k451, "quadvga"}});
  // A number that is padded until its line would be cut is refused: the next start could not read it back.
  expectWrites("encode(2).bitrate", {{"64000", k202, "64000"},
                                     {std::string(900, '0') + "2000001", k457, "64000"},
                                     {"64000", kOk, "64000"},
                                     {"4294967296", k457, "64000"}});
  expectWrites("encode(2).quality", {{"100", k202, "100k"},
                                     {"100k", kOk, "100k"},
                                     {"100Kilobytes", kOk, "100k"},
                                     {"100m", k451, "100k"},
                                     {"k", k451, "100k"},
                                     {"-", k451, "100k"},
                                     {"1-0", k451, "100k"},
                                     {"-5", k457, "100k"},
                                     {"5K", k202, "5k"}});
  expectWrites("encode(2).iframeinterval", {{"1", k202, "1"}, {"1", kOk, "1"}});
  expectWrites("encode(2).cbr_mode", {{"vbr", k202, "vbr"}, {"vbr", kOk, "vbr"}});
  EXPECT_EQ(camera().read("flash/sysconfig/encode/encode1.conf"), file);
  EXPECT_TRUE(camera().journal("encoder").empty());
}

TEST_F(EncodeTest, RatesArePutToTheGrid) {
  expectWrites("encode(2).type", {{"off", k202, "off"}, {"h264high", k202, "h264high"}});
  expectWrites(
      "encode(2).framerate",
      {{"30", k202, "30"},   {"30.0", k202, "30"}, {"29.97", k202, "25"}, {"25", kOk, "25"},     {"24", k202, "15"},
       {"10.5", k202, "10"}, {"9.9", k202, "7.5"}, {"7", k202, "7.5"},    {"7.5", kOk, "7.5"},   {"6.99", k202, "5"},
       {"3", k202, "3"},     {"2.5", k202, "2"},   {"1.99", k202, "1"},   {"0.99", k457, "1"},   {"30.01", k457, "1"},
       {"-3", k457, "1"},    {"inf", k457, "1"},   {"nan", k451, "1"},    {"15 fps", k451, "1"}, {"fast", k451, "1"}});
  expectWrites("encode(2).type", {{"jpeg", k202, "jpeg"}});
  expectWrites("encode(2).framerate", {{"26", k202, "15"}, {"30", k202, "30"}});
}

TEST_F(EncodeTest, TheChannelIsTheSelector) {
  expectAnswers(camera(), "encode",
                {{"(1).type=off", k451},
                 {".type=off", k451},
                 {".cbr_mode=afs", "&202 Accepted(encode.status=save)"},
                 {"(1).cbr_mode", "=afs&200 OK"},
                 {"(3).cbr_mode=vbr", "&202 Accepted(encode(3).status=save)"}});
  expectShown(camera(), "encode", {"(1).cbr_mode=afs", "(1).status=on", "(3).status=off"});
}

TEST_F(EncodeTest, Ranges) {
  const std::string range = "encode(1).range";
  camera().ask("encode(2).type=off&encode(3).type=off");
  expectShown(camera(), range,
              {"(jpeg,1920x1080).framerate=1-15", "(jpeg,vga).quality=80k-320k", "(h264high,vga).iframeinterval=5-120",
               "(h264high,vga).bitrate=64-8000", "(jpeg).framesize=320x240-640x360-640x480-1280x720-1280x960-1920x1080",
               "(h264high,320x180).framesize=320x240-640x360-640x480-1280x720-1280x960-1920x1080"});
  expectEach(camera(), range,
             {"(jpeg).bitrate", "(jpeg,320x180).bitrate", "(jpeg,vga,x).bitrate", "(h264high,vga).quality",
              "(mpeg4,640x360).bitrate"},
             k451);
  // Beside another encoder, and another size as well.
  camera().ask("encode(2).type=h264high&encode(2).framesize=1280x720");
  expectShown(
      camera(), range,
      {"(jpeg,1280x720).quality=60k-180k", "(h264high,quadvga).framerate=1-15", "(jpeg,quadvga).quality=69k-180k"});
  // The upper end follows what is configured, where that is lower.
  camera().ask("encode(2).type=off&encode(1).framerate=7&encode(1).range(jpeg).framerate_limit=on");
  expectAnswers(camera(), {{range + "(jpeg,1280x720).framerate", "=1-8&200 OK"},
                           {"encode(1).framerate=30", "&202 Accepted(encode(1).status=save)"},
                           {range + "(jpeg,1920x1080).framerate", "=1-15&200 OK"}});
  camera().ask("encode(1).range(jpeg).framerate_limit=off&encode(1).framerate=5");
  expectAnswers(camera(), {{range + "(jpeg,1920x1080).framerate", "=1-15&200 OK"}});
  camera().ask("encode(1).iframeinterval=60&encode(1).range(jpeg).iframeinterval_limit=on");
  expectAnswers(camera(), {{range + "(h264high,vga).iframeinterval", "=5-60&200 OK"},
                           {"encode(1).iframeinterval=200", "&202 Accepted(encode(1).status=save)"},
                           {range + "(h264high,vga).iframeinterval", "=5-120&200 OK"}});
  // A limit ends the range of a channel that is on; the interval is that of channel 1 there too.
  camera().ask("encode(2).type=jpeg&encode(2).iframeinterval=7&encode(1).iframeinterval=60");
  expectAnswers(camera(), {{"encode(2).range(h264high,vga).iframeinterval", "=5-60&200 OK"},
                           {"encode(3).range(h264high,vga).iframeinterval", "=5-120&200 OK"}});
}

TEST_F(EncodeTest, ALimitIsOneForAllChannels) {
  const std::string path = "encode(2).range(jpeg).framerate_limit";
  expectAnswers(camera(), {{path + "=on", k202},
                           {path + "=on", kOk},
                           {"encode(3).range(h264high).framerate_limit", "=on&200 OK"},
                           {path + "=off", k202}});
}

TEST_F(EncodeTest, TheAnalogOutputLeavesOneSize) {
  camera().ask("encode(2).type=off&encode(3).type=off&encode.range(jpeg).framerate_limit=off");
  expectAnswers(camera(), {{"video.output.status=on", kOk},
                           {"encode(1).range(jpeg,1280x720).framesize", "=1920x1080&200 OK"},
                           {"encode(1).range(jpeg,1280x720).framerate", "=0-0&200 OK"},
                           {"encode(1).range(jpeg,1920x1080).framerate", "=1-5&200 OK"},
                           {"video.output.status=off", kOk}});
}

TEST_F(EncodeTest, TheBudgetOfTheSessions) {
  camera().ask("encode(2).type=h264high&encode(2).bitrate=4000000&encode(2).quality=100&encode(2).framerate=10");
  const struct {
    Texts sessions;
    std::string item;
    std::string answer;
  } cases[] = {
      // Nobody asks for one session; two fit up to 20000 kilobits.
      {{"h264high 30000 udp encode=1"}, "bitrate=4100000", k202},
      {{"h264high 4100 udp encode=1", "jpeg 15900 udp encode=0"}, "bitrate=4100000", kOk},
      {{"h264high 4100 udp encode=1", "jpeg 15901 udp encode=0"}, "bitrate=4100000", k453},
      // The channel's own sessions are rescaled, one or several of them.
      {{"h264high 4100 udp encode=1", "jpeg 12000 udp encode=0"}, "bitrate=8000000", k202},
      {{"h264high 15800 udp encode=1", "h264high 7900 udp encode=1"}, "bitrate=8000000", kOk},
      {{"h264high 8000 udp encode=1", "jpeg 12101 udp encode=0"}, "bitrate=7900000", k453},
      // The bounds come before the budget of a rate, and behind that of a size.
      {{"jpeg 15000 udp encode=0", "jpeg 15000 udp encode=0"}, "bitrate=63999", k457},
      {{}, "quality=400", k453},
      {{"jpeg 100 udp encode=0", "jpeg 100 udp encode=0"}, "quality=400", k457},
      // A jpeg channel has no rate to rescale, and a stream channel no size.
      {{"h264high 19000 udp encode=1", "h264high 500 udp encode=1"}, "quality=320", k202},
      {{"jpeg 16000 udp encode=1", "jpeg 100 udp encode=0"}, "quality=200", k202},
      {{}, "quality=249", k453},
      {{}, "quality=248", k202},
      {{"audio 30000 udp encode=0", "jpeg 10 udp encode=0", "jpeg 10 udp encode=0"}, "quality=201", k202},
  };
  for (const auto& c : cases) {
    if (!c.sessions.empty()) camera().tell("session clear");
    for (const std::string& session : c.sessions)
      camera().tell("session add " + session);
    expectAnswers(camera(), "encode(2).", {{c.item, c.answer}});
  }
}

TEST_F(EncodeTest, OneSessionOrNoneIsNotLookedAt) {
  camera().tell("session add h264high 30000 udp encode=1");
  camera().clearJournal();
  camera().ask("encode(2).bitrate=2000000");
  EXPECT_EQ(camera().journalFields("session", "what"), Texts(3, "codec_count"));
  camera().clearJournal();
  camera().ask("encode(2).bitrate=1");
  EXPECT_TRUE(camera().journal("session").empty());
  // Without the daemon there are no sessions.
  camera().tell("session down");
  expectAnswers(camera(), {{"encode(2).bitrate=2100000", k202}});
}

}  // namespace
}  // namespace test
