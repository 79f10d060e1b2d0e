// Event rules: what reaches the recorder at once, what waits for the rule's restart, and what a start brings back.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

std::string file(int event) { return "flash/sysconfig/event/event" + std::to_string(event - 1) + ".conf"; }

std::string accepted(const std::string& event) { return "&202 Accepted(application." + event + ".status=restart)"; }

class EventTest : public CameraTest {
 protected:
  static void run(const std::vector<Step>& steps) {
    expectSteps(camera(), "application.", steps, [] { return camera().toldRecorder(); });
  }
};

TEST_F(EventTest, AnEditReachesTheRecorderAtOnceAndFlashWithTheRestart) {
  run({{"event(1).trigger=pin1=make%20x+y", accepted("event(1)"), {"event(1).trigger pin1=make%20x+y"}},
       {"event(1).trigger", "=pin1=make&200 OK"},
       {"event(1).action=record%281%29+%22%26%25", accepted("event(1)"), {"event(1).action record(1) \"&%"}},
       {"event(1).action", "=&200 OK"},
       {"event(1).status=on", kOk, {"event(1).status 1"}},
       {"event(1).status", "=on&200 OK"}});
  expectRows(camera(), file(1), {"EVENT_STATUS=off", "EVENT_TRIGGER=pin1=make", "EVENT_ACTION="});
  run({{"event(1).status=restart", kOk, {"restart 1"}},
       {"event(1).trigger", "=pin1=make%20x+y&200 OK"},
       {"event(1).action", "=record(1) %22%26%25&200 OK"}});
  expectRows(camera(), file(1), {"EVENT_STATUS=on", "EVENT_TRIGGER=pin1=make%20x+y", "EVENT_ACTION=record(1) \"&%"});
  run({{"event(1).status=off", kOk, {"event(1).status 0"}},
       {"event(1).action=%00", accepted("event(1)"), {"event(1).action "}},
       {"event(1).status=restart", kOk, {"restart 1"}}});
  expectRows(camera(), file(1), {"EVENT_STATUS=off", "EVENT_ACTION="});
  expectRows(camera(), file(2), {"EVENT_STATUS=off", "EVENT_TRIGGER=pin1=make"});
}

TEST_F(EventTest, ARestartTakesNoOtherRule) {
  run({{"event(4).trigger=four", accepted("event(4)"), {"event(4).trigger four"}},
       {"event(5).status=restart", kOk, {"restart 5"}},
       {"event(4).trigger", "=pin1=make&200 OK"},
       {"event(4).status=restart", kOk, {"restart 4"}},
       {"event(4).trigger", "=four&200 OK"}});
}

TEST_F(EventTest, TheHintSpellsTheIndexAsItWasAsked) {
  run({{"event(01).trigger=a", accepted("event(01)"), {"event(1).trigger a"}},
       {"event.trigger=a", accepted("event"), {"event(1).trigger a"}},
       {"event(10).filter(friday).status=off", accepted("event(10)"), {"event(10).filter(6).status 0"}}});
  expectAnswers(camera(), {{"app.event(1).action=a", accepted("event(1)")}});
}

TEST_F(EventTest, FiltersAreReadBackAtOnceAndSavedWithTheRule) {
  run({{"event(2).filter(Sunday).status=on", accepted("event(2)"), {"event(2).filter(1).status 1"}},
       {"event(2).filter(sunday).status", "=on&200 OK"},
       {"event(2).filter(MONDAY).type=unmask", accepted("event(2)"), {"event(2).filter(2).type 2"}},
       {"event(2).filter(monday).type", "=unmask&200 OK"},
       {"event(2).filter(saturday).type=mask", accepted("event(2)"), {"event(2).filter(7).type 1"}},
       {"event(2).filter(saturday).time=000000-240000",
        accepted("event(2)"),
        {"event(2).filter(7).start 0", "event(2).filter(7).end 86400"}},
       {"event(2).filter(saturday).time=010203-235959",
        accepted("event(2)"),
        {"event(2).filter(7).start 3723", "event(2).filter(7).end 86399"}},
       {"event(2).filter(saturday).time", "=010203-235959&200 OK"}});
  expectRows(camera(), file(2), {"FILTER_STATUS1=off", "FILTER_TYPE2=mask", "FILTER_TIME7=000000-240000"});
  run({{"event(2).status=restart", kOk, {"restart 2"}}});
  expectRows(camera(), file(2), {"FILTER_STATUS1=on", "FILTER_TYPE2=unmask", "FILTER_TIME7=010203-235959"});
}

TEST_F(EventTest, WhatARuleDoesNotTakeReachesNobody) {
  std::vector<Step> steps = {{"event(11).trigger=x", k456},
                             {"event(1).action=a%0Ab", k451},
                             {"event(1).trigger=" + std::string(600, 'x'), k457},
                             {"event(1).filter(monday).type=", "=mask&200 OK"}};
  for (const char* time :
       {"240000-240000",        "120000-120000",  "120001-120000", "000000-240001", "240000-240001", "006000-010000",
        "000060-010000",        "250000-260000",  "000000",        "000000-",       "-000001",       "-",
        "00000-010000",         "0000000-010000", "000000--10000", "000000-+10000", "000000- 10000", "00000a-010000",
        "000000-010000-020000", "000000-01:000",  "000000-010000 "})
    steps.push_back({std::string("event(1).filter(monday).time=") + time, k451});
  run(steps);
}

TEST_F(EventTest, TheRecordersWordIsTheAnswer) {
  const TextPairs puts = {{"down", k500},       {"refuse", k405},   {"refuse 404", "&404 Not Found"},
                          {"refuse 999", k500}, {"refuse 0", k500}, {"refuse 5", k500},
                          {"garbage", k500},    {"short", k500},    {"early", k500}};
  TextPairs restarts = puts;
  for (auto& [fault, answer] : restarts)
    answer = fault.starts_with("refuse") && fault != "refuse 5" ? k405 : k500;
  const std::string before = camera().read(file(3));
  expectUnderFaults(camera(), "recorder", puts, "application.event(3).",
                    {"status=on", "trigger=t", "action=a", "filter(monday).status=on", "filter(monday).type=unmask",
                     "filter(monday).time=000000-000001"});
  expectUnderFaults(camera(), "recorder", restarts, "application.event(3).", {"status=restart"});
  run({{"event(3).status=restart", kOk, {"restart 3"}},
       {"event(3).trigger", "=pin1=make&200 OK"},
       {"event(3).status", "=off&200 OK"},
       {"event(3).filter(monday).status", "=off&200 OK"}});
  EXPECT_EQ(camera().read(file(3)), before);
}

TEST_F(EventTest, APinThatMakesLetsTheObjectRecord) {
  for (const std::string item : {"trigger=pin2=make", "action=record(2)", "filter(tuesday).status=on",
                                 "filter(tuesday).time=080000-180000", "status=on", "status=restart"})
    camera().ask("application.event(6)." + item);
  const auto recorded = [](const std::string& moment) {
    camera().tell("recorder now=" + moment);
    camera().tell("gpio pin2=break");
    camera().clearJournal();
    camera().tell("gpio pin2=make");
    Texts objects;
    for (const std::string& line : camera().journal("recorder")) {
      if (Camera::field(line, "what") == "record") objects.push_back(Camera::field(line, "object"));
    }
    return objects;
  };
  EXPECT_EQ(recorded("tuesday-120000"), Texts());
  EXPECT_EQ(recorded("tuesday-190000"), Texts{"2"});
  camera().tell("recorder now=clock");
}

TEST(Event, AStartBringsEveryRuleBackAndWritesNothing) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.setRows(file(3), {"EVENT_STATUS=on", "EVENT_TRIGGER=a&b=c%20d", "EVENT_ACTION=x&y 1+2", "FILTER_STATUS2=on",
                           "FILTER_TYPE2=unmask", "FILTER_TIME2=000001-240000"});
  camera.setRows(file(4), {"EVENT_TRIGGER=", "FILTER_TIME2="});
  const auto written = std::filesystem::last_write_time(camera.path(file(3)));
  const std::string before = camera.read(file(3));
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());

  Texts expected;
  for (int event = 1; event <= 10; ++event) {
    const std::string name = "event(" + std::to_string(event) + ").";
    const bool third = event == 3;
    if (event != 4) expected.push_back(name + "trigger " + (third ? "a&b=c%20d" : "pin1=make"));
    if (third) expected.push_back(name + "action x&y 1 2");
    for (int day = 1; day <= 7; ++day) {
      const std::string filter = name + "filter(" + std::to_string(day) + ").";
      const bool second = third && day == 2;
      expected.push_back(filter + "status " + (second ? "1" : "0"));
      expected.push_back(filter + "type " + (second ? "2" : "1"));
      if (event == 4 && day == 2) continue;
      expected.insert(expected.end(), {filter + "start " + (second ? "1" : "0"), filter + "end 86400"});
    }
    expected.push_back(name + "status " + (third ? "1" : "0"));
    expected.push_back("restart " + std::to_string(event));
  }
  EXPECT_EQ(camera.toldRecorder({"event(", "restart"}), expected);
  EXPECT_EQ(camera.read(file(3)), before);
  EXPECT_EQ(std::filesystem::last_write_time(camera.path(file(3))), written);
  EXPECT_EQ(camera.ask("application.event(3).action"), "application.event(3).action=x%26y 1+2&200 OK");
}

}  // namespace
}  // namespace test
