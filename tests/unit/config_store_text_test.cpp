#include "config/StoreText.h"

#include <gtest/gtest.h>

#include <algorithm>
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

std::vector<std::string> valuesOf(const std::vector<ConfigTable>& tables) {
  std::vector<std::string> values;
  for (const ConfigTable& table : tables) {
    for (const ConfigItem& item : table)
      values.push_back(item.value);
  }
  return values;
}

struct ParseCase {
  const char* name;
  std::string bytes;
  StoreEnd end;
  int32_t matched;
  bool hasStrayLine;
  std::vector<std::string> values;
};

class ParseStore : public testing::TestWithParam<ParseCase> {};

TEST_P(ParseStore, TakesWhatStandsInFrontOfTheFirstFault) {
  const ParseCase& expected = GetParam();
  std::vector<ConfigTable> tables = smallTables();
  const StoreParse parse = parseStore(expected.bytes, tables, kLongestRow);
  EXPECT_EQ(parse.end, expected.end);
  EXPECT_EQ(parse.matched, expected.matched);
  EXPECT_EQ(parse.hasStrayLine, expected.hasStrayLine);
  EXPECT_EQ(valuesOf(tables), expected.values);
}

const std::vector<std::string> kUnchanged = {"a", "b", "c", "second"};
const std::string kLongestValue(kLongestRow - std::string_view("A=\n").size(), 'x');
const std::string kLongest = "X=" + std::string(kLongestLine - 2, 'x');

INSTANTIATE_TEST_SUITE_P(
    Files, ParseStore,
    testing::Values(
        ParseCase{"Empty", "", StoreEnd::EndOfFile, 0, false, kUnchanged},
        ParseCase{"AnyOrder", "C=3\nA=1\n", StoreEnd::EndOfFile, 2, false, {"1", "b", "3", "second"}},
        ParseCase{"CutLastLineIsDropped", "A=1\nBB=2", StoreEnd::EndOfFile, 1, false, {"1", "b", "c", "second"}},
        ParseCase{"ValueHoldsEquals", "A=1=2==\n", StoreEnd::EndOfFile, 1, false, {"1=2==", "b", "c", "second"}},
        ParseCase{"EmptyValue", "A=\n", StoreEnd::EndOfFile, 1, false, {"", "b", "c", "second"}},
        ParseCase{"LastOfTwoWins", "A=1\nA=2\n", StoreEnd::EndOfFile, 2, false, {"2", "b", "c", "second"}},
        ParseCase{"BlanksBelongToTheValue", "A= 1 \n", StoreEnd::EndOfFile, 1, false, {" 1 ", "b", "c", "second"}},
        ParseCase{
            "CarriageReturnBelongsToTheValue", "A=1\r\n", StoreEnd::EndOfFile, 1, false, {"1\r", "b", "c", "second"}},
        ParseCase{"NulIsACharacter",
                  std::string("A=1\0002\n", 6),
                  StoreEnd::EndOfFile,
                  1,
                  false,
                  {std::string("1\0002", 3), "b", "c", "second"}},
        ParseCase{"KeysAreExact", "a=1\nB=2\nBBB=3\n A=4\n", StoreEnd::EndOfFile, 0, true, kUnchanged},
        ParseCase{"EmptyKeyIsUnknown", "=1\n", StoreEnd::EndOfFile, 0, true, kUnchanged},
        ParseCase{"EmptyLine", "A=1\n\nC=3\n", StoreEnd::BadFormat, 1, false, {"1", "b", "c", "second"}},
        ParseCase{"LineWithoutEquals", "X=0\nA=1\nBB\n", StoreEnd::BadFormat, 1, true, {"1", "b", "c", "second"}},
        ParseCase{"CutLineWithoutEquals", "A=1\nBB", StoreEnd::EndOfFile, 1, false, {"1", "b", "c", "second"}},
        ParseCase{"LongestRow",
                  "A=" + kLongestValue + "\n",
                  StoreEnd::EndOfFile,
                  1,
                  false,
                  {kLongestValue, "b", "c", "second"}},
        ParseCase{
            "RowTooLong", "A=" + kLongestValue + "x\nC=3\n", StoreEnd::EndOfFile, 1, true, {"a", "b", "3", "second"}},
        ParseCase{"LongestLine", kLongest + "\nC=3\n", StoreEnd::EndOfFile, 1, true, {"a", "b", "3", "second"}},
        ParseCase{"LongestLineCut", kLongest, StoreEnd::EndOfFile, 0, false, kUnchanged},
        ParseCase{"LineTooLong",
                  "C=3\n" + kLongest + "x\nBB=2\n",
                  StoreEnd::StreamFailed,
                  1,
                  false,
                  {"a", "b", "3", "second"}},
        ParseCase{"LastLineTooLong", kLongest + "x", StoreEnd::StreamFailed, 0, false, kUnchanged}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ComposeStore, WritesTheTablesInTheirOrder) {
  EXPECT_EQ(composeStore(smallTables()), "A=a\nBB=b\nC=c\nA=second\n");
}

/** What a power cut leaves of a file reads as the rows in front of the cut, and never fails. */
TEST(ComposeStore, EveryPrefixReadsBack) {
  std::vector<ConfigTable> written = makeTables(Family::Network);
  int32_t number = 0;
  for (ConfigItem& item : written[0])
    item.value = "value=" + std::to_string(number++);
  const std::string whole = composeStore(written);
  const std::vector<ConfigTable> defaults = makeTables(Family::Network);
  for (size_t size = 0; size <= whole.size(); ++size) {
    const std::string cut = whole.substr(0, size);
    std::vector<ConfigTable> tables = defaults;
    const StoreParse parse = parseStore(cut, tables, kLongestRow);
    ASSERT_EQ(parse.end, StoreEnd::EndOfFile);
    ASSERT_EQ(parse.matched, std::count(cut.begin(), cut.end(), '\n'));
    for (size_t row = 0; row < tables[0].size(); ++row) {
      const bool isRead = row < static_cast<size_t>(parse.matched);
      ASSERT_EQ(tables[0][row].value, (isRead ? written : defaults)[0][row].value);
    }
  }
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
      EXPECT_EQ(valuesOf({read.begin(), read.end()}), valuesOf({written.begin(), written.end()}));
    }
  }
  EXPECT_GT(refused, 100);
}

TEST(VersionStep, ExposureReferenceGetsItsNewScale) {
  struct Case {
    const char* text;
    int32_t value;
  };
  constexpr Case kCases[] = {
      {"-5", -125},
      {"-4", -100},
      {"-3", -75},
      {"-2", -50},
      {"-1", -25},
      {"0", 0},
      {"1", 16},
      {"2", 32},
      {"3", 48},
      {"4", 64},
      {"5", 80},
      {"-6", -125},
      {"6", 80},
      {"99999999999999999999", 80},
      {"-99999999999999999999", -125},
      {"", 0},
      {"abc", 0},
      {"3.9", 48},
  };
  for (const Case& item : kCases)
    EXPECT_EQ(convertExposureReference(item.text), item.value) << item.text;
}

}  // namespace
