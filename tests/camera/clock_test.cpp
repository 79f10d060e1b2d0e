// The camera's clock and its zone: the operating system and the DSP together, the zone's file, a restart.

#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "sysinfo/system.conf";
const std::string kAccepted = "system.timezone&202 Accepted(system.status=restart)";

class ClockTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().tell("dsp clear");
    camera().setRow(kFile, "DAYLIGHTSAVING", "on");
    CameraTest::SetUp();
  }

  /** The clock frames that reached the DSP, as year, month, day, hour, minute, second. */
  static Texts frames() {
    Texts frames;
    for (const std::string& line : camera().journal("dsp")) {
      std::string frame;
      for (const char* key : {"year", "month", "day", "hour", "minute", "second"})
        frame += (frame.empty() ? "" : " ") + Camera::field(line, key);
      if (Camera::field(line, "addr") == "0x10") frames.push_back(frame);
    }
    return frames;
  }
  static Texts commands() {
    Texts commands;
    for (const std::string& line : camera().journal("child")) {
      if (Camera::field(line, "what") == "date") commands.push_back(Camera::field(line, "command"));
    }
    return commands;
  }
  static bool isInstalled(const std::string& zone) {
    return camera().exec({"cmp", "/usr/share/zoneinfo/" + zone, "/mnt/sysinfo/localtime"}) == 0;
  }
};

TEST_F(ClockTest, ADateSetsBothClocks) {
  // In a zone nine hours ahead of the DSP's.
  EXPECT_EQ(camera().ask("system.timezone=Japan"), kAccepted);
  camera().clearJournal();
  EXPECT_EQ(camera().ask("system.date=20240229085958"), "system.date&200 OK");
  EXPECT_EQ(frames(), Texts{"24 2 28 23 59 58"});
  EXPECT_EQ(commands(), Texts{"date 202402290859.58"});
  const std::string shown = camera().ask("system.date");
  EXPECT_TRUE(shown.starts_with("system.date=20240229")) << shown;
  EXPECT_EQ(shown.size(), std::string("system.date=YYYYMMDDhhmmss&200 OK").size()) << shown;
}

TEST_F(ClockTest, DatesThatAreNone) {
  const std::string path = "system.date";
  expectAnswers(camera(), {{path + "=20230229000000", path + k457},
                           {path + "=2024022923595", path + k457},
                           {path + "=2024022923595x", path + k451},
                           {path + "=2024;reboot;01", path + k451}});
  EXPECT_TRUE(camera().isLogged("invalid month(2) day(29)"));
  camera().tell("dsp fail_once=0x10");
  EXPECT_EQ(camera().ask(path + "=20260101000000"), path + k500);
  EXPECT_EQ(commands(), Texts{});
}

TEST_F(ClockTest, EveryZoneHasItsFile) {
  std::istringstream names(
      "GMT-12 GMT-11 GMT-10 Hawaii GMT-9:30 GMT-9 Alaska GMT-8 Pacific GMT-7 Arizona Mountain GMT-6 Central GMT-5 "
      "East-Indiana Eastern GMT-4 Atlantic GMT-3:30 GMT-3 GMT-2 GMT-1 UTC London GMT+1 Berlin Rome Madrid Paris CET "
      "GMT+2 "
      "EET GMT+3 GMT+3:30 GMT+4 GMT+4:30 GMT+5 GMT+5:30 Calcutta GMT+5:45 GMT+6 GMT+6:30 GMT+7 GMT+8 GMT+8:45 GMT+9 "
      "Japan GMT+9:30 GMT+10 GMT+10:30 GMT+11 GMT+11:30 GMT+12 GMT+12:45");
  int count = 0;
  for (std::string name; names >> name; ++count) {
    EXPECT_EQ(camera().ask("system.timezone=" + name), kAccepted) << name;
    EXPECT_EQ(camera().ask("system.timezone"), "system.timezone=" + name + "&200 OK");
  }
  EXPECT_EQ(count, 55);
  EXPECT_EQ(camera().journalFields("library", "value").size(), 55U);
  EXPECT_EQ(camera().shell("date +%z"), "+1245");
  for (const char* name : {"Mars", "japan", "GMT", "GMT+13"})
    EXPECT_EQ(camera().ask(std::string("system.timezone=") + name), std::string("system.timezone") + k451) << name;
  EXPECT_EQ(camera().ask("system.timezone"), "system.timezone=GMT+12:45&200 OK");
}

TEST_F(ClockTest, TheSwitchOfDaylightSavingChoosesTheFile) {
  const struct {
    const char* daylightSaving;
    const char* zone;
    const char* file;
  } cases[] = {{"on", "Berlin", "enable_daylightsaving/Europe/Berlin"},
               {"on", "Japan", "disable_daylightsaving/Japan"},
               {"off", "Berlin", "disable_daylightsaving/Europe/Berlin"}};
  for (const auto& c : cases) {
    camera().setRow(kFile, "DAYLIGHTSAVING", c.daylightSaving);
    ASSERT_TRUE(camera().reboot());
    camera().clearJournal();
    EXPECT_EQ(camera().ask(std::string("system.timezone=") + c.zone), kAccepted);
    EXPECT_TRUE(isInstalled(c.file)) << c.file;
    EXPECT_TRUE(camera().isLogged(std::string("change timezone[/usr/share/zoneinfo/") + c.file + "]"));
    EXPECT_EQ(camera().journalFields("library", "value"), Texts{c.zone});
    EXPECT_EQ(camera().row(kFile, "TIMEZONE"), c.zone);
  }
}

TEST_F(ClockTest, SummerTimeIsTheZones) {
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(camera().ask("system.timezone=Berlin"), kAccepted);
  camera().clearJournal();
  for (const char* date : {"20260701120000", "20260101120000"})
    EXPECT_EQ(camera().ask(std::string("system.date=") + date), "system.date&200 OK");
  EXPECT_EQ(frames(), (Texts{"26 7 1 10 0 0", "26 1 1 11 0 0"}));
}

TEST_F(ClockTest, AZoneThatCannotBeSetIsNotKept) {
  EXPECT_EQ(camera().ask("system.timezone=UTC"), kAccepted);
  camera().tell("dsp fail=zr_set_timezone");
  EXPECT_EQ(camera().ask("system.timezone=Rome"), std::string("system.timezone") + k500);
  EXPECT_EQ(camera().ask("system.timezone"), "system.timezone=UTC&200 OK");
  EXPECT_EQ(camera().row(kFile, "TIMEZONE"), "UTC");
}

TEST_F(ClockTest, BothOutliveARestart) {
  EXPECT_EQ(camera().ask("system.timezone=Arizona"), kAccepted);
  EXPECT_EQ(camera().ask("system.date=20300102030405"), "system.date&200 OK");
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(camera().ask("system.timezone"), "system.timezone=Arizona&200 OK");
  EXPECT_TRUE(camera().ask("system.date").starts_with("system.date=20300102"));
}

}  // namespace
}  // namespace test
