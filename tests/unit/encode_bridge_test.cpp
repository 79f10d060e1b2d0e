#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
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

/** The calls that each conversion of channel 1 makes, "failed" behind those that return -1, and blanks between them. */
std::string conversions() {
  std::string all;
  for (const auto convert : {Encoder::setConvertSetToSdk_Formattype, Encoder::setConvertSetToSdk_Resolution,
                             Encoder::setConvertSetToSdk_Framerate, Encoder::setConvertSetToSdk_Cbrmode,
                             Encoder::setConvertSetToSdk_IframeInterval}) {
    library.calls.clear();
    const int32_t result = convert(1);
    for (const std::string& call : library.calls)
      all += (all.empty() ? "" : ", ") + call;
    if (result != 0) all += result == -1 ? " failed" : " ?";
  }
  return all;
}

TEST_F(EncoderTest, ConversionsOfOneChannel) {
  const std::string jpeg = "format 1 2, size 1 1920 1080, rate 1 15, ";
  const std::string size = ", size 1 1920 1080, rate 1 ";
  const std::string unknown = "format 1 0 failed failed failed failed";
  const struct {
    Channel staged;
    std::string calls;
    std::vector<std::string> failing = {};
  } kCases[] = {
      {{}, jpeg + "cbr 1 0, quality 1 160"},
      {{.status = "off"}, "format 1 0"},
      {{.status = "off", .type = "mjpeg", .framesize = "?"}, "format 1 0"},
      {{.status = "ON"}, jpeg + "cbr 1 0, quality 1 160"},
      {{.type = "mjpeg"}, unknown},
      {{.type = "JPEG"}, unknown},
      {{.framesize = "1920x1081"}, "format 1 2 failed, rate 1 15, cbr 1 0, quality 1 160"},
      {{.framesize = ""}, "format 1 2 failed, rate 1 15, cbr 1 0, quality 1 160"},
      {{.framerate = "7.5", .quality = "5", .mode = "VFS"}, "format 1 2" + size + "7, cbr 1 0, quality 1 5"},
      {{.framerate = "29.97", .quality = "320", .mode = "afs"}, "format 1 2" + size + "29, cbr 1 1, quality 1 320"},
      {{.mode = "AFS"}, jpeg + "cbr 1 1, quality 1 160"},
      {{.mode = "Afs"}, jpeg + "cbr 1 0, quality 1 160"},
      {{.mode = "cbr"}, jpeg + "cbr 1 0, quality 1 160"},
      {{.type = "mpeg4", .framerate = "30", .mode = "cbr"},
       "format 1 3" + size + "30, cbr 1 1, kbps 1 2000, interval 1 30"},
      {{.type = "h264baseline", .mode = "vbr", .bitrate = "64999", .interval = "1"},
       "format 1 50" + size + "15, cbr 1 0, kbps 1 64, interval 1 1"},
      {{.type = "h264high", .mode = "CBR", .interval = "255"},
       "format 1 52" + size + "15, cbr 1 0, kbps 1 2000, interval 1 255"},
      {{.type = "h264high", .mode = "afs"}, "format 1 52" + size + "15, cbr 1 0, kbps 1 2000, interval 1 30"},
      {{},
       "format 1 2 failed, size 1 1920 1080 failed, rate 1 15 failed, cbr 1 0, quality 1 160 failed",
       {"format", "size", "rate", "cbr"}},
      {{}, jpeg + "cbr 1 0, quality 1 160 failed", {"quality"}},
      {{.status = "off"}, "format 1 0 failed", {"format"}},
      {{.type = "mpeg4"},
       "format 1 3" + size + "15, cbr 1 0, kbps 1 2000 failed, interval 1 30 failed",
       {"cbr", "interval"}},
      {{.type = "mpeg4"}, "format 1 3" + size + "15, cbr 1 0, kbps 1 2000 failed, interval 1 30", {"kbps"}}};
  for (const auto& test : kCases) {
    library = {.calls = {}, .failing = test.failing};
    stage({}, test.staged, {});
    EXPECT_EQ(conversions(), test.calls) << &test - kCases;
  }
  library = {};
  for (const std::string text :
       {"quadvga 1280 960", "1280x960 1280 960", "1280x720 1280 720", "vga 640 480", "640x480 640 480", "qvga 320 240",
        "320x240 320 240", "640x360 640 360", "320x180 320 180"}) {
    const std::string name = text.substr(0, text.find(' '));
    stage({}, {.framesize = name.c_str()}, {});
    EXPECT_NE(conversions().find(", size 1" + text.substr(name.size()) + ","), std::string::npos) << text;
  }
}

TEST_F(EncoderTest, StartSetsEveryChannelThenAspectThenEncoders) {
  stage({.type = "h264high", .framesize = "1280x720", .mode = "cbr"}, {.status = "off"}, {.framerate = "5"});
  const char* aspect = "dsp f2 00 00 00 00 00 00 00 00 00 00 00";
  const Calls expected = {"format 0 52",   "size 0 1280 720", "rate 0 15",  "cbr 0 1",          "kbps 0 2000",
                          "interval 0 30", "format 1 0",      "format 2 2", "size 2 1920 1080", "rate 2 5",
                          "cbr 2 0",       "quality 2 160",   aspect,       "ctl 0 2",          "ctl 1 0",
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
  } kCases[] = {{{{{.status = "off"}, {.status = "off"}, {.status = "off"}}}, 0, "00"},
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
                {{{{.status = "ON", .framesize = "vga"}, {}, {}}}, 0, "00"}};
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
      {{{{.framerate = "15.0000001"}, {.framerate = ""}, {.framerate = "x"}}}, 1, 1}};
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

}  // namespace
