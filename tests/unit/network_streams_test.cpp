#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "network/AccessHost.h"
#include "network/OnvifProfile.h"
#include "network/StreamDestination.h"

namespace {

using namespace stream_destination;

/** An image of its own with the factory's rows, but for three channels with pictures of 100 kilobytes, 10 a second. */
class StreamDestinations : public testing::Test {
 protected:
  void SetUp() override {
    for (int32_t channel = 0; channel < 3; ++channel) {
      encodes(channel, "jpeg", "100", "2000000");
      config.set(rows(channel + 1).framerate, "10");
    }
  }

  void encodes(int32_t channel, const char* type, const char* quality, const char* bitrate) {
    config.setEncodeConfig(channel, encode_row::ENCTYPE_CH, type);
    config.setEncodeConfig(channel, encode_row::QUALITY, quality);
    config.setEncodeConfig(channel, encode_row::BITRATE, bitrate);
  }

  struct : Config {
  } config;
};

TEST(JpegBitrate, FollowsTheRateAndTheSize) {
  const struct {
    float rate;
    int32_t quality;
    int32_t kilobits;
  } cases[] = {
      {0, 320, 0},    {30, 320, 76800}, {5, 100, 4000},    {7.5F, 100, 5600}, {0.5F, 100, 0},         {-5, 100, 160},
      {-3, 100, 266}, {-30, 5, 1},      {-2.9F, 100, 400}, {-1, 320, 2560},   {-0.5F, 1, 2147483647},
  };
  for (const auto& c : cases)
    EXPECT_EQ(m_jpegBitrate(c.rate, c.quality), c.kilobits) << c.rate << ' ' << c.quality;
}

TEST_F(StreamDestinations, SendWhatTheirChannelMakes) {
  const struct {
    const char* type;
    const char* quality;
    const char* bitrate;
    const char* sent;
  } cases[] = {{"jpeg", "120k", "1", "jpeg 9600"},
               {"mpeg4", "1", "64999", "mpeg4 64"},
               {"h264baseline", "1", "2000000", "h264baseline 2000"},
               {"h264high", "1", "999", "h264high 0"},
               {"off", "1", "2000000", "<none>"},
               {"", "1", "2000000", "<none>"}};
  const auto sent = [this](int32_t number) {
    const auto stream = streamOf(config, number);
    return stream ? stream->type + " " + std::to_string(stream->bitrate) : "<none>";
  };
  for (const auto& c : cases) {
    encodes(1, c.type, c.quality, c.bitrate);
    EXPECT_EQ(sent(2), c.sent) << c.type;
  }
  EXPECT_EQ(sent(4), "ulaw 64");
  EXPECT_EQ(sent(5), "onvif_motion 0");
}

TEST_F(StreamDestinations, ShareTheBandwidth) {
  const LiveStream udp{"1", "mpeg4", "udp"};
  const struct {
    const char* name;
    const char* rate;  // of the second destination, pictures of 100 kilobytes
    std::vector<int32_t> others;
    std::vector<LiveStream> live;
    bool fits;
  } cases[] = {
      {"alone, whatever it takes", "30", {}, {}, true},
      {"alone with a session, at the limit", "24", {}, {{"800", "jpeg", "http"}}, true},
      {"alone with a session, beyond it", "24", {}, {{"801", "jpeg", "http"}}, false},
      {"all four kinds count",
       "24",
       {},
       {{"200", "jpeg", "http"}, {"200", "mpeg4", "http"}, {"200", "h264high", "tcp"}, {"201", "h264baseline", "tcp"}},
       false},
      {"a free slot and another kind do not", "30", {}, {{"0", "jpeg", "udp"}, {"9000", "ulaw", "udp"}}, true},
      {"another destination takes its share, and replaces the own", "1", {1}, {}, true},
      {"the first of the others counts", "1", {3, 1}, {}, true},
      {"the third alone", "1", {3}, {}, false},
      {"sessions over udp are the other destinations", "24", {3}, {udp}, true},
      {"sessions over http are not", "1", {3}, {{"1", "jpeg", "http"}}, false},
      {"another destination forbids what is too much alone", "30", {1}, {udp}, false},
      {"and is not outweighed by a small one", "30", {1}, {}, true},
  };
  encodes(0, "jpeg", "100", "2000000");
  for (const auto& c : cases) {
    config.set(network_row::DEST1_FRAMERATE, "10");  // 8000 kilobits
    config.set(network_row::DEST2_FRAMERATE, c.rate);
    config.set(network_row::DEST3_FRAMERATE, "13");  // 10400 kilobits
    for (const int32_t number : {1, 2, 3})
      config.set(rows(number).status, "off");
    for (const int32_t number : c.others)
      config.set(rows(number).status, "on");
    EXPECT_EQ(hasBandwidth(config, 2, c.live), c.fits) << c.name;
  }
}

TEST_F(StreamDestinations, StreamsOfOtherKindsCountWithTheirBitRate) {
  config.set(network_row::DEST1, "on");
  config.set(network_row::DEST2_FRAMERATE, "15");  // 12000 kilobits
  encodes(0, "h264high", "1", "8000000");
  EXPECT_TRUE(hasBandwidth(config, 2, {}));
  encodes(0, "h264high", "1", "8001000");
  EXPECT_FALSE(hasBandwidth(config, 2, {}));
}

std::string commandOf(const Config& config, int32_t number, const Stream& stream, bool hasUserdata) {
  const auto params = m_setRtpdParams(config, number, stream);
  if (!params) return "<none>";
  const Service rtpd = sender(number, stream.type, *params, hasUserdata);
  std::string line = rtpd.program;
  for (const std::string& argument : rtpd.arguments)
    line += " " + argument;
  return line;
}

TEST_F(StreamDestinations, AreSentByACommandLine) {
  const std::string common = " --ttl 32 --tos 0 --device eth0";
  const std::string rtp = " --timeout 0 --protocol rtp_udp";
  const struct {
    int32_t number;
    const char* type;
    bool hasUserdata;
    std::string head;
    std::string tail;
  } cases[] = {
      {1, "jpeg", true, "jpeg(0) --bitrate 7", " --framerate 10" + rtp},
      {1, "jpeg", false, "jpeg(0) --bitrate 7", " --framerate 10" + rtp + " --enable-rfc2435"},
      {2, "h264high", false, "h264(1) --bitrate 7", rtp + " --disable-stap --disable-h264user"},
      {3, "mpeg4", false, "mpeg4(2) --bitrate 7", rtp},
      {4, "ulaw", true, "ulaw(3) --bitrate 7", rtp},
      {5, "onvif_motion", false, "onvif_motion", " --protocol rtp_udp"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(commandOf(config, c.number, {c.type, 7}, c.hasUserdata),
              "/bin/rtpd --datatype " + c.head + " --host 225.0." + std::to_string(c.number) + ".1 --dstport " +
                  std::to_string(49150 + 2 * c.number) + common + c.tail);
    EXPECT_EQ(sender(c.number).pidFile, "/var/run/rtpd_channel" + std::to_string(c.number - 1) + ".pid");
  }
  config.set(network_row::DEST1_FRAMERATE, "");
  EXPECT_EQ(commandOf(config, 1, {"jpeg", 7}, true), "<none>");
  EXPECT_NE(commandOf(config, 1, {"mpeg4", 7}, true), "<none>");
  config.set(network_row::DEST4_HOST, "");
  EXPECT_EQ(commandOf(config, 4, {"ulaw", 7}, true), "<none>");
}

TEST(AccessHost, IsAnAddressWithAPrefix) {
  const struct {
    const char* text;
    AccessHost host;
  } cases[] = {{"", {}},
               {"192.168.0.7", {"192.168.0.7", 0}},
               {"192.168.0.7/", {"192.168.0.7", 0}},
               {"10.0.0.0/8", {"10.0.0.0", 8}},
               {"10.0.0.0/30", {"10.0.0.0", 30}},
               {"fe80::1", {"fe80::1", 0}},
               {"fe80::/16", {"fe80::", 16}},
               {"::ffff:1.2.3.4/126", {"::ffff:1.2.3.4", 126}}};
  for (const auto& c : cases)
    EXPECT_EQ(m_analyzeHost(c.text), c.host) << c.text;
  for (const char* text : {"10.0.0.0/7", "10.0.0.0/31", "10.0.0.1/32", "10.0.0.0/8x", "10.0.0.0/ 8", "10.0.0.0/8/8",
                           "fe80::/15", "fe80::/127", "fe80::1/128", "/24", "/", "1.2.3", "1.2.3.4.5", "01.2.3.400",
                           "host", "1.2.3.4:80", "1.2.3.4/16:"})
    EXPECT_EQ(m_analyzeHost(text), std::nullopt) << text;
}

TEST(OnvifProfile, TakesOverTheChannel) {
  const std::string text =
      "# profile\nCODEC_TYPE= \"JPEG\"\nQUALITY= 100.0\nWIDTH= 1920\nHEIGHT= 1080\nVIDEORATECONTROL_FPS_LIMIT= 5 \n"
      "VIDEORATECONTROL_BPS_LIMIT= 2000\nH264CFG_GOVLEN= 0  \nH264CFG_PROFILE= \"High\"    \nWIDTHS= 3\nlast";
  const struct {
    OnvifChannel channel;
    std::string values;
  } cases[] = {
      {{"jpeg", "1920x1080", "30", "8000000", "320k", "30"},
       "CODEC_TYPE= \"JPEG\"\nQUALITY= 100.0\nWIDTH= 1920\nHEIGHT= 1080\nVIDEORATECONTROL_FPS_LIMIT= 30\n"
       "VIDEORATECONTROL_BPS_LIMIT= 8000\nH264CFG_GOVLEN= 0  \nH264CFG_PROFILE= \"High\"    "},
      {{"h264baseline", "qvga", "7.5", "64999", "27", "255"},
       "CODEC_TYPE= \"H264\"\nQUALITY= 0.0  \nWIDTH= 320 \nHEIGHT= 240 \nVIDEORATECONTROL_FPS_LIMIT= 8 \n"
       "VIDEORATECONTROL_BPS_LIMIT= 64  \nH264CFG_GOVLEN= 255\nH264CFG_PROFILE= \"Baseline\""},
      {{"mpeg4", "quadvga", "29.97", "12345678", "60", "5"},
       "CODEC_TYPE= \"MP4\" \nQUALITY= 0.0  \nWIDTH= 1280\nHEIGHT= 960 \nVIDEORATECONTROL_FPS_LIMIT= 30\n"
       "VIDEORATECONTROL_BPS_LIMIT= 12345\nH264CFG_GOVLEN= 5  \nH264CFG_PROFILE= \"SP\"      "},
      {{"h264high", "vga", "-1.5", "0", "60", "5"},
       "CODEC_TYPE= \"H264\"\nQUALITY= 0.0  \nWIDTH= 640 \nHEIGHT= 480 \nVIDEORATECONTROL_FPS_LIMIT= -1.5\n"
       "VIDEORATECONTROL_BPS_LIMIT= 0   \nH264CFG_GOVLEN= 5  \nH264CFG_PROFILE= \"High\"    "},
  };
  for (const auto& c : cases)
    EXPECT_EQ(onvif_profile::refreshed(text, c.channel), "# profile\n" + c.values + "\nWIDTHS= 3\nlast")
        << c.channel.type;
  EXPECT_EQ(onvif_profile::refreshed("", cases[0].channel), "");
}

TEST(OnvifProfile, QualityOfEachPictureClass) {
  const struct {
    const char* width;
    const char* height;
    int32_t kilobytes;
    int32_t value;
  } cases[] = {
      {"1920", "1080", 320, 100}, {"1920", "1080", 80, 10}, {"1280", "960", 180, 100}, {"1280", "720", 60, 10},
      {"640", "480", 80, 100},    {"640", "360", 15, 10},   {"320", "240", 27, 100},   {"320", "180", 5, 10},
      {"1280", "480", 27, 100},   {"1920", "1080", 5, -17},
  };
  for (const auto& c : cases)
    EXPECT_EQ(onvif_profile::qualityValue(c.width, c.height, c.kilobytes), c.value) << c.width << 'x' << c.height;
}

}  // namespace
