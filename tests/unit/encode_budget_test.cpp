#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "config/Config.h"
#include "encode/budget/BitrateBudget.h"
#include "encoder/StoredNumber.h"

namespace {

constexpr int32_t kIntMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kIntMin = std::numeric_limits<int32_t>::min();

TEST(StoredNumber, TheNumberInFrontCounts) {
  const struct {
    const char* text;
    int32_t integer;
    int32_t cut;  // of the same text as a float
  } kCases[] = {{"", 0, 0},
                {"k", 0, 0},
                {"320", 320, 320},
                {"320k", 320, 320},
                {"7.5", 7, 7},
                {"29.97", 29, 29},
                {"-5", -5, -5},
                {"+5", 0, 0},
                {" 5", 0, 0},
                {"0x10", 0, 0},
                {"nan", 0, 0},
                {"1e3", 1, 1000},
                {"inf", 0, kIntMax},
                {"-inf", 0, kIntMin},
                {"1e30", 1, kIntMax},
                {"2147483647", kIntMax, kIntMax},
                {"2147483648", kIntMax, kIntMax},
                {"-99999999999", kIntMin, kIntMin}};
  for (const auto& test : kCases) {
    EXPECT_EQ(storedInteger(test.text), test.integer) << test.text;
    EXPECT_EQ(cutToWhole(storedFloat(test.text)), test.cut) << test.text;
    EXPECT_EQ(cutToWhole(storedDouble(test.text)), test.cut) << test.text;
  }
  EXPECT_EQ(storedFloat("15.0000001"), 15.0F);
  EXPECT_GT(storedDouble("15.0000001"), 15.0);
}

TEST(BitrateBudget, RateThatManySessionsShare) {
  const struct {
    int64_t sessionKilobits;
    int64_t baseBits;
    int64_t expected;
  } kCases[] = {{0, 4000000, 4000000},
                {8000, 4000000, 4000000},
                {8001, 4000000, 8000000},
                {11999, 4000000, 8000000},
                {12000, 4000000, 12000000},
                {4000, 2000999, 2000000},
                {4001, 2000999, 4000000},
                {5, 999, 0},
                {5, 0, 0},
                {0, 0, 0},
                {kIntMax, 1000, int64_t{kIntMax} * 1000}};
  for (const auto& test : kCases) {
    EXPECT_EQ(bitrate_budget::encoderReplaceforOverRate(test.sessionKilobits, test.baseBits), test.expected)
        << test.sessionKilobits << " " << test.baseBits;
  }
}

/** Channel 1 with the type in question, beside two channels that would give another result. */
const Config& storeWith(const char* type, const char* bitrate, const char* framerate, const char* quality) {
  Config& config = *CUserConfig::getInstance();
  for (int32_t channel = 0; channel < 3; ++channel) {
    config.setEncodeConfig(channel, encode_row::ENCTYPE_CH, channel == 1 ? type : "h264high");
    config.setEncodeConfig(channel, encode_row::BITRATE, channel == 1 ? bitrate : "64000");
    config.setEncodeConfig(channel, encode_row::FRAME_RATE, channel == 1 ? framerate : "1");
    config.setEncodeConfig(channel, encode_row::QUALITY, channel == 1 ? quality : "5");
  }
  return config;
}

/** Sessions as "channel:kilobits:type", separated by blanks. */
std::vector<SessionSlot> sessionsOf(const std::string& text) {
  std::vector<SessionSlot> sessions;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const size_t first = word.find(':');
    const size_t second = word.find(':', first + 1);
    sessions.push_back({word.substr(0, first), word.substr(first + 1, second - first - 1), word.substr(second + 1)});
  }
  return sessions;
}

TEST(BitrateBudget, NewBitRate) {
  const struct {
    const char* what;
    const char* type;
    const char* bitrate;
    const char* sessions;
    int32_t newBits;
    int32_t expected;
  } kCases[] = {
      {"mpeg4 at the limit", "mpeg4", "4000000", "1:4000:mpeg4 2:12000:jpeg", 8000000, 0},
      {"mpeg4 above", "mpeg4", "4000000", "1:4000:mpeg4 2:12001:jpeg", 8000000, -1},
      {"h264high at", "h264high", "4000000", "1:4000:h264high 0:12000:mpeg4", 8000000, 0},
      {"h264high above", "h264high", "4000000", "1:4000:h264high 0:12001:mpeg4", 8000000, -1},
      {"both h264 are one sum", "h264baseline", "4000000", "1:2000:h264high 1:2000:h264baseline 1:12000:jpeg", 8000000,
       0},
      {"both h264 above", "h264baseline", "4000000", "1:2000:h264high 1:2000:h264baseline 1:12001:jpeg", 8000000, -1},
      {"jpeg rescales nothing", "jpeg", "4000000", "1:20000:jpeg", 64000, 0},
      {"jpeg fails by what there is", "jpeg", "4000000", "1:20001:jpeg", 64000, -1},
      {"another channel's sessions stay", "mpeg4", "4000000", "2:20001:mpeg4", 64000, -1},
      {"another encoder's sessions stay", "mpeg4", "4000000", "1:20001:h264high", 64000, -1},
      {"lower rate makes room", "mpeg4", "4000000", "1:8000:mpeg4 0:19872:jpeg", 64000, 0},
      {"up to twice the base is one session", "mpeg4", "4000000", "1:8000:mpeg4 0:19873:jpeg", 64000, -1},
      {"above twice the base it is several", "mpeg4", "4000000", "1:8001:mpeg4 0:16000:jpeg", 4000000,
       0},  // 8001 * 4000 / 8000 = 4000.5
      {"cut after every addition", "h264high", "4000000", "0:0.9:mpeg4 0:0.9:h264high 0:0.9:jpeg 2:20000.9:jpeg",
       4000000, 0},
      {"sums of one channel and encoder are not cut", "h264high", "4000000", "0:0.5:jpeg 0:0.5:jpeg 2:20000:jpeg",
       4000000, -1},
      {"base below one kilobit keeps the sessions", "mpeg4", "999", "1:20000:mpeg4", 8000000, 0},
      {"no number as base keeps the sessions", "mpeg4", "", "1:20001:mpeg4", 64000, -1},
      {"unknown encoders and channels", "mpeg4", "4000000",
       "1:20001:mjpeg 3:20001:jpeg -1:20001:jpeg 1:20001:", 4000000, 0},
      {"absurd rates", "mpeg4", "1000", "1:99999999999:mpeg4 1:1e38:jpeg", kIntMax, -1},
      {"no sessions", "mpeg4", "4000000", "", 8000000, 0},
  };
  for (const auto& test : kCases) {
    const Config& config = storeWith(test.type, test.bitrate, "10", "100");
    EXPECT_EQ(bitrate_budget::checkForStream(sessionsOf(test.sessions), config, test.newBits, 1), test.expected)
        << test.what;
  }
}

TEST(BitrateBudget, NewPictureSize) {
  const struct {
    const char* what;
    const char* framerate;
    const char* quality;
    const char* sessions;
    int32_t newQuality;
    int32_t expected;
  } kCases[] = {
      // 10 pictures of 100 kilobytes are 8000 kilobits.
      {"at the limit", "10", "100", "1:8000:jpeg", 250, 0},
      {"above", "10", "100", "1:8000:jpeg", 251, -1},
      {"at the limit with others", "10", "100", "1:8000:jpeg 0:12000:h264high", 100, 0},
      {"above with others", "10", "100", "1:8000:jpeg 2:12001:h264baseline", 100, -1},
      {"above with mpeg4", "10", "100", "1:8000:jpeg 1:12001:mpeg4", 100, -1},
      {"stored texts by their leading number", "7.5", "100k", "1:5600:jpeg 0:14400:mpeg4", 100, 0},
      {"7.5 pictures count as 7", "7.5", "100k", "1:5600:jpeg 0:8801:mpeg4", 200, -1},
      {"whole numbers only", "10", "100", "1:8001:jpeg 0:16000:mpeg4", 50, 0},  // 4000.5
      {"rates are cut", "10", "100", "1:8000.9:jpeg 0:12000.9:mpeg4", 100, 0},
      {"up to twice the base is one session", "10", "100", "1:16000:jpeg 0:4001:jpeg", 100, -1},
      {"above twice the base it is several", "10", "100", "1:16001:jpeg 0:12000:jpeg", 100,
       0},  // 8000 * 16001 / 16000 = 8000.5
      {"no session of the channel", "10", "100", "0:20000:jpeg", 320, 0},
      {"no session, yet above", "10", "100", "0:20001:jpeg", 5, -1},
      {"no rate keeps the sessions", "0", "100", "1:20000:jpeg", 320, 0},
      {"no size keeps the sessions", "10", "", "1:20001:jpeg", 5, -1},
      {"largest pictures, halved", "30", "320", "1:40000:jpeg", 160, 0},
      {"products beyond 32 bits", "30", "320", "1:60000:jpeg", 160, -1},
      {"largest pictures, made small", "30", "320", "1:153600:jpeg", 5, 0},
      {"absurd size", "30", "100", "1:8000:jpeg", kIntMax, -1},
      {"absurd everything", "99999999999", "1", "1:99999999999:jpeg 1:1e9:jpeg", kIntMax, -1},
      {"unknown encoders and channels", "10", "100", "1:20001:off 7:20001:jpeg", 100, 0},
  };
  for (const auto& test : kCases) {
    const Config& config = storeWith("jpeg", "4000000", test.framerate, test.quality);
    EXPECT_EQ(bitrate_budget::checkForJpeg(sessionsOf(test.sessions), config, test.newQuality, 1), test.expected)
        << test.what;
  }
}

}  // namespace
