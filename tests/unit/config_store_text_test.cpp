#include "config/StoreText.h"

#include <gtest/gtest.h>

#include <random>
#include <span>
#include <string>
#include <vector>

#include "config/Config.h"
#include "config/VersionStep.h"

namespace {

constexpr size_t kLongestRow = longestRow(Family::Network);

std::vector<ConfigTable> smallTables() {
  return {{{0, "A", "a"}, {1, "BB", "b"}}, {{0, "C", "c"}, {1, "A", "second"}}};
}

/** The values of all rows, a blank behind each. */
std::string valuesOf(std::span<const ConfigTable> tables) {
  std::string values;
  for (const ConfigTable& table : tables) {
    for (const ConfigItem& item : table)
      values += item.value + " ";
  }
  return values;
}

const std::string kLongestValue(kLongestRow - std::string_view("A=\n").size(), 'x');
const std::string kLongest = "X=" + std::string(kLongestLine - 2, 'x');

TEST(ParseStore, TakesWhatStandsInFrontOfTheFirstFault) {
  const std::string unchanged = "a b c second ";
  const StoreEnd whole = StoreEnd::EndOfFile;
  const struct {
    std::string bytes;
    StoreEnd end;
    int32_t matched;
    bool hasStrayLine;
    std::string values;
  } cases[] = {
      {"", whole, 0, false, unchanged},
      {"C=3\nA=1\n", whole, 2, false, "1 b 3 second "},
      {"A=1\nBB=2", whole, 1, false, "1 b c second "},
      {"A=1\nBB", whole, 1, false, "1 b c second "},
      {"A=1=2==\n", whole, 1, false, "1=2== b c second "},
      {"A=\n", whole, 1, false, " b c second "},
      {"A=1\nA=2\n", whole, 2, false, "2 b c second "},
      {"A= 1 \n", whole, 1, false, " 1  b c second "},
      {"A=1\r\n", whole, 1, false, "1\r b c second "},
      {{"A=1\0002\n", 6}, whole, 1, false, {"1\0002 b c second ", 15}},
      {"a=1\nB=2\nBBB=3\n A=4\n", whole, 0, true, unchanged},
      {"=1\n", whole, 0, true, unchanged},
      {"A=1\n\nC=3\n", StoreEnd::BadFormat, 1, false, "1 b c second "},
      {"X=0\nA=1\nBB\n", StoreEnd::BadFormat, 1, true, "1 b c second "},
      {"A=" + kLongestValue + "\n", whole, 1, false, kLongestValue + " b c second "},
      {"A=" + kLongestValue + "x\nC=3\n", whole, 1, true, "a b 3 second "},
      {kLongest + "\nC=3\n", whole, 1, true, "a b 3 second "},
      {kLongest, whole, 0, false, unchanged},
      {"C=3\n" + kLongest + "x\nBB=2\n", StoreEnd::StreamFailed, 1, false, "a b 3 second "},
      {kLongest + "x", StoreEnd::StreamFailed, 0, false, unchanged},
  };
  for (const auto& c : cases) {
    std::vector<ConfigTable> tables = smallTables();
    const StoreParse parse = parseStore(c.bytes, tables, kLongestRow);
    EXPECT_EQ(parse.end, c.end) << c.bytes;
    EXPECT_EQ(parse.matched, c.matched) << c.bytes;
    EXPECT_EQ(parse.hasStrayLine, c.hasStrayLine) << c.bytes;
    EXPECT_EQ(valuesOf(tables), c.values) << c.bytes;
  }
}

TEST(ComposeStore, WritesTheTablesInTheirOrder) {
  EXPECT_EQ(composeStore(smallTables()), "A=a\nBB=b\nC=c\nA=second\n");
}

class Store : public Config {};

/** A short text, or one about as long as a line may be, seldom with a character that no line can hold. */
std::string randomText(std::mt19937& random) {
  const std::string_view characters("=ab %&\"\\\t\x01\x7f\x80\xff\n\r\0", 17);
  const size_t holdable = characters.size() - (random() % 8 == 0 ? 0 : 3);
  std::string text(random() % 2 == 0 ? random() % 8 : 500 + random() % 60, '\0');
  for (char& character : text)
    character = characters[random() % holdable];
  return text;
}

/** In every file of the store. */
TEST(ComposeStore, WhatTheSettersTakeReadsBack) {
  std::mt19937 random(1);  // the same texts each time
  int refused = 0;
  for (int number = 0; number < static_cast<int>(Family::kCount); ++number) {
    const auto family = static_cast<Family>(number);
    Store store;
    std::vector<ConfigTable> tables = makeTables(family);
    for (size_t index = 0; index < tables.size(); ++index) {
      for (ConfigItem& item : tables[index]) {
        const std::string text = randomText(random);
        const bool isTaken = store.set({family, item.id}, text, static_cast<int32_t>(index)) == Config::kDone;
        if (isTaken) item.value = text;
        refused += isTaken ? 0 : 1;
      }
    }
    const size_t perFile = family == Family::Patrol ? tables.size() : 1;
    for (size_t first = 0; first < tables.size(); first += perFile) {
      const std::span<ConfigTable> written = std::span(tables).subspan(first, perFile);
      std::vector<ConfigTable> all = makeTables(family);
      const std::span<ConfigTable> read = std::span(all).subspan(first, perFile);
      const StoreParse parse = parseStore(composeStore(written), read, longestRow(family));
      EXPECT_TRUE(parse.end == StoreEnd::EndOfFile && !parse.hasStrayLine) << familyPath(family, 0);
      EXPECT_EQ(static_cast<size_t>(parse.matched), countRows(read)) << familyPath(family, 0);
      EXPECT_EQ(valuesOf(read), valuesOf(written));
    }
  }
  EXPECT_GT(refused, 100);
}

TEST(VersionStep, ExposureReferenceGetsItsNewScale) {
  for (int32_t step = 0; step <= 5; ++step) {
    EXPECT_EQ(convertExposureReference(std::to_string(step)), step * 16);
    EXPECT_EQ(convertExposureReference(std::to_string(-step)), step * -25);
  }
  for (const char* beyond : {"6", "99999999999999999999"}) {
    EXPECT_EQ(convertExposureReference(beyond), 80);
    EXPECT_EQ(convertExposureReference(std::string("-") + beyond), -125);
  }
  EXPECT_EQ(convertExposureReference("3.9"), 48);
  EXPECT_EQ(convertExposureReference(""), 0);
  EXPECT_EQ(convertExposureReference("abc"), 0);
}

}  // namespace
