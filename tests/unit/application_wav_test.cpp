#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "application/ParamChecker.h"

namespace {

using std::string_literals::operator""s;

std::string little(uint32_t number, size_t bytes) {
  std::string text;
  for (size_t i = 0; i < bytes; ++i)
    text += static_cast<char>(number >> (8 * i) & 0xff);
  return text;
}

std::string chunk(const std::string& tag, const std::string& content) {
  return tag + little(static_cast<uint32_t>(content.size()), 4) + content;
}

const std::string kRiff = "RIFF\0\0\0\0WAVE"s;

/** The numbers of a fmt chunk, as an accepted clip has them. */
struct Form {
  uint32_t format = 1;
  uint32_t channels = 1;
  uint32_t rate = 8000;
  uint32_t dataRate = 16000;
  uint32_t block = 2;
  uint32_t bits = 16;
};

std::string fmt(const Form& form, const std::string& more = {}) {
  return chunk("fmt ", little(form.format, 2) + little(form.channels, 2) + little(form.rate, 4) +
                           little(form.dataRate, 4) + little(form.block, 2) + little(form.bits, 2) + more);
}

std::string data(uint32_t size) { return "data" + little(size, 4); }

constexpr int64_t kRefused = -1;

/** The data size that is found, or -1. */
int64_t sizeIn(const std::string& file) {
  // A copy of its own size, so that the sanitizers see every byte that is read behind it.
  const std::vector<uint8_t> bytes(file.begin(), file.end());
  uint32_t size = 0;
  return ParamChecker::checkFileHeader(bytes, &size) == 0 ? int64_t{size} : kRefused;
}

TEST(WavHeader, ChunksAreWalkedWithTheSizesThatTheyState) {
  const std::string good = fmt({});
  struct Case {
    const char* name;
    std::string file;
    int64_t size;
  };
  const Case cases[] = {
      {"plain", kRiff + good + data(16000), 16000},
      {"no samples", kRiff + good + data(0), 0},
      {"largest size", kRiff + good + data(0xffffffff), 0xffffffff},
      {"LIST in front", kRiff + chunk("LIST", "INFOICRD") + good + data(7), 7},
      {"odd chunk without padding", kRiff + chunk("LIST", "odd") + good + data(7), 7},
      {"odd chunk with padding", kRiff + chunk("LIST", "odd") + "\0"s + good + data(7), kRefused},
      {"fmt with more behind it", kRiff + fmt({}, "\0\0"s) + data(7), 7},
      {"fact between", kRiff + good + chunk("fact", little(9, 4)) + data(7), 7},
      {"fmt behind data", kRiff + data(4) + "abcd" + good, kRefused},
      {"two fmt: the first counts", kRiff + good + fmt({.rate = 44100}) + data(7), 7},
      {"empty chunk", kRiff + chunk("LIST", "") + good + data(7), 7},
      {"size that leads back to itself", kRiff + "LIST" + little(0xfffffff8, 4) + good + data(7), kRefused},
      {"size that leads back to the start", kRiff + "LIST" + little(0xffffffec, 4) + good + data(7), kRefused},
      {"size up to the end", kRiff + "LIST" + little(32, 4) + good + data(7), kRefused},
      {"largest chunk", kRiff + good + "fact" + little(0xffffffff, 4) + data(7), kRefused},
      {"fmt that ends behind the head", kRiff + "fmt " + little(0xfffffff8, 4) + good.substr(8) + data(7), kRefused},
      {"RIFX", "RIFX" + kRiff.substr(4) + good + data(7), kRefused},
      {"AVI", kRiff.substr(0, 8) + "AVI " + good + data(7), kRefused},
      {"nothing", "", kRefused},
      {"RIFF alone", "RIFF", kRefused},
  };
  for (const Case& c : cases)
    EXPECT_EQ(sizeIn(c.file), c.size) << c.name;
}

TEST(WavHeader, OnlyOneFormIsAccepted) {
  const Form wrong[] = {{.format = 3},           {.format = 0x101},   {.channels = 2},  {.channels = 0x201},
                        {.rate = 44100},         {.rate = 0x1001f40}, {.rate = 0},      {.dataRate = 8000},
                        {.dataRate = 0x1003e80}, {.block = 1},        {.block = 0x102}, {.bits = 8},
                        {.bits = 0x110}};
  for (const Form& form : wrong)
    EXPECT_EQ(sizeIn(kRiff + fmt(form) + data(7)), kRefused) << testing::PrintToString(form);
}

TEST(WavHeader, AHeaderThatIsCutIsRefused) {
  const std::string whole = kRiff + chunk("LIST", "abc") + fmt({}) + chunk("fact", little(9, 4)) + data(7);
  for (size_t length = 0; length < whole.size(); ++length)
    EXPECT_EQ(sizeIn(whole.substr(0, length)), kRefused) << length;
  EXPECT_EQ(sizeIn(whole), 7);
}

}  // namespace
