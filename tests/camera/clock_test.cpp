// The camera's clock and its zone: the operating system and the DSP together, the zone's file, a restart.

#include <array>
#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "sysinfo/system.conf";
const std::string kAccepted = "&202 Accepted(system.status=restart)";

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
    for (const std::string& line : camera().journal("child"))
      if (Camera::field(line, "what") == "date") commands.push_back(Camera::field(line, "command"));
    return commands;
  }
  static bool isInstalled(const std::string& zone) {
    return camera().exec({"cmp", "/usr/share/zoneinfo/" + zone, "/mnt/sysinfo/localtime"}) == 0;
  }
};

TEST_F(ClockTest, ADateSetsBothClocks) {
  // In a zone nine hours ahead of the DSP's.
  expectAnswers(camera(), {{"system.timezone=Japan", kAccepted}});
  camera().clearJournal();
  expectAnswers(camera(), {{"system.date=20240229085958", kOk}});
  EXPECT_EQ(frames(), Texts{"24 2 28 23 59 58"});
  EXPECT_EQ(commands(), Texts{"date 202402290859.58"});
  const std::string shown = camera().ask("system.date");
  EXPECT_TRUE(shown.starts_with("system.date=20240229")) << shown;
  EXPECT_EQ(shown.size(), std::string("system.date=YYYYMMDDhhmmss&200 OK").size()) << shown;
}

/** The C library of a 32-bit machine has calls that do not find such files. */
TEST_F(ClockTest, FilesFromBehindJanuary2038AreFound) {
  const std::string guid = camera().ask("system.guid");
  EXPECT_EQ(camera().exec({"/bin/sh", "-c", "touch -d 2040-01-01 /mnt/sysinfo/*"}), 0);
  EXPECT_EQ(camera().ask("system.guid"), guid);
  EXPECT_TRUE(guid.ends_with(kOk)) << guid;
}

TEST_F(ClockTest, DatesThatAreNone) {
  expectEach(camera(), "", {"system.date=20230229000000", "system.date=2024022923595"}, k457);
  expectEach(camera(), "", {"system.date=2024022923595x", "system.date=2024;reboot;01"}, k451);
  EXPECT_TRUE(camera().isLogged("invalid month(2) day(29)"));
  camera().tell("dsp fail_once=0x10");
  expectEach(camera(), "", {"system.date=20260101000000"}, k500);
  EXPECT_EQ(commands(), Texts{});
}

TEST_F(ClockTest, EveryZoneHasItsFile) {
  std::istringstream names(
      "GMT-12 GMT-11 GMT-10 Hawaii GMT-9:30 GMT-9 Alaska GMT-8 Pacific GMT-7 Arizona Mountain GMT-6 Central GMT-5 "
      "East-Indiana Eastern GMT-4 Atlantic GMT-3:30 GMT-3 GMT-2 GMT-1 UTC London GMT+1 Berlin Rome Madrid Paris CET "
      "GMT+2 EET GMT+3 GMT+3:30 GMT+4 GMT+4:30 GMT+5 GMT+5:30 Calcutta GMT+5:45 GMT+6 GMT+6:30 GMT+7 GMT+8 GMT+8:45 "
      "GMT+9 Japan GMT+9:30 GMT+10 GMT+10:30 GMT+11 GMT+11:30 GMT+12 GMT+12:45");
  Texts all;
  for (std::string name; names >> name; all.push_back(name))
    expectAnswers(camera(), {{"system.timezone=" + name, kAccepted}});
  EXPECT_EQ(all.size(), 55U);
  EXPECT_EQ(camera().journalFields("library", "value"), all);
  EXPECT_EQ(camera().shell("date +%z"), "+1245");
}

TEST_F(ClockTest, TheSwitchOfDaylightSavingChoosesTheFile) {
  for (const auto& [saving, zone, file] :
       {std::array<std::string, 3>{"on", "Berlin", "enable_daylightsaving/Europe/Berlin"},
        {"on", "Japan", "disable_daylightsaving/Japan"},
        {"off", "Berlin", "disable_daylightsaving/Europe/Berlin"}}) {
    camera().setRow(kFile, "DAYLIGHTSAVING", saving);
    ASSERT_TRUE(camera().reboot());
    camera().clearJournal();
    expectAnswers(camera(), {{"system.timezone=" + zone, kAccepted}});
    EXPECT_TRUE(isInstalled(file)) << file;
    EXPECT_TRUE(camera().isLogged("change timezone[/usr/share/zoneinfo/" + file + "]"));
    EXPECT_EQ(camera().journalFields("library", "value"), Texts{zone});
    expectRows(camera(), kFile, {"TIMEZONE=" + std::string(zone)});
    if (saving == "off" || zone != "Berlin") continue;
    for (const char* date : {"20260701120000", "20260101120000"})
      expectAnswers(camera(), {{std::string("system.date=") + date, kOk}});
    EXPECT_EQ(frames(), (Texts{"26 7 1 10 0 0", "26 1 1 11 0 0"})) << "summer time is the zone's";
  }
}

TEST_F(ClockTest, AZoneThatCannotBeSetIsNotKept) {
  expectAnswers(camera(), {{"system.timezone=UTC", kAccepted}});
  camera().tell("dsp fail=zr_set_timezone");
  expectAnswers(camera(), {{"system.timezone=Rome", k500}, {"system.timezone", shows("UTC")}});
  expectRows(camera(), kFile, {"TIMEZONE=UTC"});
}

TEST_F(ClockTest, BothOutliveARestart) {
  expectAnswers(camera(), {{"system.timezone=Arizona", kAccepted}, {"system.date=20300102030405", kOk}});
  ASSERT_TRUE(camera().reboot());
  expectAnswers(camera(), {{"system.timezone", shows("Arizona")}});
  EXPECT_TRUE(camera().ask("system.date").starts_with("system.date=20300102"));
}

}  // namespace
}  // namespace test
