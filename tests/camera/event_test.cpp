// Event rules: what reaches the recorder at once, what waits for the rule's restart, and what a start brings back.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

/** One request for a rule, and all that it must do. */
struct Step {
  std::string request;
  std::string answer;
  Texts told = {};
};

std::string file(int event) { return "flash/sysconfig/event/event" + std::to_string(event - 1) + ".conf"; }

std::string accepted(const std::string& event) { return "&202 Accepted(application." + event + ".status=restart)"; }

class EventTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().tell("recorder up");
    CameraTest::SetUp();
  }

  static void run(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
      camera().clearJournal();
      const std::string path = step.request.substr(0, step.request.find('='));
      EXPECT_EQ(camera().ask(step.request), path + step.answer) << step.request;
      EXPECT_EQ(camera().toldRecorder(), step.told) << step.request;
    }
  }

  static void expectRows(int event, std::initializer_list<std::pair<const char*, const char*>> rows) {
    for (const auto& [key, value] : rows)
      EXPECT_EQ(camera().row(file(event), key), value) << key;
  }
};

TEST_F(EventTest, AnEditReachesTheRecorderAtOnceAndFlashWithTheRestart) {
  run({{"application.event(1).trigger=pin1=make%20x+y", accepted("event(1)"), {"event(1).trigger pin1=make%20x+y"}},
       {"application.event(1).trigger", "=pin1=make&200 OK"},
       {"application.event(1).action=record%281%29+%22%26%25",
        accepted("event(1)"),
        {"event(1).action record(1) \"&%"}},
       {"application.event(1).action", "=&200 OK"},
       {"application.event(1).status=on", kOk, {"event(1).status 1"}},
       {"application.event(1).status", "=on&200 OK"}});
  expectRows(1, {{"EVENT_STATUS", "off"}, {"EVENT_TRIGGER", "pin1=make"}, {"EVENT_ACTION", ""}});
  run({{"application.event(1).status=restart", kOk, {"restart 1"}},
       {"application.event(1).trigger", "=pin1=make%20x+y&200 OK"},
       {"application.event(1).action", "=record(1) %22%26%25&200 OK"}});
  expectRows(1, {{"EVENT_STATUS", "on"}, {"EVENT_TRIGGER", "pin1=make%20x+y"}, {"EVENT_ACTION", "record(1) \"&%"}});
  run({{"application.event(1).status=off", kOk, {"event(1).status 0"}},
       {"application.event(1).action=%00", accepted("event(1)"), {"event(1).action "}},
       {"application.event(1).status=restart", kOk, {"restart 1"}}});
  expectRows(1, {{"EVENT_STATUS", "off"}, {"EVENT_ACTION", ""}});
  expectRows(2, {{"EVENT_STATUS", "off"}, {"EVENT_TRIGGER", "pin1=make"}});
}

TEST_F(EventTest, ARestartTakesNoOtherRule) {
  run({{"application.event(4).trigger=four", accepted("event(4)"), {"event(4).trigger four"}},
       {"application.event(5).status=restart", kOk, {"restart 5"}},
       {"application.event(4).trigger", "=pin1=make&200 OK"},
       {"application.event(4).status=restart", kOk, {"restart 4"}},
       {"application.event(4).trigger", "=four&200 OK"}});
}

TEST_F(EventTest, TheHintSpellsTheIndexAsItWasAsked) {
  run({{"application.event(01).trigger=a", accepted("event(01)"), {"event(1).trigger a"}},
       {"app.event(1).action=a", accepted("event(1)"), {"event(1).action a"}},
       {"application.event.trigger=a", accepted("event"), {"event(1).trigger a"}},
       {"application.event(10).filter(friday).status=off", accepted("event(10)"), {"event(10).filter(6).status 0"}}});
}

TEST_F(EventTest, FiltersAreReadBackAtOnceAndSavedWithTheRule) {
  run({{"application.event(2).filter(Sunday).status=on", accepted("event(2)"), {"event(2).filter(1).status 1"}},
       {"application.event(2).filter(sunday).status", "=on&200 OK"},
       {"application.event(2).filter(MONDAY).type=unmask", accepted("event(2)"), {"event(2).filter(2).type 2"}},
       {"application.event(2).filter(monday).type", "=unmask&200 OK"},
       {"application.event(2).filter(saturday).type=mask", accepted("event(2)"), {"event(2).filter(7).type 1"}},
       {"application.event(2).filter(saturday).time=000000-240000",
        accepted("event(2)"),
        {"event(2).filter(7).start 0", "event(2).filter(7).end 86400"}},
       {"application.event(2).filter(saturday).time=010203-235959",
        accepted("event(2)"),
        {"event(2).filter(7).start 3723", "event(2).filter(7).end 86399"}},
       {"application.event(2).filter(saturday).time", "=010203-235959&200 OK"}});
  expectRows(2, {{"FILTER_STATUS1", "off"}, {"FILTER_TYPE2", "mask"}, {"FILTER_TIME7", "000000-240000"}});
  run({{"application.event(2).status=restart", kOk, {"restart 2"}}});
  expectRows(2, {{"FILTER_STATUS1", "on"}, {"FILTER_TYPE2", "unmask"}, {"FILTER_TIME7", "010203-235959"}});
}

TEST_F(EventTest, WhatARuleDoesNotTakeReachesNobody) {
  std::vector<Step> steps = {{"application.event(11).trigger=x", k456},
                             {"application.event(0).status=on", k456},
                             {"application.event(x).trigger=x", k451},
                             {"application.event(1).status=ON", k451},
                             {"application.event(1).action=a%0Ab", k451},
                             {"application.event(1).action=a%00b", k451},
                             {"application.event(1).trigger=" + std::string(600, 'x'), k457},
                             {"application.event(1).action=" + std::string(600, 'x'), k457},
                             {"application.event(1).filter(Funday).status=on", k451},
                             {"application.event(1).filter.status=on", k451},
                             {"application.event(1).filter(monday).status=restart", k451},
                             {"application.event(1).filter(monday).type=", "=mask&200 OK"},
                             {"application.event(1).filter(monday).type=on", k451}};
  for (const char* time :
       {"240000-240000",        "120000-120000",  "120001-120000", "000000-240001", "240000-240001", "006000-010000",
        "000060-010000",        "250000-260000",  "000000",        "000000-",       "-000001",       "-",
        "00000-010000",         "0000000-010000", "000000--10000", "000000-+10000", "000000- 10000", "00000a-010000",
        "000000-010000-020000", "000000-01:000",  "000000-010000 "})
    steps.push_back({std::string("application.event(1).filter(monday).time=") + time, k451});
  run(steps);
}

TEST_F(EventTest, TheRecordersWordIsTheAnswer) {
  struct Case {
    const char* fault;
    const char* put;
    const char* restart;
  };
  const Case cases[] = {{"recorder down", k500, k500},
                        {"recorder refuse", k405, k405},
                        {"recorder refuse 404", "&404 Not Found", k405},
                        {"recorder refuse 999", k500, k405},
                        {"recorder refuse 0", k500, k405},
                        {"recorder refuse 5", k500, k500},
                        {"recorder garbage", k500, k500},
                        {"recorder short", k500, k500},
                        {"recorder early", k500, k500}};
  const std::string before = camera().read(file(3));
  for (const Case& c : cases) {
    camera().tell("recorder up");
    camera().tell(c.fault);
    for (const char* item : {"status=on", "trigger=t", "action=a", "filter(monday).status=on",
                             "filter(monday).type=unmask", "filter(monday).time=000000-000001"}) {
      const std::string path = "application.event(3)." + std::string(item).substr(0, std::string(item).find('='));
      EXPECT_EQ(camera().ask("application.event(3)." + std::string(item)), path + c.put) << c.fault;
    }
    EXPECT_EQ(camera().ask("application.event(3).status=restart"),
              std::string("application.event(3).status") + c.restart)
        << c.fault;
  }
  camera().tell("recorder up");
  run({{"application.event(3).status=restart", kOk, {"restart 3"}},
       {"application.event(3).trigger", "=pin1=make&200 OK"},
       {"application.event(3).status", "=off&200 OK"},
       {"application.event(3).filter(monday).status", "=off&200 OK"}});
  EXPECT_EQ(camera().read(file(3)), before);
}

TEST_F(EventTest, APinThatMakesLetsTheObjectRecord) {
  for (const char* request :
       {"application.event(6).trigger=pin2=make", "application.event(6).action=record(2)",
        "application.event(6).filter(tuesday).status=on", "application.event(6).filter(tuesday).time=080000-180000",
        "application.event(6).status=on", "application.event(6).status=restart"})
    camera().ask(request);
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
  camera.setRow(file(3), "EVENT_STATUS", "on");
  camera.setRow(file(3), "EVENT_TRIGGER", "a&b=c%20d");
  camera.setRow(file(3), "EVENT_ACTION", "x&y 1+2");
  camera.setRow(file(3), "FILTER_STATUS2", "on");
  camera.setRow(file(3), "FILTER_TYPE2", "unmask");
  camera.setRow(file(3), "FILTER_TIME2", "000001-240000");
  camera.setRow(file(4), "EVENT_TRIGGER", "");
  camera.setRow(file(4), "FILTER_TIME2", "");
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
  Texts told;
  for (const std::string& line : camera.toldRecorder()) {
    if (line.starts_with("event(") || line.starts_with("restart")) told.push_back(line);
  }
  EXPECT_EQ(told, expected);
  EXPECT_EQ(camera.read(file(3)), before);
  EXPECT_EQ(std::filesystem::last_write_time(camera.path(file(3))), written);
  EXPECT_EQ(camera.ask("application.event(3).action"), "application.event(3).action=x%26y 1+2&200 OK");
}

}  // namespace
}  // namespace test
