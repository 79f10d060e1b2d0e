// The focus: what each word does in each mode and state, what the GPIO daemon reports, and an adjustment played by the
// simulated lens.

#include <algorithm>
#include <array>
#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* k202 = "&202 Accepted";
constexpr const char* kFocusFile = "sysinfo/kq40_autofocus.conf";
constexpr const char* kTmpDate = "flash/usr/obtmp.dat";
constexpr const char* kSavedDate = "sysinfo/obsave.dat";
const std::string kRoot = "camera.focus";

/** "name" or "name:a" of all that the GPIO daemon got since the journal was cleared. */
Texts toldGpio(const Camera& camera) {
  camera.tell("gpio show");  // what was sent before this line has been dealt with
  Texts told;
  for (const std::string& line : camera.journal("gpio")) {
    if (Camera::field(line, "what") == "report") continue;
    const std::string a = Camera::field(line, "a");
    told.push_back(Camera::field(line, "what") + (a == "0" ? "" : ":" + a));
  }
  return told;
}

/** One camera, whose daemon reports nothing by itself. */
class Focus : public CameraTest {
 protected:
  void SetUp() override {
    camera().tell("gpio up");
    camera().tell("gpio icr=1 run=0 kind=0");
    camera().tell("dsp clear");
    camera().flash("off");
    setOffset(0);
    leaveMode();
    CameraTest::SetUp();
  }
  void TearDown() override { SetUp(); }

  static void expect(const std::string& item, const std::string& answer) {
    expectAnswers(camera(), {{kRoot + item, answer}});
  }
  static std::string shown(const std::string& item) {
    const std::string answer = camera().ask(kRoot + item, UserClass::kDebug);
    const size_t from = answer.find('=') + 1;
    return answer.substr(from, answer.rfind("&200") - from);
  }

  /** The state without a report: the daemon's and the debugging classes may set it. */
  static void setState(const std::string& state) {
    EXPECT_EQ(camera().ask(kRoot + ".status=" + state, UserClass::kDebug), kRoot + ".status" + kOk);
  }

  /** Goes back to "select" with nothing waiting: a filter elsewhere need not be waited for. */
  static void leaveMode() {
    setState("stop");
    if (shown(".adjust_mode") != "select") {
      camera().tell(shown(".adjust_mode") == "night" ? "gpio icr=1" : "gpio icr=0");
      enter("select");
      camera().tell("gpio icr=1");
    }
    expect(".gpiofrom.status=stop", k202);
  }
  static void enter(const std::string& mode) {
    expect(".adjust_mode=" + mode, kOk);
    setState("stop");
  }
  static void setOffset(int offset) {
    if (row("NIGHTFOCUS_OFFSET") == std::to_string(offset)) return;
    enter("night");
    expect(".nightfocus=" + std::to_string(offset), kOk);
    expect(".gpiofrom.status=stop", k202);
  }
  /** A change of the mode: from where, with the filter where, and what it comes to. */
  static void expectChange(const std::string& from, int filter, const std::string& word, const char* answer,
                           const Texts& messages, const std::string& state, int offset = 0) {
    SCOPED_TRACE(from + " to " + word + " with the filter at " + std::to_string(filter));
    setOffset(offset);
    leaveMode();
    if (from == "night") camera().tell("gpio icr=0");
    if (from != "select") enter(from);
    camera().tell("gpio icr=" + std::to_string(filter));
    camera().clearJournal();
    expect(".adjust_mode=" + word, answer);
    EXPECT_EQ(toldGpio(camera()), messages);
    EXPECT_EQ(shown(".status"), state);
    EXPECT_EQ(shown(".adjust_mode"), answer == kOk ? word : from);
    camera().tell("gpio icr=1");
  }
  /** A report of the daemon: in which state, and what it comes to; AF_ICR_FLG in the file was "1" before. */
  static void expectReport(const std::string& item, const std::string& state, const char* answer, const Texts& messages,
                           const std::string& stateAfter, const std::string& flag, const std::string& mode = "select",
                           int offset = 3) {
    SCOPED_TRACE(item + " in " + mode + ", " + state);
    setOffset(3);
    leaveMode();
    expect(".gpiofrom.check_status=day", k202);
    ASSERT_EQ(row("AF_ICR_FLG"), "1");
    if (offset == 0) setOffset(0);
    if (mode != "select") enter(mode);
    setState(state);
    camera().clearJournal();
    expect(".gpiofrom." + item, answer);
    EXPECT_EQ(toldGpio(camera()), messages);
    EXPECT_EQ(shown(".status"), stateAfter);
    EXPECT_EQ(row("AF_ICR_FLG"), flag);
    EXPECT_EQ(std::filesystem::exists(camera().path(kTmpDate)), flag == "1");
  }
  static std::string row(const std::string& key) { return camera().row(kFocusFile, key); }
};

/** Orders of the lens: the mode that they need, the answers in three states, and what the daemon gets. */
struct Orders {
  std::string mode;
  std::array<const char*, 3> answers;
  std::string items;  ///< each with its message behind it, "-" for none
};

TEST_F(Focus, EveryOrderInEveryModeAndState) {
  const char* states[] = {"adjusting", "ready", "initialize"};
  const Orders groups[] = {
      {"day",
       {kOk, kOk, kOk},
       "=stop focus_auto  =op_auto focus_auto:1  =op_auto_full focus_auto:2  =op_auto_full_forced focus_auto:3"},
      {"day",
       {k412, kOk, k412},
       ".finefocus=1000 focus_step:1000  .finefocus=-1000 focus_step:-1000  .finefocus=+ focus_step:1  "
       ".finefocus=- focus_step:-1"},
      {"night",
       {k412, kOk, k412},
       ".nightfocus=20 night_offset:20  .nightfocus=+ night_offset:20  .nightfocus=- night_offset:19"},
      {"init_pos", {k412, kOk, kOk}, ".abf_pos=initialize factory"},
      {"day", {k412, k457, k412}, ".finefocus=1001 -  .finefocus=-1001 -"},
      {"night", {k412, k457, k412}, ".nightfocus=21 -  .nightfocus=-1 -"},
      {"", {}, "=auto -  .finefocus=++ -  .nightfocus=x -  .abf_pos=init -"},
  };
  for (const std::string mode : {"select", "day", "night", "init_pos"}) {
    if (mode != "select") enter(mode);
    for (const auto& [needed, answers, items] : groups) {
      std::istringstream words(items);
      for (std::string item, message; words >> item >> message;) {
        for (size_t i = 0; i < std::size(states); ++i) {
          SCOPED_TRACE(item + " in " + mode + ", " + states[i]);
          setState(states[i]);
          camera().clearJournal();
          const std::string answer = needed.empty() ? k451 : needed == mode ? answers[i] : k412;
          expect(item, answer);
          EXPECT_EQ(toldGpio(camera()), answer == kOk ? Texts{message} : Texts());
          EXPECT_EQ(shown(".status"), answer == kOk ? "adjusting" : states[i]);
        }
      }
    }
    leaveMode();
  }
}

TEST_F(Focus, Reads) {
  camera().tell("gpio position=700 run=60000000");
  expectAnswers(camera(), {{"camera.focus", shows("stop")},
                           {"camera.focus.progress", shows("100")},
                           {"camera.focus.finefocus", k412},
                           {"camera.focus.nightfocus", k412},
                           {"camera.focus.abf_pos", k405},
                           {"camera.focus.abf_pos", k501, UserClass::kDebug}});
  enter("day");
  expect(".finefocus", shows("700"));
  for (const char* word : {"op_auto", "op_auto_full", "op_auto_full_forced", "stop"}) {
    expect(std::string("=") + word, kOk);
    expect("", shows(word));
  }
  setState("stop");
  expectAnswers(camera(), {{"camera.focus.finefocus=5", kOk},
                           {"camera.focus", shows("stop")},  // a step is no automatic run
                           {"camera.focus.progress", shows("0")}});
  camera().tell("gpio down");
  for (const char* item : {"", "=stop", ".finefocus", ".progress"})
    expect(item, k500);
}

TEST_F(Focus, EveryChangeOfTheMode) {
  const Texts look{"filter"};
  const Texts entered{"filter", "filter", "adjust_mode:1"};
  const Texts changed{"filter", "adjust_mode:1"};
  // The way back: a filter that is back is looked at twice; without an offset it need not be back.
  const Texts left{"filter", "filter", "filter", "adjust_mode"};
  const Texts leftElsewhere{"filter", "filter", "adjust_mode"};
  const Texts waits{"filter", "filter"};
  expectChange("select", 1, "select", kOk, look, "initialize");
  expectChange("select", 1, "day", kOk, entered, "stop");
  expectChange("select", 0, "day", kOk, entered, "initialize");
  expectChange("select", 1, "night", kOk, entered, "initialize");
  expectChange("select", 0, "night", kOk, entered, "stop");
  expectChange("select", 1, "init_pos", kOk, entered, "stop");
  expectChange("select", 0, "init_pos", kOk, entered, "initialize");
  expectChange("select", 1, "Day", k451, {}, "initialize");
  expectChange("day", 1, "day", kOk, changed, "stop");
  expectChange("day", 1, "night", kOk, changed, "initialize");
  expectChange("day", 1, "init_pos", kOk, changed, "stop");
  expectChange("night", 0, "night", kOk, changed, "stop");
  expectChange("night", 0, "day", kOk, changed, "initialize");
  expectChange("init_pos", 1, "init_pos", kOk, changed, "initialize");
  expectChange("init_pos", 1, "day", kOk, changed, "stop");
  expectChange("init_pos", 1, "night", kOk, changed, "initialize");
  expectChange("day", 1, "select", kOk, left, "stop");
  expectChange("day", 0, "select", kOk, leftElsewhere, "initialize");
  expectChange("day", 0, "select", kOk, waits, "initialize", 3);
  expectChange("day", 2, "select", k412, look, "initialize");
  expectChange("day", 2, "night", k412, look, "initialize");
  expectChange("select", 2, "day", k500, look, "initialize");
  setState("adjusting");
  for (const char* word : {"select", "day", "night", "init_pos", "x"})
    expect(std::string(".adjust_mode=") + word, k412);
  EXPECT_EQ(shown(".status"), "adjusting");
}

/** The filter has not come back: the return waits for the daemon's next report. */
TEST_F(Focus, AReportLeavesAFixedMode) {
  setOffset(3);
  leaveMode();
  enter("day");
  camera().tell("gpio icr=0");
  expect(".adjust_mode=select", kOk);
  camera().clearJournal();
  expect(".gpiofrom.status=adjusting", kOk);
  EXPECT_EQ(toldGpio(camera()), Texts());
  expect(".gpiofrom.status=TIMEOUT_ERROR", k202);
  EXPECT_EQ(toldGpio(camera()), (Texts{"focus_position", "focus_direction", "filter", "focus_kind", "adjust_mode",
                                       "focus_position", "focus_direction", "filter"}));
  EXPECT_EQ(shown(".status"), "stop");
  camera().clearJournal();
  expect(".gpiofrom.status=5", k202);
  EXPECT_EQ(shown(".status"), "TIMEOUT_ERROR");
  EXPECT_EQ(toldGpio(camera()).size(), 4U) << "left once";
}

TEST_F(Focus, AModeThatCannotBeEntered) {
  enter("day");
  camera().tell("gpio leave for=filter");  // the filter is read, message 35 is not taken
  expect(".adjust_mode=night", k500);
  EXPECT_EQ(shown(".adjust_mode"), "day");
  EXPECT_EQ(shown(".status"), "stop");
  expect("=op_auto", k500);
  camera().tell("gpio up");
  camera().tell("dsp fail=0x20");
  expect(".adjust_mode=night", k500);
  EXPECT_EQ(shown(".status"), "initialize");
  camera().tell("dsp clear");
  enter("night");  // the picture of a mode is no setting
  expectAnswers(camera(), {{"camera.scene.image.true_daynight", shows("color")}});
}

TEST_F(Focus, EveryReport) {
  const Texts none;
  const Texts kind{"focus_kind"};
  const Texts start{"ir_start"};
  const Texts refresh{"focus_position", "focus_direction", "filter", "focus_kind"};
  expectReport("check_status=night", "adjusting", kOk, none, "stop", "1", "select", 0);
  expectReport("check_status=night", "adjusting", kOk, none, "adjusting", "1");
  expectReport("check_status=day", "stop", k202, none, "stop", "1");
  expectReport("check_status=day", "stop", k202, none, "stop", "1", "day");
  expectReport("check_status=dusk", "stop", k457, none, "stop", "1");
  expectReport("icr_status=day", "adjusting", kOk, none, "adjusting", "1");
  expectReport("icr_status=day", "stop", k202, start, "adjusting", "0");
  expectReport("icr_status=day", "stop", k202, start, "adjusting", "1", "day");
  expectReport("icr_status=night", "stop", kOk, start, "adjusting", "1");
  expectReport("icr_status=1", "stop", k457, none, "stop", "1");
  expectReport("status=stop", "adjusting", k202, refresh, "stop", "0");
  expectReport("status=2", "adjusting", k202, refresh, "HIGH_LIGHT_ERROR", "0");
  expectReport("status=ready", "adjusting", k202, kind, "ready", "0");
  expectReport("status=stop", "adjusting", k202, refresh, "stop", "1", "day");
  expectReport("status=0", "stop", kOk, none, "adjusting", "1");
  expectReport("status=6", "stop", k457, none, "stop", "1");
}

TEST_F(Focus, ReportsThatCannotBeDealtWith) {
  setOffset(3);
  leaveMode();
  for (const std::string query : {"focus_position", "focus_direction", "filter"}) {
    camera().tell("gpio refuse for=" + query);
    expect(".gpiofrom.status=3", k500);
    EXPECT_EQ(shown(".status"), "LOW_LIGHT_ERROR") << query;
    setState("ready");
  }
  camera().tell("gpio refuse for=focus_kind");
  expect(".gpiofrom.check_status=day", k202);
  expect(".gpiofrom.status=stop", k202);
  EXPECT_EQ(row("AF_ICR_FLG"), "1") << "nobody says that the focus has been corrected";
  camera().tell("gpio none");
  camera().tell("dsp fail=0x84");
  expect(".gpiofrom.status=stop", k500);
  camera().tell("dsp clear");
  camera().tell("gpio down");
  for (const char* item : {".gpiofrom.icr_status=day", ".gpiofrom.status=stop"})
    expect(item, k500);
  EXPECT_EQ(shown(".status"), "stop") << "the state is the daemon's all the same";
  camera().tell("gpio up");
  camera().flash("full");
  for (const char* item : {".gpiofrom.check_status=day", ".gpiofrom.status=stop"})
    expect(item, k500);
  EXPECT_TRUE(camera().isLogged(" CamFocus:Can not to save focus data to the focus_file"));
}

/** An announcement and "select" write their row alone, a report all of them. */
TEST_F(Focus, WhichRowsAreWritten) {
  setOffset(3);
  enter("day");
  camera().tell("gpio position=777");
  expect(".finefocus", shows("777"));
  leaveMode();
  camera().tell("gpio position=888");
  setState("stop");
  expect(".gpiofrom.check_status=day", k202);
  expectRows(camera(), kFocusFile, {"AF_ICR_FLG=1", "FOCUS_POS=777"});
  expect(".adjust_mode=select", kOk);
  expectRows(camera(), kFocusFile, {"AF_ICR_FLG=0", "FOCUS_POS=777"});
  camera().tell("gpio direction=0 icr=0");
  expect(".gpiofrom.status=stop", k202);
  expectRows(camera(), kFocusFile, {"FOCUS_POS=888", "FOCUS_DIR=near", "FOCUS_IR=night"});
}

/** The addresses of the frames since the journal was cleared, without the probes of the board. */
Texts framesSent(const Camera& camera) {
  Texts frames;
  for (const std::string& line : camera.journal("dsp")) {
    const std::string address = Camera::field(line, "addr");
    if (address > "0x1a") frames.push_back(address);
  }
  return frames;
}

TEST_F(Focus, Assist) {
  const Texts picture{"0x30", "0x21", "0x60"};
  camera().ask("camera.scene.image.senseup_limit=0&camera.scene.shutter=250");
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.focusassist.status=on", kOk}});
  EXPECT_TRUE(eventually([] { return camera().journalFields("child", "command") == Texts{"count"}; }));
  EXPECT_EQ(framesSent(camera()), picture);
  EXPECT_EQ(toldGpio(camera()), Texts{"focus_assist:1"});
  EXPECT_EQ(shown(".assist.status"), "on");
  expectAnswers(camera(), {{"camera.scene.shutter", shows("250")}});
  camera().clearJournal();
  expect(".assist.status=off", kOk);
  EXPECT_EQ(framesSent(camera()), picture);
  EXPECT_EQ(toldGpio(camera()), Texts{"focus_assist"});
  EXPECT_TRUE(eventually([] { return camera().exec({"/usr/bin/killall", "-q", "-0", "count"}) != 0; }));

  // A fixed mode has the picture without the message and the program.
  camera().clearJournal();
  enter("day");
  EXPECT_EQ(toldGpio(camera()),
            (Texts{"filter", "filter", "adjust_mode:1", "focus_position", "focus_direction", "filter"}));
  EXPECT_EQ(framesSent(camera()), (Texts{"0x30", "0x21", "0x60", "0x20", "0x84", "0x84", "0x84"}));
  EXPECT_EQ(camera().journal("child"), Texts());
  EXPECT_EQ(shown(".assist.status"), "on");
  expect(".assist.status=off", k412);
  leaveMode();
  EXPECT_EQ(shown(".assist.status"), "off");

  // The daemon hears of it before it begins and after it has ended.
  camera().tell("gpio down");
  camera().clearJournal();
  expect(".assist.status=on", k500);
  EXPECT_EQ(framesSent(camera()), Texts());
  expect(".assist.status=off", k500);
  EXPECT_EQ(framesSent(camera()), picture);
}

/** Waits until the lens rests and every report has been answered; where a filter is named, that of its move too. */
bool comesToRest(const Camera& camera, const std::string& filter = {}) {
  const std::string move = "camera.focus.gpiofrom.icr_status=" + filter;
  return eventually([&] {
    const Texts reports = camera.journalFields("gpio", "text");
    if (!filter.empty() && std::ranges::find(reports, move) == reports.end()) return false;
    const std::string state = camera.tell("gpio show");
    return Camera::field(state, "drive") == "idle" && Camera::field(state, "waiting") == "0";
  });
}

/** The lens of the simulated camera plays it all: the filter goes where the picture wants it, runs end by themselves.
 */
TEST(FocusPlayed, AnAdjustmentAndAPowerCut) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.tell("gpio report=on follow=on run=20");
  expectAnswers(camera, {{"camera.focus.gpiofrom.status=stop", k202}});
  camera.clearJournal();
  expectAnswers(camera, {{"camera.focus.adjust_mode=night", kOk}});
  ASSERT_TRUE(comesToRest(camera, "night"));
  expectRows(camera, kFocusFile, {"FOCUS_IR=night"});
  expectAnswers(camera, {{"camera.focus.status", shows("stop")}, {"camera.focus.nightfocus=7", kOk}});
  ASSERT_TRUE(comesToRest(camera));
  expectRows(camera, kFocusFile, {"NIGHTFOCUS_OFFSET=7"});
  expectAnswers(camera, {{"camera.focus.adjust_mode=select", kOk}});
  ASSERT_TRUE(comesToRest(camera, "day"));
  expectAnswers(camera, {{"camera.focus.status", shows("stop")}});
  expectRows(camera, kFocusFile, {"FOCUS_IR=day", "AF_ICR_FLG=0"});

  // The light goes, the filter moves, and the power goes before the focus is corrected.
  camera.tell("gpio stick=lens");
  camera.ask("camera.scene.image.true_daynight=bw");
  EXPECT_TRUE(eventually([&] { return camera.ask("camera.focus.status") == "camera.focus.status=adjusting&200 OK"; }));
  expectRows(camera, kFocusFile, {"AF_ICR_FLG=1"});
  const std::string date = camera.read(kTmpDate);
  camera.cut();
  camera.clearJournal();
  ASSERT_TRUE(camera.up());
  EXPECT_EQ(camera.read(kSavedDate), date);
  expectAnswers(
      camera, {{"camera.focus.date.status", shows(date.substr(0, 19))}, {"camera.focus.status", shows("initialize")}});
  const Texts dsp = camera.journal("dsp");
  const auto focus = std::ranges::find_if(dsp, [](const auto& line) { return Camera::field(line, "addr") == "0x84"; });
  ASSERT_NE(focus, dsp.end());
  EXPECT_EQ(Camera::field(*focus, "blackout"), "1");
  expectAnswers(camera, {{"camera.focus.gpiofrom.status=stop", k202}});
  expectRows(camera, kFocusFile, {"AF_ICR_FLG=0"});

  // A flag keeps a date; a start without one keeps none.
  for (const auto& [flag, kept] : {std::pair{"1", "this start"}, {"0", "before"}}) {
    camera.setRow(kFocusFile, "BAF_POS_INIT_FLG", flag);
    camera.setRow(kFocusFile, "AF_ICR_FLG", "0");
    camera.write(kTmpDate, "this start\n");
    camera.write(kSavedDate, "before\n");
    ASSERT_TRUE(camera.reboot());
    expectAnswers(camera, {{"camera.focus.date.status", shows(kept)}});
  }
}

TEST(FocusModels, WhatAModelLacks) {
  Camera without({.without = {"FOCUS_CTRL"}});
  ASSERT_TRUE(without.up());
  expectEach(without, "", {"camera.focus.gpiofrom.status", "camera.dspadjust.focus"}, k461);
  const Texts addresses = without.journalFields("dsp", "addr");
  EXPECT_EQ(std::ranges::find(addresses, "0x84"), addresses.end());
  expectAnswers(without, {{"camera.focusassist.status", shows("off")}});

  Camera fixed({.without = {"BACK_FOCUS_MODEL"}});
  ASSERT_TRUE(fixed.up());
  expectAnswers(fixed, {{"camera.focus.abf_pos=initialize", k461},
                        {"camera.focus.adjust_mode=init_pos", k451},
                        {"camera.focus.adjust_mode", shows("select")}});
}

}  // namespace
}  // namespace test
