#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "system/DateTime.h"
#include "system/TimeZones.h"

namespace {

TEST(DateTime, TextsAndTheirStatus) {
  const struct {
    const char* text;
    int32_t result;
  } cases[] = {
      {"20240229235959", 200},   {"20230229000000", -457}, {"21000229000000", 200},  // every fourth year
      {"20240230000000", -457},  {"20240131000000", 200},  {"20240431000000", -457}, {"20240430000000", 200},
      {"20240001000000", -457},  {"20241301000000", -457}, {"20240100000000", -457}, {"20241232000000", -457},
      {"20240101240000", -457},  {"20240101236000", -457}, {"20240101235960", -457}, {"2024022923595", -457},
      {"202402292359590", -457}, {"2024022923595x", -451}, {"-0240229235959", -451}, {" 0240229235959", -451},
      {"+0240229235959", -451},  {"20249931x00000", -451},
  };
  for (const auto& c : cases) {
    DateTime time{};
    const int32_t parsed = DateTime::parse(c.text, time);
    EXPECT_EQ(parsed < 0 ? parsed : time.check(), c.result) << c.text;
  }
}

TEST(DateTime, TheDspsClockIsUtc) {
  const struct {
    const char* zone;
    const char* text;
    dsp::Frame frame;
  } cases[] = {
      {"UTC0", "20260203040506", {16, 6, 5, 4, 0, 3, 2, 26}},
      {"JST-9", "20260101080910", {16, 10, 9, 23, 0, 31, 12, 25}},
      {"CET-1CEST,M3.5.0,M10.5.0/3", "20260701120000", {16, 0, 0, 10, 0, 1, 7, 26}},  // summer time
      {"CET-1CEST,M3.5.0,M10.5.0/3", "20260101120000", {16, 0, 0, 11, 0, 1, 1, 26}},
      {"UTC0", "19991231235959", {16, 59, 59, 23, 0, 31, 12, 255}},
      // where a count of seconds in 31 or 32 bits ends
      {"UTC0", "20380119031408", {16, 8, 14, 3, 0, 19, 1, 38}},
      {"CET-1CEST,M3.5.0,M10.5.0/3", "20400701120000", {16, 0, 0, 10, 0, 1, 7, 40}},
      {"JST-9", "21060207152816", {16, 16, 28, 6, 0, 7, 2, 106}},
  };
  for (const auto& c : cases) {
    setenv("TZ", c.zone, 1);
    DateTime time{};
    ASSERT_EQ(DateTime::parse(c.text, time), 0);
    EXPECT_EQ(clockFrame(time.moment()), c.frame) << c.zone << ' ' << c.text;
  }
  unsetenv("TZ");
}

TEST(TimeZones, TheSwitchChoosesTheDirectory) {
  const struct {
    const char* name;
    bool isOn;
    const char* path;
  } cases[] = {{"Berlin", true, "/usr/share/zoneinfo/enable_daylightsaving/Europe/Berlin"},
               {"Berlin", false, "/usr/share/zoneinfo/disable_daylightsaving/Europe/Berlin"},
               {"Japan", true, "/usr/share/zoneinfo/disable_daylightsaving/Japan"},
               {"Atlantic", true, "/usr/share/zoneinfo/disable_daylightsaving/Etc/GMT+4"},
               {"GMT-9:30", true, "/usr/share/zoneinfo/disable_daylightsaving/Etc/GMT+9:30"},
               {"GMT+12:45", false, "/usr/share/zoneinfo/disable_daylightsaving/Etc/GMT-12:45"},
               {"berlin", true, ""},
               {"Berlin ", true, ""},
               {"", true, ""}};
  for (const auto& c : cases)
    EXPECT_EQ(time_zones::filePath(c.name, c.isOn), c.path) << c.name;
}

}  // namespace
