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

  static void addSessions(std::initializer_list<const char*> sessions) {
    camera().tell("session clear");
    for (const char* session : sessions) {
      camera().tell(std::string("session add ") + session);
    }
  }
};

TEST_F(EncodeTest, ValuesAreCheckedAndStaged) {
  const std::string file = camera().read("flash/sysconfig/encode/encode1.conf");
  expectWrites("encode(2).type", {{"off", k202, "off"},
                                  {"h265", k451, "off"},
                                  {"jpeg", k202, "jpeg"},  // the stored one: only switched on
                                  {"jpeg", kOk, "jpeg"},
                                  {"h264high", k202, "h264high"},
                                  {"off", k202, "off"},
                                  {"off", k202, "off"},
                                  {"h264high", k202, "h264high"},
                                  {"mpeg4", k202, "mpeg4"},
                                  {"H264high", k451, "mpeg4"},
                                  {"h264baseline", k202, "h264baseline"}});
  expectWrites("encode(2).framesize", {{"quadvga", k202, "quadvga"},
                                       {"quadvga", kOk, "quadvga"},
                                       {"640x360", k202, "640x360"},
                                       {"320x180", k451, "640x360"},
                                       {"1280x720 ", k451, "640x360"}});
  // A number that is padded until its line would be cut is refused: the next start could not read it back.
  expectWrites("encode(2).bitrate", {{"64000", k202, "64000"},
                                     {std::string(900, '0') + "2000001", k457, "64000"},
                                     {"64000", kOk, "64000"},
                                     {"63999", k457, "64000"},
                                     {"8000001", k457, "64000"},
                                     {"4294967296", k457, "64000"},
                                     {"64k", k451, "64000"},
                                     {"8000000", k202, "8000000"}});
  expectWrites("encode(2).quality", {{"100", k202, "100k"},
                                     {"100k", kOk, "100k"},
                                     {"100Kilobytes", kOk, "100k"},
                                     {"100m", k451, "100k"},
                                     {"k", k451, "100k"},
                                     {"-", k451, "100k"},
                                     {"1-0", k451, "100k"},
                                     {"4", k457, "100k"},
                                     {"-5", k457, "100k"},
                                     {"321k", k457, "100k"},
                                     {"5K", k202, "5k"},
                                     {"320", k202, "320k"}});
  expectWrites("encode(2).iframeinterval", {{"1", k202, "1"},
                                            {"1", kOk, "1"},
                                            {"0", k457, "1"},
                                            {"256", k457, "1"},
                                            {"30f", k451, "1"},
                                            {"255", k202, "255"}});
  expectWrites("encode(2).cbr_mode",
               {{"afs", k202, "afs"}, {"CBR", k451, "afs"}, {"vbr", k202, "vbr"}, {"vbr", kOk, "vbr"}});
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
  expectAnswers(camera(), {
                              {"encode.source", "encode.source=camera&200 OK"},
                              {"encode.source=camera", "encode.source&458 Parameter Is Read Only"},
                              {"encode(1).type=off", "encode(1).type&451 Parameter Not Understood"},
                              {"encode.type=off", "encode.type&451 Parameter Not Understood"},
                              {"encode.cbr_mode=afs", "encode.cbr_mode&202 Accepted(encode.status=save)"},
                              {"encode(1).cbr_mode", "encode(1).cbr_mode=afs&200 OK"},
                              {"encode(3).cbr_mode=vbr", "encode(3).cbr_mode&202 Accepted(encode(3).status=save)"},
                              {"encode(1).cbr_mode", "encode(1).cbr_mode=afs&200 OK"},
                              {"encode(1).status", "encode(1).status=on&200 OK"},
                              {"encode(3).status", "encode(3).status=off&200 OK"},
                              {"encode.status=SAVE", "encode.status&451 Parameter Not Understood"},
                          });
}

TEST_F(EncodeTest, Ranges) {
  struct Case {
    std::vector<std::string> before;  ///< writes
    std::string range;                ///< encode(1).range(…)
    std::string answer;
  };
  const Case cases[] = {
      // Channel 1 alone.
      {{"encode(2).type=off", "encode(3).type=off"}, "(jpeg,1920x1080).framerate", "=1-15&200 OK"},
      {{}, "(jpeg,1280x720).framerate", "=1-30&200 OK"},
      {{}, "(h264high,1920x1080).framerate", "=1-30&200 OK"},
      {{}, "(jpeg,vga).quality", "=80k-320k&200 OK"},
      {{}, "(h264high,vga).iframeinterval", "=5-120&200 OK"},
      {{}, "(h264high,vga).bitrate", "=64-8000&200 OK"},
      {{}, "(jpeg).framesize", "=320x240-640x360-640x480-1280x720-1280x960-1920x1080&200 OK"},
      {{}, "(h264high,320x180).framesize", "=320x240-640x360-640x480-1280x720-1280x960-1920x1080&200 OK"},
      {{}, "(jpeg).bitrate", k451},
      {{}, "(jpeg,320x180).bitrate", k451},
      {{}, "(jpeg,vga,x).bitrate", k451},
      {{}, "(h264high,vga).quality", k451},
      {{}, "(mpeg4,640x360).bitrate", k451},
      // Beside another encoder, another size, and the same of both.
      {{"encode(2).type=h264high", "encode(2).framesize=1280x720"}, "(jpeg,1280x720).quality", "=60k-180k&200 OK"},
      {{}, "(h264high,1280x720).framerate", "=1-30&200 OK"},
      {{}, "(h264high,quadvga).framerate", "=1-15&200 OK"},
      {{}, "(jpeg,quadvga).quality", "=69k-180k&200 OK"},
      // The upper end follows what is configured, where that is lower.
      {{"encode(2).type=off", "encode(1).framerate=7", "encode(1).range(jpeg).framerate_limit=on"},
       "(jpeg,1280x720).framerate",
       "=1-8&200 OK"},
      {{"encode(1).framerate=30"}, "(jpeg,1920x1080).framerate", "=1-15&200 OK"},
      {{"encode(1).range(jpeg).framerate_limit=off", "encode(1).framerate=5"},
       "(jpeg,1920x1080).framerate",
       "=1-15&200 OK"},
      {{"encode(1).iframeinterval=60", "encode(1).range(jpeg).iframeinterval_limit=on"},
       "(h264high,vga).iframeinterval",
       "=5-60&200 OK"},
      {{"encode(1).iframeinterval=200"}, "(h264high,vga).iframeinterval", "=5-120&200 OK"},
  };
  for (const Case& item : cases) {
    for (const std::string& request : item.before) {
      EXPECT_NE(camera().ask(request).find("&20"), std::string::npos) << request;
    }
    const std::string path = "encode(1).range" + item.range;
    EXPECT_EQ(camera().ask(path), path + item.answer) << path;
  }
  // A limit ends the range of a channel that is on; the interval is that of channel 1 there too.
  camera().ask("encode(2).type=jpeg&encode(2).iframeinterval=7&encode(1).iframeinterval=60");
  expectAnswers(
      camera(),
      {{"encode(2).range(h264high,vga).iframeinterval", "encode(2).range(h264high,vga).iframeinterval=5-60&200 OK"},
       {"encode(3).range(h264high,vga).iframeinterval", "encode(3).range(h264high,vga).iframeinterval=5-120&200 OK"}});
}

TEST_F(EncodeTest, ALimitIsOneForAllChannels) {
  const std::string path = "encode(2).range(jpeg).framerate_limit";
  expectAnswers(camera(),
                {{path + "=on", path + k202},
                 {path + "=on", path + kOk},
                 {path + "=yes", path + k451},
                 {"encode(3).range(h264high).framerate_limit", "encode(3).range(h264high).framerate_limit=on&200 OK"},
                 {path + "=off", path + k202}});
}

TEST_F(EncodeTest, TheAnalogOutputLeavesOneSize) {
  camera().ask("encode(2).type=off&encode(3).type=off&encode.range(jpeg).framerate_limit=off");
  const std::string path = "encode(1).range(jpeg,1280x720).";
  expectAnswers(camera(),
                {{"video.output.status=on", "video.output.status&200 OK"},
                 {path + "framesize", path + "framesize=1920x1080&200 OK"},
                 {path + "framerate", path + "framerate=0-0&200 OK"},
                 {"encode(1).range(jpeg,1920x1080).framerate", "encode(1).range(jpeg,1920x1080).framerate=1-5&200 OK"},
                 {"video.output.status=off", "video.output.status&200 OK"}});
}

TEST_F(EncodeTest, TheBudgetOfTheSessions) {
  camera().ask("encode(2).type=h264high&encode(2).bitrate=4000000&encode(2).quality=100&encode(2).framerate=10");
  struct Case {
    std::vector<const char*> sessions;
    std::string request;
    std::string answer;
  };
  const Case cases[] = {
      // Nobody asks for one session; two fit up to 20000 kilobits.
      {{"h264high 30000 udp encode=1"}, "encode(2).bitrate=4100000", k202},
      {{"h264high 4100 udp encode=1", "jpeg 15900 udp encode=0"}, "encode(2).bitrate=4100000", kOk},
      {{"h264high 4100 udp encode=1", "jpeg 15901 udp encode=0"}, "encode(2).bitrate=4100000", k453},
      // The channel's own sessions are rescaled, one or several of them.
      {{"h264high 4100 udp encode=1", "jpeg 12000 udp encode=0"}, "encode(2).bitrate=8000000", k202},
      {{"h264high 8000 udp encode=1", "jpeg 12001 udp encode=0"}, "encode(2).bitrate=7900000", k202},
      {{"h264high 15800 udp encode=1", "jpeg 100 udp encode=0"}, "encode(2).bitrate=8000000", k202},
      {{"h264high 15800 udp encode=1", "h264high 7900 udp encode=1"}, "encode(2).bitrate=8000000", kOk},
      {{"h264high 8000 udp encode=1", "jpeg 12101 udp encode=0"}, "encode(2).bitrate=7900000", k453},
      // The bounds come before the budget of a rate, and behind that of a size.
      {{"jpeg 15000 udp encode=0", "jpeg 15000 udp encode=0"}, "encode(2).bitrate=63999", k457},
      {{}, "encode(2).quality=400", k453},
      {{"jpeg 100 udp encode=0", "jpeg 100 udp encode=0"}, "encode(2).quality=400", k457},
      // A jpeg channel has no rate to rescale, and a stream channel no size.
      {{"h264high 19000 udp encode=1", "h264high 500 udp encode=1"}, "encode(2).quality=320", k202},
      {{"jpeg 16000 udp encode=1", "jpeg 100 udp encode=0"}, "encode(2).quality=200", k202},
      {{}, "encode(2).quality=249", k453},
      {{}, "encode(2).quality=248", k202},
      {{"audio 30000 udp encode=0", "jpeg 10 udp encode=0", "jpeg 10 udp encode=0"}, "encode(2).quality=201", k202},
  };
  for (const Case& item : cases) {
    if (!item.sessions.empty()) camera().tell("session clear");
    for (const char* session : item.sessions) {
      camera().tell(std::string("session add ") + session);
    }
    const std::string path = item.request.substr(0, item.request.find('='));
    EXPECT_EQ(camera().ask(item.request), path + item.answer) << item.request;
  }
}

TEST_F(EncodeTest, OneSessionOrNoneIsNotLookedAt) {
  addSessions({"h264high 30000 udp encode=1"});
  camera().clearJournal();
  camera().ask("encode(2).bitrate=2000000");
  EXPECT_EQ(camera().journalFields("session", "what"), std::vector<std::string>(3, "codec_count"));
  camera().clearJournal();
  camera().ask("encode(2).bitrate=1");
  EXPECT_TRUE(camera().journal("session").empty());
}

}  // namespace
}  // namespace test
