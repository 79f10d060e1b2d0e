#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "config/Config.h"
#include "encoder/Encoder.h"
#include "tests/unit/fake_camera_library.h"

namespace {

using Calls = std::vector<std::string>;

FakeCameraLibrary& library = fakeCameraLibrary;

struct Channel {
  const char* status = "on";
  const char* type = "jpeg";
  const char* framesize = "1920x1080";
  const char* framerate = "15";
  const char* quality = "160k";
  const char* mode = "vfs";
  const char* bitrate = "2000000";
  const char* interval = "30";
};

void store(Config& config, int32_t channel, const Channel& stored) {
  const std::map<int32_t, const char*> rows = {
      {encode_row::ENC_STATUS, stored.status},    {encode_row::ENCTYPE_CH, stored.type},
      {encode_row::FRAME_SIZE, stored.framesize}, {encode_row::FRAME_RATE, stored.framerate},
      {encode_row::QUALITY, stored.quality},      {encode_row::CBR_MODE, stored.mode},
      {encode_row::BITRATE, stored.bitrate},      {encode_row::IFRAME_INTERVAL, stored.interval}};
  for (const auto& [row, value] : rows)
    ASSERT_EQ(config.setEncodeConfig(channel, row, value), 0);
}

class EncoderTest : public testing::Test {
 protected:
  /** The conversions read the staging image; what stands in the other store must not matter. */
  void SetUp() override {
    library = {};
    for (int32_t channel = 0; channel < 3; ++channel) {
      store(*Config::getInstance(), channel, {"on", "nonsense", "nonsense", "30", "1", "nonsense", "1", "1"});
    }
    stage({}, {}, {});
  }

  static void stage(const Channel& first, const Channel& second, const Channel& third) {
    store(*CUserConfig::getInstance(), 0, first);
    store(*CUserConfig::getInstance(), 1, second);
    store(*CUserConfig::getInstance(), 2, third);
  }
};

using Operation = int32_t (*)(int32_t channel);

TEST_F(EncoderTest, ConversionsOfOneChannel) {
  const Operation format = Encoder::setConvertSetToSdk_Formattype;
  const Operation size = Encoder::setConvertSetToSdk_Resolution;
  const Operation rate = Encoder::setConvertSetToSdk_Framerate;
  const Operation mode = Encoder::setConvertSetToSdk_Cbrmode;
  const Operation interval = Encoder::setConvertSetToSdk_IframeInterval;
  const Channel off = {.status = "off"};
  const Channel unknown = {.type = "mjpeg"};
  const Channel capitals = {.type = "JPEG"};
  const struct {
    const char* what;
    Operation operation;
    Channel staged;
    Calls calls;
    int32_t result = 0;
    std::vector<std::string> failing = {};
  } kCases[] = {
      {"format off", format, off, {"format 1 0"}},
      {"format jpeg", format, {.type = "jpeg"}, {"format 1 2"}},
      {"format mpeg4", format, {.type = "mpeg4"}, {"format 1 3"}},
      {"format h264baseline", format, {.type = "h264baseline"}, {"format 1 50"}},
      {"format h264high", format, {.type = "h264high"}, {"format 1 52"}},
      {"format unknown", format, unknown, {"format 1 0"}},
      {"format of any status but off", format, {.status = "ON"}, {"format 1 2"}},
      {"format fails", format, {}, {"format 1 2"}, -1, {"format"}},
      {"format of off fails", format, off, {"format 1 0"}, -1, {"format"}},

      {"size off", size, off, {}},
      {"size off with unknown type", size, {.status = "off", .type = "mjpeg", .framesize = "?"}, {}},
      {"size unknown type", size, unknown, {}, -1},
      {"size capital type", size, capitals, {}, -1},
      {"size unknown", size, {.framesize = "1920x1081"}, {}, -1},
      {"size empty", size, {.framesize = ""}, {}, -1},
      {"size fails", size, {}, {"size 1 1920 1080"}, -1, {"size"}},
      {"1920x1080", size, {.framesize = "1920x1080"}, {"size 1 1920 1080"}},
      {"quadvga", size, {.framesize = "quadvga"}, {"size 1 1280 960"}},
      {"1280x960", size, {.type = "mpeg4", .framesize = "1280x960"}, {"size 1 1280 960"}},
      {"1280x720", size, {.type = "h264high", .framesize = "1280x720"}, {"size 1 1280 720"}},
      {"vga", size, {.type = "h264baseline", .framesize = "vga"}, {"size 1 640 480"}},
      {"640x480", size, {.framesize = "640x480"}, {"size 1 640 480"}},
      {"qvga", size, {.framesize = "qvga"}, {"size 1 320 240"}},
      {"320x240", size, {.framesize = "320x240"}, {"size 1 320 240"}},
      {"640x360", size, {.framesize = "640x360"}, {"size 1 640 360"}},
      {"320x180", size, {.framesize = "320x180"}, {"size 1 320 180"}},

      {"rate off", rate, off, {}},
      {"rate unknown type", rate, unknown, {}, -1},
      {"rate 7.5", rate, {.framerate = "7.5"}, {"rate 1 7"}},
      {"rate 29.97", rate, {.type = "h264high", .framerate = "29.97"}, {"rate 1 29"}},
      {"rate 30", rate, {.type = "mpeg4", .framerate = "30"}, {"rate 1 30"}},
      {"rate fails", rate, {}, {"rate 1 15"}, -1, {"rate"}},

      {"mode off", mode, off, {}},
      {"mode unknown type", mode, unknown, {}, -1},
      {"jpeg vfs", mode, {.quality = "160k", .mode = "vfs"}, {"cbr 1 0", "quality 1 160"}},
      {"jpeg VFS", mode, {.quality = "5", .mode = "VFS"}, {"cbr 1 0", "quality 1 5"}},
      {"jpeg afs", mode, {.quality = "320", .mode = "afs"}, {"cbr 1 1", "quality 1 320"}},
      {"jpeg AFS", mode, {.mode = "AFS"}, {"cbr 1 1", "quality 1 160"}},
      {"jpeg Afs", mode, {.mode = "Afs"}, {"cbr 1 0", "quality 1 160"}},
      {"jpeg cbr", mode, {.mode = "cbr"}, {"cbr 1 0", "quality 1 160"}},
      {"jpeg mode fails", mode, {}, {"cbr 1 0", "quality 1 160"}, -1, {"cbr"}},
      {"jpeg quality fails", mode, {}, {"cbr 1 0", "quality 1 160"}, -1, {"quality"}},
      {"mpeg4 cbr", mode, {.type = "mpeg4", .mode = "cbr"}, {"cbr 1 1", "kbps 1 2000"}},
      {"h264high CBR", mode, {.type = "h264high", .mode = "CBR"}, {"cbr 1 0", "kbps 1 2000"}},
      {"h264baseline vbr", mode, {.type = "h264baseline", .mode = "vbr", .bitrate = "64999"}, {"cbr 1 0", "kbps 1 64"}},
      {"h264high afs", mode, {.type = "h264high", .mode = "afs"}, {"cbr 1 0", "kbps 1 2000"}},
      {"stream mode fails", mode, {.type = "mpeg4"}, {"cbr 1 0", "kbps 1 2000"}, -1, {"cbr"}},
      {"stream rate fails", mode, {.type = "mpeg4"}, {"cbr 1 0", "kbps 1 2000"}, -1, {"kbps"}},

      {"interval off", interval, off, {}},
      {"interval jpeg", interval, {.type = "jpeg"}, {}},
      {"interval unknown type", interval, unknown, {}, -1},
      {"interval mpeg4", interval, {.type = "mpeg4"}, {"interval 1 30"}},
      {"interval h264baseline", interval, {.type = "h264baseline", .interval = "1"}, {"interval 1 1"}},
      {"interval h264high", interval, {.type = "h264high", .interval = "255"}, {"interval 1 255"}},
      {"interval fails", interval, {.type = "mpeg4"}, {"interval 1 30"}, -1, {"interval"}},
  };
  for (const auto& test : kCases) {
    library = {.calls = {}, .failing = test.failing};
    stage({}, test.staged, {});
    EXPECT_EQ(test.operation(1), test.result) << test.what;
    EXPECT_EQ(library.calls, test.calls) << test.what;
  }
}

TEST_F(EncoderTest, StartSetsEveryChannelThenAspectThenEncoders) {
  stage({.type = "h264high", .framesize = "1280x720", .mode = "cbr"}, {.status = "off"}, {.framerate = "5"});
  const Calls expected = {"format 0 52",
                          "size 0 1280 720",
                          "rate 0 15",
                          "cbr 0 1",
                          "kbps 0 2000",
                          "interval 0 30",
                          "format 1 0",
                          "format 2 2",
                          "size 2 1920 1080",
                          "rate 2 5",
                          "cbr 2 0",
                          "quality 2 160",
                          "dsp f2 00 00 00 00 00 00 00 00 00 00 00",
                          "ctl 0 2",
                          "ctl 1 0",
                          "ctl 2 2"};
  EXPECT_EQ(Encoder::loadAll(), 0);
  EXPECT_EQ(library.calls, expected);

  // No failure stops the sequence.
  library = {.calls = {}, .failing = {""}};
  EXPECT_EQ(Encoder::loadAll(), 0);
  EXPECT_EQ(library.calls, expected);
}

TEST_F(EncoderTest, AspectOfTheActiveChannels) {
  const struct {
    std::array<Channel, 3> staged;
    int32_t status;
    const char* frame;
  } kCases[] = {
      {{{{.status = "off"}, {.status = "off"}, {.status = "off"}}}, 0, "00"},
      {{{{.framesize = "1920x1080"}, {.framesize = "1280x720"}, {.framesize = "640x360"}}}, 0, "00"},
      {{{{.framesize = "320x180"}, {.status = "off", .framesize = "vga"}, {.type = "h264high"}}}, 0, "00"},
      {{{{.framesize = "1280x960"}, {.framesize = "640x480"}, {.framesize = "320x240"}}}, 1, "01"},
      {{{{.framesize = "quadvga"}, {.framesize = "vga"}, {.framesize = "qvga"}}}, 1, "01"},
      {{{{.type = "mpeg4", .framesize = "vga"}, {.status = "off"}, {.status = "off"}}}, 1, "01"},
      {{{{.type = "mpeg4", .framesize = "1280x720"}, {.status = "off"}, {.status = "off"}}}, -1, "ff"},
      {{{{.status = "off", .type = "mpeg4"}, {}, {}}}, 0, "00"},
      {{{{}, {.framesize = "1280x960"}, {}}}, -1, "ff"},
      {{{{.framesize = "vga"}, {.framesize = "vga"}, {}}}, -1, "ff"},
      {{{{.framesize = "none"}, {.status = "off"}, {.status = "off"}}}, -1, "ff"},
      {{{{.status = "ON", .framesize = "vga"}, {}, {}}}, 0, "00"},
  };
  for (const auto& test : kCases) {
    library = {};
    stage(test.staged[0], test.staged[1], test.staged[2]);
    EXPECT_EQ(Encoder::getAspectRatioStatus(), test.status) << &test - kCases;
    EXPECT_EQ(library.calls, Calls());
    EXPECT_EQ(Encoder::setAspectRatioStatus(), 0);
    EXPECT_EQ(library.calls, Calls{std::string("dsp f2 ") + test.frame + " 00 00 00 00 00 00 00 00 00 00"})
        << &test - kCases;
  }
  library.failing = {"dsp"};
  EXPECT_EQ(Encoder::setAspectRatioStatus(), -1);
}

TEST_F(EncoderTest, FrameRatesDecidePassModeAndHighRate) {
  const struct {
    std::array<Channel, 3> staged;
    int32_t mode;
    int32_t highRates;
  } kCases[] = {
      {{{{.status = "off", .framerate = "30"}, {.status = "off", .framerate = "25"}, {.status = "off"}}}, 1, 0},
      {{{{.framerate = "30"}, {.framerate = "15"}, {.framerate = "15"}}}, 0, 1},
      {{{{.framerate = "5"}, {.framerate = "25"}, {.framerate = "15.5"}}}, 0, 2},
      {{{{.framerate = "29"}, {.framerate = "24.9"}, {.framerate = "30.1"}}}, 1, 3},
      {{{{.framerate = "15"}, {.framerate = "15"}, {.framerate = "25.0"}}}, 0, 1},
      {{{{.framerate = "15"}, {.framerate = "7.5"}, {.status = "off", .framerate = "30"}}}, 1, 0},
      {{{{.framerate = "15.0000001"}, {.framerate = ""}, {.framerate = "x"}}}, 1, 1},
  };
  for (const auto& test : kCases) {
    library = {};
    stage(test.staged[0], test.staged[1], test.staged[2]);
    EXPECT_EQ(Encoder::updatePassMode(), 0);
    EXPECT_EQ(library.calls, Calls{"dsp f1 0" + std::to_string(test.mode) + " 00 00 00 00 00 00 00 00 00 00"})
        << &test - kCases;
    EXPECT_EQ(Encoder::countHighRateChannels(), test.highRates) << &test - kCases;
  }
  library.failing = {"dsp"};
  EXPECT_EQ(Encoder::setPassMode(1), -3);
  EXPECT_EQ(Encoder::updatePassMode(), -1);
}

TEST_F(EncoderTest, RestartGoesOnBehindAFailure) {
  stage({}, {.status = "off"}, {.status = ""});
  library.failing = {"ctl 0", "ctl 1"};
  EXPECT_EQ(Encoder::restart(), 0);
  EXPECT_EQ(library.calls, (Calls{"ctl 0 2", "ctl 1 0", "ctl 2 2"}));
}

/** A recorder that answers every packet with the same verdict and keeps what it was told, until it is destroyed. */
class Recorder {
 public:
  explicit Recorder(uint8_t verdict) : m_verdict(verdict) {
    EXPECT_NE(mkdtemp(m_folder.data()), nullptr);
    m_path = m_folder + "/recorder";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    m_path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(m_listener, 5), 0);
    m_thread = std::thread([this] { serve(); });
  }

  ~Recorder() {
    finish();
    close(m_listener);
    unlink(m_path.c_str());
    rmdir(m_folder.c_str());
  }

  [[nodiscard]] const std::string& path() const { return m_path; }

  /** Everything that arrived, as "command id text" with the id in hexadecimal. */
  const Calls& finish() {
    shutdown(m_listener, SHUT_RDWR);
    if (m_thread.joinable()) m_thread.join();
    return m_packets;
  }

 private:
  void serve() {
    for (int client = accept(m_listener, nullptr, nullptr); client >= 0;
         client = accept(m_listener, nullptr, nullptr)) {
      std::array<char, 1012> packet{};
      if (recv(client, packet.data(), packet.size(), MSG_WAITALL) == static_cast<ssize_t>(packet.size())) {
        uint32_t id = 0;
        std::memcpy(&id, &packet[8], sizeof id);
        char text[1100];
        std::snprintf(text, sizeof text, "%d %x %s", packet[0], id, &packet[12]);
        m_packets.emplace_back(text);
        packet[0] = static_cast<char>(m_verdict);
        EXPECT_EQ(send(client, packet.data(), packet.size(), MSG_NOSIGNAL), static_cast<ssize_t>(packet.size()));
      }
      close(client);
    }
  }

  uint8_t m_verdict;
  std::string m_folder = "/tmp/encode_testXXXXXX";
  std::string m_path;
  int m_listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  Calls m_packets;
  std::thread m_thread;
};

TEST_F(EncoderTest, RecorderIsToldTheStoreThatTheEncoderWasBuiltOver) {
  Config& config = *Config::getInstance();
  store(config, 0, {.type = "h264high", .framesize = "vga", .framerate = "7.5", .interval = "5"});
  store(config, 1, {.status = "off", .type = "mpeg4", .framesize = "qvga", .bitrate = "64000"});
  store(config, 2, {.status = "ON", .framesize = "640x360", .framerate = "1", .interval = "255"});
  const Calls expected = {"1 501000 vga",      "1 511000 7.5",     "1 521000 5",       "1 541000 2000000",
                          "1 531000 h264high", "1 502000 qvga",    "1 512000 15",      "1 522000 30",
                          "1 542000 64000",    "1 532000 off",     "1 503000 640x360", "1 513000 1",
                          "1 523000 255",      "1 543000 2000000", "1 533000 jpeg",    "12 0 "};

  Recorder obliging(2);
  EXPECT_EQ(Encoder(config, ParamPitcher(obliging.path())).SetEncoder(), 200);
  EXPECT_EQ(obliging.finish(), expected);

  Recorder failing(5);
  // A refusal is no failure of the exchange.
  EXPECT_EQ(Encoder(config, ParamPitcher(failing.path())).SetEncoder(), 200);
  EXPECT_EQ(failing.finish(), expected);

  EXPECT_EQ(Encoder(config, ParamPitcher("/tmp/encode_test_nobody")).SetEncoder(), -500);
  EXPECT_EQ(library.calls, Calls());
}

}  // namespace
