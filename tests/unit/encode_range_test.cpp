#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "config/Config.h"
#include "encoder/EncodeRangeData.h"
#include "encoder/QualityTable.h"
#include "encoder/RangeSetup.h"

namespace {

const std::array<std::string, 6> kSizes = {"1920x1080", "1280x960", "1280x720", "640x480", "640x360", "320x240"};

/** Another size than the given one. */
std::string otherSize(const std::string& size) { return size == kSizes[0] ? kSizes[1] : kSizes[0]; }

std::string otherEncoder(const std::string& encoder) { return encoder == "h264high" ? "jpeg" : "h264high"; }

std::string ranges(EncodeRangeData& range, int32_t attr) {
  return range.getQualityRange(attr) + " " + range.getFramerateRange(attr) + " " + range.getBitrateRange(attr) + " " +
         range.getIframeintervalRange(attr);
}

/** What channel 1 may do: "S"ingle, mixed "E"ncoders, mixed "R"esolutions, "A"nalog output. */
std::string rangesOf(char situation, const std::string& encoder, const std::string& size) {
  EncodeRangeData range;
  range.setAnalogOutPutOn(situation == 'A');
  EXPECT_TRUE(range.SetEncoderInfo(2, situation == 'E' ? otherEncoder(encoder) : encoder,
                                   situation == 'R' ? otherSize(size) : size,
                                   situation == 'E' || situation == 'R' ? "on" : "off"));
  EXPECT_TRUE(range.SetEncoder(encoder, "on"));
  EXPECT_TRUE(range.SetResolution(size));
  return ranges(range, 1);
}

using Column = std::array<std::string, 6>;

TEST(EncodeRange, EveryCellOfTheFourTables) {
  const std::string empty = "0k-0k 0-0 0-0 0-0";
  const struct {
    char situation;
    Column jpeg;       // quality and rate at each size; empty where nothing is offered
    std::string h264;  // the same of h264, at every size that is offered
  } kCases[] = {
      {'S',
       {"80k-320k 1-15", "80k-320k 1-30", "80k-320k 1-30", "80k-320k 1-30", "80k-320k 1-30", "80k-320k 1-30"},
       "0k-0k 1-30"},
      {'E',
       {"80k-320k 1-15", "60k-180k 1-15", "60k-180k 1-15", "15k-80k 1-15", "15k-80k 1-15", "5k-27k 1-15"},
       "0-0 1-15"},
      {'R',
       {"80k-320k 1-15", "69k-180k 1-15", "60k-180k 1-15", "15k-80k 1-15", "15k-80k 1-15", "5k-27k 1-15"},
       "0-0 1-15"},
      {'A', {"80k-320k 1-5"}, "0k-0k 1-5"},
  };
  for (const auto& test : kCases) {
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
      SCOPED_TRACE(test.situation + kSizes[i]);
      const bool isOffered = !test.jpeg[i].empty();
      EXPECT_EQ(rangesOf(test.situation, "jpeg", kSizes[i]), isOffered ? test.jpeg[i] + " 64-8000 0-0" : empty);
      for (const char* encoder : {"h264baseline", "h264high"})
        EXPECT_EQ(rangesOf(test.situation, encoder, kSizes[i]), isOffered ? test.h264 + " 64-8000 5-120" : empty);
      EXPECT_EQ(rangesOf(test.situation, "mpeg4", kSizes[i]), empty);
    }
  }
}

TEST(EncodeRange, SecondSpellingsAreTheSameSize) {
  for (const auto& [second, first] : {std::pair("quadvga", "1280x960"), {"vga", "640x480"}, {"qvga", "320x240"}}) {
    for (const char situation : {'S', 'E', 'R', 'A'})
      EXPECT_EQ(rangesOf(situation, "jpeg", second), rangesOf(situation, "jpeg", first)) << second;
  }
}

/** The state of another channel beside a channel with jpeg at 1280x960. */
void setOther(EncodeRangeData& range, int32_t attr, std::size_t state) {
  const struct {
    const char* encoder;
    const char* size;
    const char* status;
  } kStates[] = {{"h264high", "640x480", "off"},
                 {"jpeg", "quadvga", "on"},
                 {"h264high", "1280x960", "on"},
                 {"jpeg", "640x480", "on"},
                 {"h264high", "640x480", "on"}};
  ASSERT_TRUE(range.SetEncoderInfo(attr, kStates[state].encoder, kStates[state].size, kStates[state].status));
}

TEST(EncodeRange, OtherChannelsDecideWhichTableAnswers) {
  // Rows: the lower of the other two channels is off, alike, differs in encoder, in size, in both; columns: the higher.
  const std::array<std::string, 5> kTables = {"SSERR", "SSERR", "EEERR", "RRRRR", "RRRRR"};
  const std::array<std::array<int32_t, 3>, 3> kChannels = {{{1, 2, 3}, {2, 1, 3}, {3, 1, 2}}};
  for (const auto& [attr, lower, higher] : kChannels) {
    for (std::size_t row = 0; row < 5; ++row) {
      for (std::size_t column = 0; column < 5; ++column) {
        EncodeRangeData range;
        setOther(range, lower, row);
        setOther(range, higher, column);
        ASSERT_TRUE(range.SetEncoder("jpeg", "on"));
        ASSERT_TRUE(range.SetResolution("1280x960"));
        const char table = kTables[row][column];
        const char* quality = table == 'S' ? "80k-320k" : table == 'E' ? "60k-180k" : "69k-180k";
        EXPECT_EQ(range.getQualityRange(attr), quality) << attr << " " << row << " " << column;
        range.setAnalogOutPutOn(true);
        EXPECT_EQ(range.getQualityRange(attr), "0k-0k") << attr << " " << row << " " << column;
      }
    }
  }
}

TEST(EncodeRange, CandidateStaysRecorded) {
  EncodeRangeData range;
  ASSERT_TRUE(range.SetEncoder("jpeg", "on"));
  ASSERT_TRUE(range.SetResolution("1280x960"));
  EXPECT_EQ(range.getQualityRange(1), "80k-320k");
  ASSERT_TRUE(range.SetResolution("vga"));
  EXPECT_EQ(range.getQualityRange(2), "15k-80k");
}

TEST(EncodeRange, TextsThatAreNotKnown) {
  const struct {
    const char* encoder;
    const char* size;
    const char* status;
    bool expected;
  } kCases[] = {{"jpeg", "vga", "on", true},      {"mpeg4", "vga", "on", true},   {"jpeg", "vga", "off", true},
                {"off", "vga", "on", false},      {"", "vga", "on", false},       {"JPEG", "vga", "on", false},
                {"jpeg", "320x180", "on", false}, {"jpeg", "", "on", false},      {"jpeg", "none", "on", false},
                {"jpeg", "VGA", "on", false},     {"jpeg ", "vga", "off", false}, {"off", "vga", "off", false},
                {"jpeg", "320x180", "off", false}};
  for (const auto& test : kCases) {
    EncodeRangeData range;
    EXPECT_EQ(range.SetEncoderInfo(2, test.encoder, test.size, test.status), test.expected)
        << test.encoder << " " << test.size << " " << test.status;
    // Only a channel that was recorded as on mixes the sizes.
    ASSERT_TRUE(range.SetEncoder("jpeg", "on"));
    ASSERT_TRUE(range.SetResolution("1280x960"));
    const bool isRecorded = test.expected && test.status == std::string("on");
    EXPECT_EQ(range.getQualityRange(1), isRecorded ? "69k-180k" : "80k-320k") << test.encoder << " " << test.size;
  }

  EncodeRangeData range;
  EXPECT_TRUE(range.SetEncoder("mpeg4", "on"));
  EXPECT_TRUE(range.SetEncoder("nonsense", "off"));
  EXPECT_FALSE(range.SetEncoder("off", "on"));
  EXPECT_FALSE(range.SetEncoder("", "on"));
  EXPECT_TRUE(range.SetResolution("none"));
  EXPECT_FALSE(range.SetResolution("320x180"));
  EXPECT_FALSE(range.SetResolution(""));
}

TEST(EncodeRange, FramesizeList) {
  EncodeRangeData range;
  EXPECT_EQ(range.getFramesizeRange(), "");
  ASSERT_TRUE(range.SetEncoder("h264high", "on"));
  EXPECT_EQ(range.getFramesizeRange(), "320x240-640x360-640x480-1280x720-1280x960-1920x1080");
  range.setAnalogOutPutOn(true);
  EXPECT_EQ(range.getFramesizeRange(), "1920x1080");
  ASSERT_TRUE(range.SetEncoder("h264high", "off"));
  EXPECT_EQ(range.getFramesizeRange(), "");
}

struct StoredChannel {
  const char* status;
  const char* type;
  const char* framesize;
};

void store(Config& config, int32_t channel, const StoredChannel& stored) {
  ASSERT_EQ(config.setEncodeConfig(channel, encode_row::ENC_STATUS, stored.status), 0);
  ASSERT_EQ(config.setEncodeConfig(channel, encode_row::ENCTYPE_CH, stored.type), 0);
  ASSERT_EQ(config.setEncodeConfig(channel, encode_row::FRAME_SIZE, stored.framesize), 0);
}

TEST(EncodeRangeSetup, TakesTheOtherChannelsAndTheAnalogOutputFromTheStore) {
  const StoredChannel off = {"off", "jpeg", "vga"};
  const StoredChannel bad = {"off", "nonsense", "vga"};
  const StoredChannel alike = {"on", "jpeg", "1280x960"};
  const StoredChannel h264 = {"on", "h264high", "1280x960"};
  const StoredChannel vga = {"on", "jpeg", "vga"};
  const struct {
    int32_t attr;
    std::array<StoredChannel, 3> stored;
    const char* analogOutput;
    const char* quality;  // of jpeg at 1280x960; empty where the setup fails
  } kCases[] = {
      {1, {vga, off, off}, "off", "80k-320k"},   {1, {vga, off, vga}, "off", "69k-180k"},
      {1, {bad, h264, off}, "off", "60k-180k"},  {2, {alike, bad, alike}, "off", "80k-320k"},
      {2, {alike, off, vga}, "off", "69k-180k"}, {3, {off, h264, vga}, "off", "60k-180k"},
      {3, {vga, alike, h264}, "on", "0k-0k"},    {3, {off, off, off}, "colorbar", "80k-320k"},
      {1, {alike, bad, alike}, "off", ""},       {1, {alike, alike, bad}, "off", ""},
      {2, {bad, alike, alike}, "off", ""},       {3, {alike, bad, alike}, "off", ""},
  };
  Config& config = *Config::getInstance();
  for (const auto& test : kCases) {
    for (std::size_t i = 0; i < 3; ++i)
      store(config, static_cast<int32_t>(i), test.stored[i]);
    ASSERT_EQ(config.set(video_row::VIDEO_OUTPUT, test.analogOutput), 0);
    EncodeRangeData range;
    const int32_t result = encoderRangeInfoSetup(range, config, "jpeg", "1280x960", test.attr);
    EXPECT_EQ(result, *test.quality == '\0' ? -1 : 0) << &test - kCases;
    if (result == 0) {
      EXPECT_EQ(range.getQualityRange(test.attr), test.quality) << &test - kCases;
    }
  }

  for (int32_t channel = 0; channel < 3; ++channel)
    store(config, channel, off);
  EncodeRangeData range;
  EXPECT_EQ(encoderRangeInfoSetup(range, config, "off", "vga", 1), -1);
  EXPECT_EQ(encoderRangeInfoSetup(range, config, "jpeg", "320x180", 1), -1);
  EXPECT_EQ(encoderRangeInfoSetup(range, config, "mpeg4", "none", 1), 0);
}

TEST(QualityTable, LimitsByFramesize) {
  const struct {
    const char* framesize;
    int32_t low;
    int32_t high;
  } kCases[] = {{"1920x1080", 80, 320}, {"1280x960", 60, 180}, {"quadvga", 60, 180}, {"1280x720", 60, 180},
                {"640x480", 15, 80},    {"vga", 15, 80},       {"640x360", 15, 80},  {"320x240", 5, 27},
                {"qvga", 5, 27},        {"320x180", 5, 33}};
  for (const auto& [framesize, lowest, highest] : kCases) {
    const std::string low = std::to_string(lowest);
    const std::string high = std::to_string(highest);
    EXPECT_EQ(qualityWithinLimits(framesize, std::to_string(lowest - 1)), low) << framesize;
    EXPECT_EQ(qualityWithinLimits(framesize, low), low) << framesize;
    EXPECT_EQ(qualityWithinLimits(framesize, high + "k"), high + "k") << framesize;
    EXPECT_EQ(qualityWithinLimits(framesize, std::to_string(highest + 1) + "k"), high) << framesize;
    EXPECT_EQ(qualityWithinLimits(framesize, ""), low) << framesize;
    EXPECT_EQ(qualityWithinLimits(framesize, "99999999999"), high) << framesize;
  }
  for (const char* framesize : {"", "none", "1920x1080 ", "VGA"}) {
    EXPECT_EQ(qualityRow(framesize), nullptr) << framesize;
    EXPECT_EQ(qualityWithinLimits(framesize, "100"), std::nullopt) << framesize;
  }
}

}  // namespace
