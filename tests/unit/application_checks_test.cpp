#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "application/AudioClip.h"
#include "application/ParamChecker.h"
#include "devices/AudioGain.h"
#include "request/StatusCode.h"

namespace {

TEST(ParamChecker, HostsAreAddressesOfHostsOrNames) {
  const std::vector<std::string> accepted = {
      "10.1.2.3",       "1.0.0.1", "126.255.255.254", "128.0.0.1", "191.255.255.254",   "192.0.0.1", "223.255.255.254",
      "camera.example", "",        "256.1.1.1",       "1.2.3",     std::string(63, 'a')};
  const std::vector<std::string> refused = {"0.0.0.0",           "0.1.2.3",         "127.0.0.1", "127.255.255.255",
                                            "224.0.0.1",         "255.255.255.255", "1.0.0.0",   "126.255.255.255",
                                            "128.0.0.0",         "191.255.255.255", "192.0.0.0", "223.255.255.255",
                                            std::string(64, 'a')};
  for (const std::string& host : accepted)
    EXPECT_EQ(ParamChecker::checkHostName(host), 0) << host;
  for (const std::string& host : refused)
    EXPECT_LT(ParamChecker::checkHostName(host), 0) << host;
}

TEST(ParamChecker, AMailAddressHasAtMostOneAtSignAndNotInFront) {
  const std::vector<std::string> accepted = {"me@camera.example", "nobody", "a.@", "a@.", "!#$%&'*+-/=?^`-{}_|~.",
                                             std::string(96, 'a')};
  const std::vector<std::string> refused = {
      ".me@camera", "@camera", "a@b@c", "a@@", "a b", "a,b", "a\"b", "(a)", "a\n", "\xc3\xa4@b", std::string(97, 'a')};
  for (const std::string& address : accepted)
    EXPECT_EQ(ParamChecker::checkMailAddress(address), 0) << address;
  for (const std::string& address : refused)
    EXPECT_LT(ParamChecker::checkMailAddress(address), 0) << address;
}

struct RateCase {
  const char* rate;
  const char* of30;  ///< the rate on the ladder, or the status
  const char* of25;
};

TEST(ParamChecker, RatesArePutToTheLadder) {
  const RateCase cases[] = {
      {"30", "30", "457"},   {"29", "15", "457"},     {"26", "15", "457"},    {"25", "15", "25"},
      {"24", "15", "12.5"},  {"15", "15", "12.5"},    {"14", "10", "12.5"},   {"13", "10", "12.5"},
      {"12", "10", "8"},     {"10", "10", "8"},       {"9", "7.5", "8"},      {"8", "7.5", "8"},
      {"7", "6", "6"},       {"6", "6", "6"},         {"5", "5", "5"},        {"4", "3", "4"},
      {"3", "3", "3"},       {"2", "2", "2"},         {"1", "1", "1"},        {"0", "457", "457"},
      {"-1", "-2", "-2"},    {"-2", "-2", "-2"},      {"-3", "-3", "-3"},     {"-4", "-5", "-4"},
      {"-5", "-5", "-5"},    {"-6", "-10", "-10"},    {"-10", "-10", "-10"},  {"-11", "-15", "-15"},
      {"-15", "-15", "-15"}, {"-16", "-20", "-20"},   {"-20", "-20", "-20"},  {"-21", "-30", "-30"},
      {"-30", "-30", "-30"}, {"-31", "457", "457"},   {"31", "457", "457"},   {"4294967297", "457", "457"},
      {"7.5", "7.5", "451"}, {"12.5", "451", "12.5"}, {"7.50", "451", "451"}, {"x", "451", "451"},
      {"5x", "451", "451"},  {"+5", "451", "451"},    {" 5", "451", "451"},   {"007", "6", "6"}};
  const auto result = [](RateLadder ladder, const char* rate) {
    std::string text;
    const int32_t refused = ParamChecker::normaliseFrameRate(ladder, rate, &text);
    return refused == 0 ? text : std::to_string(-refused);
  };
  for (const RateCase& c : cases) {
    EXPECT_EQ(result(RateLadder::Frames30, c.rate), c.of30) << c.rate;
    EXPECT_EQ(result(RateLadder::Frames25, c.rate), c.of25) << c.rate;
  }
}

TEST(AudioGain, NumbersAreSnappedToStepsAndStepsHaveRegisters) {
  const struct {
    int32_t gain, step, value;
  } cases[] = {{INT32_MIN, 0, 8}, {-1, 0, 8},  {9, 0, 8},   {10, 20, 0}, {22, 20, 0},
               {23, 26, 1},       {28, 26, 1}, {29, 32, 2}, {38, 32, 2}, {INT32_MAX, 32, 2}};
  for (const auto& c : cases) {
    EXPECT_EQ(gainStep(c.gain), c.step) << c.gain;
    EXPECT_EQ(gainRegister(c.step), c.value) << c.gain;
    EXPECT_EQ(gainStep(c.step), c.step) << "a stored step stays";
  }
  for (const int32_t step : {kAutomaticGain, 1, 39})
    EXPECT_EQ(gainRegister(step), 12) << step;
  EXPECT_EQ(gainRegister(38), 3);
}

TEST(AudioClip, TheFractionOfATimeIsNotPadded) {
  for (const auto& [microseconds, text] : {std::pair(int64_t{0}, "0.0"),
                                           {125, "0.125"},
                                           {1'000'000, "1.0"},
                                           {1'500'000, "1.500000"},
                                           {1'050'000, "1.50000"},
                                           {268'435'455'875, "268435.455875"}})
    EXPECT_EQ(playTimeText(microseconds), text);
}

}  // namespace
