#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "service/CTmxdUtility.h"
#include "service/Numbers.h"

namespace {

using std::string_literals::operator""s;

TEST(Numbers, ANumberIsTheWholeTextAndSaturatesAt32Bits) {
  for (const auto& [text, number] : {std::pair("0", 0), {"-0", 0}, {"007", 7}, {"-12", -12}})
    EXPECT_EQ(parseNumber(text), number) << text;
  for (const char* text : {"2147483647", "2147483648", "4294967297", "99999999999999999999999"})
    EXPECT_EQ(parseNumber(text), std::numeric_limits<int32_t>::max()) << text;
  for (const char* text : {"-2147483648", "-2147483649", "-99999999999999999999999"})
    EXPECT_EQ(parseNumber(text), std::numeric_limits<int32_t>::min()) << text;
  for (const std::string& text :
       std::vector<std::string>{"",    " 1", "\t1", "\v1", "\n1",  "+1",  "1 ",  "- 1", "--1",  "+-1",
                                "-+1", "-",  "+",   " ",   "0x10", "1e3", "1.0", "x",   "1\0"s, "\0"s})
    EXPECT_EQ(parseNumber(text), std::nullopt) << "'" << text << "'";
}

TEST(Numbers, ALongNumberSaturatesAt64Bits) {
  EXPECT_EQ(parseLongNumber("4294967297"), 4294967297);
  EXPECT_EQ(parseLongNumber("9223372036854775808"), std::numeric_limits<int64_t>::max());
  EXPECT_EQ(parseLongNumber("-9223372036854775809"), std::numeric_limits<int64_t>::min());
  EXPECT_EQ(parseLongNumber("+1"), std::nullopt);
}

TEST(Numbers, AFloatIsTheWholeText) {
  const struct {
    const char* text;
    float number;
  } cases[] = {{"2.5", 2.5F}, {"-0.5", -0.5F},  {".5", 0.5F},
               {"5.", 5.0F},  {"1e3", 1000.0F}, {"1e99", std::numeric_limits<float>::infinity()}};
  for (const auto& c : cases)
    EXPECT_EQ(parseFloat(c.text), c.number) << c.text;
  // A "nan" would pass every test of a range.
  for (const char* text : {"", " 1", "+1", "1 ", "1e", "1,5", "-", ".", "1.2.3", "abc", "nan", "-nan", "NAN(1)"})
    EXPECT_EQ(parseFloat(text), std::nullopt) << "'" << text << "'";
}

TEST(Numbers, ADoubleIsPrintedAsAStreamDoes) {
  const struct {
    double number;
    const char* text;
  } cases[] = {{0, "0"},           {1.0, "1"},
               {0.1, "0.1"},       {1.0 / 3, "0.333333"},
               {123456, "123456"}, {1234567, "1.23457e+06"},
               {0.00001, "1e-05"}, {-2.50, "-2.5"}};
  for (const auto& c : cases)
    EXPECT_EQ(doubleToString(c.number), c.text);
}

struct TextCase {
  std::string text;
  std::string result;
};

TEST(Escapes, EncodeUrlAllKeepsOnlyLettersAndDigits) {
  const TextCase cases[] = {{"", ""},
                            {"aZ09", "aZ09"},
                            {"a b", "a%20b"},
                            {"\n", "%a"},  // not padded
                            {"~_-.", "%7e%5f%2d%2e"},
                            {"\xc3\xa9", "%c3%a9"},
                            {std::string("\0", 1), "%0"}};
  for (const TextCase& c : cases)
    EXPECT_EQ(CTmxdUtility::encodeUrlAll(c.text), c.result);
}

TEST(Escapes, EncodeValueHidesWhatAResponseIsCutAt) {
  const TextCase cases[] = {{"", ""},
                            {"a&b", "a%26b"},
                            {"\"%\"", "%22%25%22"},
                            {std::string("a\0b", 3), "a%00b"},
                            {"a+b =c\xe9", "a+b =c\xe9"}};
  for (const TextCase& c : cases)
    EXPECT_EQ(CTmxdUtility::encodeValue(c.text), c.result);
}

TEST(Escapes, DecodeValue) {
  const TextCase cases[] = {{"", ""},         {"abc", "abc"},   {"%41%4a%4A", "AJJ"}, {"%26x", "&x"},
                            {"a%zzb", "a?b"}, {"%4", "#"},      {"%", "#"},           {"a%4", "a#"},
                            {"%%4", "?"},     {"%2526", "%26"}, {"%00", ""},          {"ab%00cd", "ab"},
                            {"%e9", "\xe9"},  {"a+b", "a+b"},   {"%%41", "?1"},       {"x%", "x#"}};
  for (const TextCase& c : cases)
    EXPECT_EQ(CTmxdUtility::decodeValue(c.text), c.result) << c.text;
  EXPECT_EQ(CTmxdUtility::decodeValue("a+b%2b", true), "a b+");
}

TEST(Escapes, AValueComesBackAsItWas) {
  std::string text;
  for (int c = 1; c < 256; ++c)
    text += static_cast<char>(c);
  EXPECT_EQ(CTmxdUtility::decodeValue(CTmxdUtility::encodeValue(text)), text);
}

TEST(Escapes, FindCharInStr) {
  const std::string forbidden = "\\/:*?\"<>|";
  for (const auto& [text, found] : {std::pair("abc", 0), {"", 0}, {"ab|", -1}, {"\\ab", -1}})
    EXPECT_EQ(CTmxdUtility::findCharInStr(text, forbidden), found) << text;
  EXPECT_EQ(CTmxdUtility::findCharInStr("abc", ""), 0);
}

TEST(KeyValue, FirstLineWithTheKeyThatIsNoComment) {
  const std::vector<std::string> lines = {"# server 9.9.9.9", "driftfile /var/lib/ntp", "x # server 8.8.8.8",
                                          "server 10.0.0.1 # server of the house", "server 10.0.0.2"};
  EXPECT_EQ(CTmxdUtility::keyValue(lines, "server"), "10.0.0.1 # server of the house");
  EXPECT_EQ(CTmxdUtility::keyValue({"nameserver\t1.2.3.4\r"}, "nameserver"), "1.2.3.4");
  EXPECT_EQ(CTmxdUtility::keyValue({"nameserver", "nameserver 1.2.3.4"}, "nameserver"), "");
  EXPECT_EQ(CTmxdUtility::keyValue({"search lan"}, "nameserver"), "");
  EXPECT_EQ(CTmxdUtility::keyValue({}, "nameserver"), "");
}

}  // namespace
