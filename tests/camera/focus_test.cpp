// The focus: what each word does in each mode and state, what the GPIO daemon reports, and an adjustment played by the
// simulated lens.

#include <algorithm>
#include <array>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* k202 = "&202 Accepted";
constexpr const char* kFocusFile = "sysinfo/kq40_autofocus.conf";
constexpr const char* kTmpDate = "flash/usr/obtmp.dat";
constexpr const char* kSavedDate = "sysinfo/obsave.dat";
const std::string kRoot = "camera.focus";

std::string pathOf(const std::string& item) { return kRoot + item.substr(0, item.find('=')); }

/** "name" or "name a" of all that the GPIO daemon got since the journal was cleared. */
Texts toldGpio(const Camera& camera) {
  camera.tell("gpio show");  // what was sent before this line has been dealt with
  Texts told;
  for (const std::string& line : camera.journal("gpio")) {
    if (Camera::field(line, "what") == "report") continue;
    const std::string a = Camera::field(line, "a");
    told.push_back(Camera::field(line, "what") + (a == "0" ? "" : " " + a));
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

  static std::string ask(const std::string& item) { return camera().ask(kRoot + item); }
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
    EXPECT_EQ(ask(".gpiofrom.status=stop"), pathOf(".gpiofrom.status") + k202);
  }
  static void enter(const std::string& mode) {
    EXPECT_EQ(ask(".adjust_mode=" + mode), pathOf(".adjust_mode") + kOk);
    setState("stop");
  }
  static void setOffset(int offset) {
    if (row("NIGHTFOCUS_OFFSET") == std::to_string(offset)) return;
    enter("night");
    EXPECT_EQ(ask(".nightfocus=" + std::to_string(offset)), pathOf(".nightfocus") + kOk);
    EXPECT_EQ(ask(".gpiofrom.status=stop"), pathOf(".gpiofrom.status") + k202);
  }
  static std::string row(const std::string& key) { return camera().row(kFocusFile, key); }
};

/** An order of the lens: the mode that it needs, what the daemon gets, the answers in states 0, 98 and 99. */
struct Order {
  std::string item;
  std::string mode;
  std::string message;
  std::array<const char*, 3> answers;
  const char* elsewhere;  ///< the answer in another mode
};

TEST_F(Focus, EveryOrderInEveryModeAndState) {
  const Order orders[] = {
      {"=stop", "day", "focus_auto", {kOk, kOk, kOk}, k412},
      {"=op_auto", "day", "focus_auto 1", {kOk, kOk, kOk}, k412},
      {"=op_auto_full", "day", "focus_auto 2", {kOk, kOk, kOk}, k412},
      {"=op_auto_full_forced", "day", "focus_auto 3", {kOk, kOk, kOk}, k412},
      {"=auto", "day", "", {k451, k451, k451}, k451},
      {".finefocus=1000", "day", "focus_step 1000", {k412, kOk, k412}, k412},
      {".finefocus=-1000", "day", "focus_step -1000", {k412, kOk, k412}, k412},
      {".finefocus=+", "day", "focus_step 1", {k412, kOk, k412}, k412},
      {".finefocus=-", "day", "focus_step -1", {k412, kOk, k412}, k412},
      {".finefocus=1001", "day", "", {k412, k457, k412}, k412},
      {".finefocus=-1001", "day", "", {k412, k457, k412}, k412},
      {".finefocus=++", "day", "", {k451, k451, k451}, k451},
      {".nightfocus=20", "night", "night_offset 20", {k412, kOk, k412}, k412},
      {".nightfocus=+", "night", "night_offset 20", {k412, kOk, k412}, k412},
      {".nightfocus=-", "night", "night_offset 19", {k412, kOk, k412}, k412},
      {".nightfocus=21", "night", "", {k412, k457, k412}, k412},
      {".nightfocus=-1", "night", "", {k412, k457, k412}, k412},
      {".nightfocus=x", "night", "", {k451, k451, k451}, k451},
      {".abf_pos=initialize", "init_pos", "factory", {k412, kOk, kOk}, k412},
      {".abf_pos=init", "init_pos", "", {k451, k451, k451}, k451},
  };
  const char* states[] = {"adjusting", "ready", "initialize"};
  for (const std::string mode : {"select", "day", "night", "init_pos"}) {
    if (mode != "select") enter(mode);
    for (const Order& order : orders) {
      for (size_t i = 0; i < std::size(states); ++i) {
        SCOPED_TRACE(order.item + " in " + mode + ", " + states[i]);
        setState(states[i]);
        camera().clearJournal();
        const std::string answer = mode == order.mode ? order.answers[i] : order.elsewhere;
        EXPECT_EQ(ask(order.item), pathOf(order.item) + answer);
        const bool isRun = answer == kOk;
        EXPECT_EQ(toldGpio(camera()), isRun ? Texts{order.message} : Texts());
        EXPECT_EQ(shown(".status"), isRun ? "adjusting" : states[i]);
      }
    }
    leaveMode();
  }
}

TEST_F(Focus, Reads) {
  camera().tell("gpio position=700 run=60000000");
  expectAnswers(camera(), {{"camera.focus", "camera.focus=stop&200 OK"},
                           {"camera.focus.progress", "camera.focus.progress=100&200 OK"},
                           {"camera.focus.finefocus", "camera.focus.finefocus&412 Precondition Failed"},
                           {"camera.focus.nightfocus", "camera.focus.nightfocus&412 Precondition Failed"},
                           {"camera.focus.abf_pos", "camera.focus.abf_pos&405 Method Not Allowed"}});
  EXPECT_EQ(camera().ask("camera.focus.abf_pos", UserClass::kDebug), "camera.focus.abf_pos" + std::string(k501));
  enter("day");
  EXPECT_EQ(ask(".finefocus"), "camera.focus.finefocus=700&200 OK");
  const std::pair<const char*, const char*> runs[] = {{"op_auto", "op_auto"},
                                                      {"op_auto_full", "op_auto_full"},
                                                      {"op_auto_full_forced", "op_auto_full_forced"},
                                                      {"stop", "stop"}};
  for (const auto& [word, kind] : runs) {
    EXPECT_EQ(ask(std::string("=") + word), std::string("camera.focus") + kOk);
    EXPECT_EQ(ask(""), std::string("camera.focus=") + kind + kOk);
  }
  setState("stop");
  EXPECT_EQ(ask(".finefocus=5"), std::string("camera.focus.finefocus") + kOk);
  EXPECT_EQ(ask(""), "camera.focus=stop&200 OK") << "a step is no automatic run";
  EXPECT_EQ(ask(".progress"), "camera.focus.progress=0&200 OK");
  EXPECT_EQ(ask(".run_counter=12"), std::string("camera.focus.run_counter") + kOk);
  EXPECT_EQ(ask(".run_counter"), "camera.focus.run_counter=12&200 OK");
}

/** A change of the mode: from where, with the filter where, and what it comes to. */
struct Change {
  std::string from;
  int filter;
  std::string word;
  const char* answer;
  Texts messages;
  std::string state;
  std::string mode;
  int offset = 0;
};

TEST_F(Focus, EveryChangeOfTheMode) {
  const Texts look{"filter"};
  const Texts entered{"filter", "filter", "adjust_mode 1"};
  const Texts changed{"filter", "adjust_mode 1"};
  const Change changes[] = {
      {"select", 1, "select", kOk, look, "initialize", "select"},
      {"select", 1, "day", kOk, entered, "stop", "day"},
      {"select", 0, "day", kOk, entered, "initialize", "day"},
      {"select", 1, "night", kOk, entered, "initialize", "night"},
      {"select", 0, "night", kOk, entered, "stop", "night"},
      {"select", 1, "init_pos", kOk, entered, "stop", "init_pos"},
      {"select", 0, "init_pos", kOk, entered, "initialize", "init_pos"},
      {"select", 1, "Day", k451, {}, "initialize", "select"},
      {"day", 1, "day", kOk, changed, "stop", "day"},
      {"day", 1, "night", kOk, changed, "initialize", "night"},
      {"day", 1, "init_pos", kOk, changed, "stop", "init_pos"},
      {"night", 0, "night", kOk, changed, "stop", "night"},
      {"night", 0, "day", kOk, changed, "initialize", "day"},
      {"init_pos", 1, "init_pos", kOk, changed, "initialize", "init_pos"},
      {"init_pos", 1, "day", kOk, changed, "stop", "day"},
      {"init_pos", 1, "night", kOk, changed, "initialize", "night"},
      // The way back: a filter that is back is looked at twice; without an offset it need not be back.
      {"day", 1, "select", kOk, {"filter", "filter", "filter", "adjust_mode"}, "stop", "select"},
      {"day", 0, "select", kOk, {"filter", "filter", "adjust_mode"}, "initialize", "select"},
      {"day", 0, "select", kOk, {"filter", "filter"}, "initialize", "select", 3},
      {"day", 2, "select", k412, look, "initialize", "day"},
      {"day", 2, "night", k412, look, "initialize", "day"},
      {"select", 2, "day", k500, look, "initialize", "select"},
  };
  for (const Change& change : changes) {
    SCOPED_TRACE(change.from + " to " + change.word + " with the filter at " + std::to_string(change.filter));
    setOffset(change.offset);
    leaveMode();
    if (change.from == "night") camera().tell("gpio icr=0");
    if (change.from != "select") enter(change.from);
    camera().tell("gpio icr=" + std::to_string(change.filter));
    camera().clearJournal();
    EXPECT_EQ(ask(".adjust_mode=" + change.word), pathOf(".adjust_mode") + change.answer);
    EXPECT_EQ(toldGpio(camera()), change.messages);
    EXPECT_EQ(shown(".status"), change.state);
    EXPECT_EQ(shown(".adjust_mode"), change.mode);
    camera().tell("gpio icr=1");
  }
  setState("adjusting");
  for (const char* word : {"select", "day", "night", "init_pos", "x"})
    EXPECT_EQ(ask(std::string(".adjust_mode=") + word), pathOf(".adjust_mode") + k412) << word;
  EXPECT_EQ(shown(".status"), "adjusting");
}

/** The filter has not come back: the return waits for the daemon's next report. */
TEST_F(Focus, AReportLeavesAFixedMode) {
  setOffset(3);
  leaveMode();
  enter("day");
  camera().tell("gpio icr=0");
  EXPECT_EQ(ask(".adjust_mode=select"), pathOf(".adjust_mode") + kOk);
  camera().clearJournal();
  EXPECT_EQ(ask(".gpiofrom.status=adjusting"), pathOf(".gpiofrom.status") + kOk);
  EXPECT_EQ(toldGpio(camera()), Texts());
  EXPECT_EQ(ask(".gpiofrom.status=TIMEOUT_ERROR"), pathOf(".gpiofrom.status") + k202);
  const Texts refresh{"focus_position", "focus_direction", "filter"};
  Texts told = refresh;
  told.insert(told.end(), {"focus_kind", "adjust_mode"});
  told.insert(told.end(), refresh.begin(), refresh.end());
  EXPECT_EQ(toldGpio(camera()), told);
  EXPECT_EQ(shown(".status"), "stop");
  camera().clearJournal();
  EXPECT_EQ(ask(".gpiofrom.status=5"), pathOf(".gpiofrom.status") + k202);
  EXPECT_EQ(shown(".status"), "TIMEOUT_ERROR");
  EXPECT_EQ(toldGpio(camera()).size(), 4U) << "left once";
}

TEST_F(Focus, AModeThatCannotBeEntered) {
  enter("day");
  camera().tell("gpio leave for=filter");  // the filter is read, message 35 is not taken
  EXPECT_EQ(ask(".adjust_mode=night"), pathOf(".adjust_mode") + k500);
  EXPECT_EQ(shown(".adjust_mode"), "day");
  EXPECT_EQ(camera().ask("camera.focus.status", UserClass::kDebug), "camera.focus.status=stop&200 OK");
  EXPECT_EQ(ask("=op_auto"), "camera.focus" + std::string(k500));
  camera().tell("gpio up");
  camera().tell("dsp fail=0x20");
  EXPECT_EQ(ask(".adjust_mode=night"), pathOf(".adjust_mode") + k500);
  EXPECT_EQ(shown(".status"), "initialize");
  camera().tell("dsp clear");
  EXPECT_EQ(camera().ask("camera.scene.image.true_daynight"), "camera.scene.image.true_daynight=color&200 OK");
  enter("night");
  EXPECT_EQ(camera().ask("camera.scene.image.true_daynight"), "camera.scene.image.true_daynight=color&200 OK")
      << "the picture of a mode is no setting";
}

/** A report of the daemon: with which offset and stored filter, in which state, and what it comes to. */
struct Report {
  std::string item;
  int offset;
  std::string state;
  std::string mode;
  const char* answer;
  Texts messages;
  std::string stateAfter;
  std::string flag;  ///< AF_ICR_FLG in the file afterwards, where it was "1" before
};

TEST_F(Focus, EveryReport) {
  const Texts refresh{"focus_position", "focus_direction", "filter", "focus_kind"};
  const Report reports[] = {
      {".gpiofrom.check_status=night", 0, "adjusting", "select", kOk, {}, "stop", "1"},
      {".gpiofrom.check_status=night", 3, "adjusting", "select", kOk, {}, "adjusting", "1"},
      {".gpiofrom.check_status=day", 3, "stop", "select", k202, {}, "stop", "1"},
      {".gpiofrom.check_status=day", 3, "stop", "day", k202, {}, "stop", "1"},
      {".gpiofrom.check_status=dusk", 3, "stop", "select", k457, {}, "stop", "1"},
      {".gpiofrom.icr_status=day", 3, "adjusting", "select", kOk, {}, "adjusting", "1"},
      {".gpiofrom.icr_status=day", 3, "stop", "select", k202, {"ir_start"}, "adjusting", "0"},
      {".gpiofrom.icr_status=day", 3, "stop", "day", k202, {"ir_start"}, "adjusting", "1"},
      {".gpiofrom.icr_status=night", 3, "stop", "select", kOk, {"ir_start"}, "adjusting", "1"},
      {".gpiofrom.icr_status=1", 3, "stop", "select", k457, {}, "stop", "1"},
      {".gpiofrom.status=stop", 3, "adjusting", "select", k202, refresh, "stop", "0"},
      {".gpiofrom.status=2", 3, "adjusting", "select", k202, refresh, "HIGH_LIGHT_ERROR", "0"},
      {".gpiofrom.status=ready", 3, "adjusting", "select", k202, {"focus_kind"}, "ready", "0"},
      {".gpiofrom.status=stop", 3, "adjusting", "day", k202, refresh, "stop", "1"},
      {".gpiofrom.status=0", 3, "stop", "select", kOk, {}, "adjusting", "1"},
      {".gpiofrom.status=6", 3, "stop", "select", k457, {}, "stop", "1"},
  };
  for (const Report& report : reports) {
    SCOPED_TRACE(report.item + " in " + report.mode + ", " + report.state);
    setOffset(3);
    leaveMode();
    EXPECT_EQ(ask(".gpiofrom.check_status=day"), pathOf(".gpiofrom.check_status") + k202);
    ASSERT_EQ(row("AF_ICR_FLG"), "1");
    if (report.offset == 0) setOffset(0);
    if (report.mode != "select") enter(report.mode);
    setState(report.state);
    camera().clearJournal();
    EXPECT_EQ(ask(report.item), pathOf(report.item) + report.answer);
    EXPECT_EQ(toldGpio(camera()), report.messages);
    EXPECT_EQ(shown(".status"), report.stateAfter);
    EXPECT_EQ(row("AF_ICR_FLG"), report.flag);
    EXPECT_EQ(std::filesystem::exists(camera().path(kTmpDate)), row("AF_ICR_FLG") == "1");
  }
}

TEST_F(Focus, ReportsThatCannotBeDealtWith) {
  setOffset(3);
  leaveMode();
  for (const std::string query : {"focus_position", "focus_direction", "filter"}) {
    camera().tell("gpio refuse for=" + query);
    EXPECT_EQ(ask(".gpiofrom.status=3"), pathOf(".gpiofrom.status") + k500) << query;
    EXPECT_EQ(shown(".status"), "LOW_LIGHT_ERROR") << query;
    setState("ready");
  }
  camera().tell("gpio refuse for=focus_kind");
  EXPECT_EQ(ask(".gpiofrom.check_status=day"), pathOf(".gpiofrom.check_status") + k202);
  EXPECT_EQ(ask(".gpiofrom.status=stop"), pathOf(".gpiofrom.status") + k202);
  EXPECT_EQ(row("AF_ICR_FLG"), "1") << "nobody says that the focus has been corrected";
  camera().tell("gpio none");
  camera().tell("dsp fail=0x84");
  EXPECT_EQ(ask(".gpiofrom.status=stop"), pathOf(".gpiofrom.status") + k500);
  camera().tell("dsp clear");
  camera().tell("gpio down");
  for (const char* item : {".gpiofrom.icr_status=day", ".gpiofrom.status=stop"})
    EXPECT_EQ(ask(item), pathOf(item) + k500) << item;
  EXPECT_EQ(shown(".status"), "stop") << "the state is the daemon's all the same";
  camera().tell("gpio up");
  camera().flash("full");
  for (const char* item : {".gpiofrom.check_status=day", ".gpiofrom.status=stop"})
    EXPECT_EQ(ask(item), pathOf(item) + k500) << item;
  EXPECT_TRUE(camera().isLogged(" CamFocus:Can not to save focus data to the focus_file"));
}

/** An announcement and "select" write their row alone, a report all of them. */
TEST_F(Focus, WhichRowsAreWritten) {
  setOffset(3);
  camera().tell("gpio position=100");
  leaveMode();
  enter("day");
  camera().tell("gpio position=777");
  EXPECT_EQ(ask(".finefocus"), "camera.focus.finefocus=777&200 OK");
  leaveMode();
  EXPECT_EQ(row("FOCUS_POS"), "777");
  camera().tell("gpio position=888");
  setState("stop");
  EXPECT_EQ(ask(".gpiofrom.check_status=day"), pathOf(".gpiofrom.check_status") + k202);
  EXPECT_EQ(row("AF_ICR_FLG"), "1");
  EXPECT_EQ(row("FOCUS_POS"), "777");
  EXPECT_EQ(ask(".adjust_mode=select"), pathOf(".adjust_mode") + kOk);
  EXPECT_EQ(row("AF_ICR_FLG"), "0");
  EXPECT_EQ(row("FOCUS_POS"), "777");
  camera().tell("gpio direction=0 icr=0");
  EXPECT_EQ(ask(".gpiofrom.status=stop"), pathOf(".gpiofrom.status") + k202);
  for (const auto& [key, value] : {std::pair{"FOCUS_POS", "888"}, {"FOCUS_DIR", "near"}, {"FOCUS_IR", "night"}})
    EXPECT_EQ(row(key), value);
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
  const std::string assist = "camera.focusassist.status";
  camera().ask("camera.scene.image.senseup_limit=0&camera.scene.shutter=250");
  EXPECT_EQ(camera().ask(assist + "=half"), assist + k451);
  camera().clearJournal();
  EXPECT_EQ(camera().ask(assist + "=on"), assist + kOk);
  EXPECT_TRUE(eventually([] { return camera().journalFields("child", "command") == Texts{"count"}; }));
  EXPECT_EQ(framesSent(camera()), picture);
  EXPECT_EQ(toldGpio(camera()), Texts{"focus_assist 1"});
  EXPECT_EQ(shown(".assist.status"), "on");
  EXPECT_EQ(camera().ask("camera.scene.shutter"), "camera.scene.shutter=250&200 OK");
  camera().clearJournal();
  EXPECT_EQ(ask(".assist.status=off"), pathOf(".assist.status") + kOk);
  EXPECT_EQ(framesSent(camera()), picture);
  EXPECT_EQ(toldGpio(camera()), Texts{"focus_assist"});
  EXPECT_EQ(shown(".assist.status"), "off");
  EXPECT_TRUE(eventually([] { return camera().exec({"/usr/bin/killall", "-q", "-0", "count"}) != 0; }));

  // A fixed mode has the picture without the message and the program.
  camera().clearJournal();
  enter("day");
  EXPECT_EQ(toldGpio(camera()),
            (Texts{"filter", "filter", "adjust_mode 1", "focus_position", "focus_direction", "filter"}));
  EXPECT_EQ(framesSent(camera()), (Texts{"0x30", "0x21", "0x60", "0x20", "0x84", "0x84", "0x84"}));
  EXPECT_EQ(camera().journal("child"), Texts());
  EXPECT_EQ(shown(".assist.status"), "on");
  EXPECT_EQ(ask(".assist.status=off"), pathOf(".assist.status") + k412);
  leaveMode();
  EXPECT_EQ(shown(".assist.status"), "off");

  // The daemon hears of it before it begins and after it has ended.
  camera().tell("gpio down");
  camera().clearJournal();
  EXPECT_EQ(ask(".assist.status=on"), pathOf(".assist.status") + k500);
  EXPECT_EQ(framesSent(camera()), Texts());
  EXPECT_EQ(ask(".assist.status=off"), pathOf(".assist.status") + k500);
  EXPECT_EQ(framesSent(camera()), picture);
}

/** Waits until the lens rests and every report has been answered; where a filter is named, that of its move too. */
bool comesToRest(const Camera& camera, const std::string& filter = {}) {
  const std::string move = "camera.focus.gpiofrom.icr_status=" + filter;
  return eventually([&] {
    const Texts reports = camera.journalFields("gpio", "text");
    if (!filter.empty() && std::ranges::find(reports, move) == reports.end()) return false;
    camera.tell("gpio show");
    const std::string state = camera.read("sandbox-output");
    return Camera::field(state, "drive") == "idle" && Camera::field(state, "waiting") == "0";
  });
}

/** The lens of the simulated camera plays it all: the filter goes where the picture wants it, runs end by themselves.
 */
TEST(FocusPlayed, AnAdjustmentAndAPowerCut) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.tell("gpio report=on follow=on run=20");
  ASSERT_EQ(camera.ask("camera.focus.gpiofrom.status=stop"), "camera.focus.gpiofrom.status&202 Accepted");
  camera.clearJournal();
  ASSERT_EQ(camera.ask("camera.focus.adjust_mode=night"), "camera.focus.adjust_mode&200 OK");
  ASSERT_TRUE(comesToRest(camera, "night"));
  EXPECT_EQ(camera.row(kFocusFile, "FOCUS_IR"), "night");
  EXPECT_EQ(camera.ask("camera.focus.status"), "camera.focus.status=stop&200 OK");
  EXPECT_EQ(camera.ask("camera.focus.nightfocus=7"), "camera.focus.nightfocus&200 OK");
  ASSERT_TRUE(comesToRest(camera));
  EXPECT_EQ(camera.row(kFocusFile, "NIGHTFOCUS_OFFSET"), "7");
  ASSERT_EQ(camera.ask("camera.focus.adjust_mode=select"), "camera.focus.adjust_mode&200 OK");
  ASSERT_TRUE(comesToRest(camera, "day"));
  EXPECT_EQ(camera.row(kFocusFile, "FOCUS_IR"), "day");
  EXPECT_EQ(camera.ask("camera.focus.status"), "camera.focus.status=stop&200 OK");
  EXPECT_EQ(camera.row(kFocusFile, "AF_ICR_FLG"), "0");

  // The light goes, the filter moves, and the power goes before the focus is corrected.
  camera.tell("gpio stick=lens");
  camera.ask("camera.scene.image.true_daynight=bw");
  EXPECT_TRUE(eventually([&] { return camera.ask("camera.focus.status") == "camera.focus.status=adjusting&200 OK"; }));
  EXPECT_EQ(camera.row(kFocusFile, "AF_ICR_FLG"), "1");
  const std::string date = camera.read(kTmpDate);
  camera.cut();
  camera.clearJournal();
  ASSERT_TRUE(camera.up());
  EXPECT_EQ(camera.read(kSavedDate), date);
  EXPECT_EQ(camera.ask("camera.focus.date.status"), "camera.focus.date.status=" + date.substr(0, 19) + kOk);
  EXPECT_EQ(camera.ask("camera.focus.status"), "camera.focus.status=initialize&200 OK");
  const Texts dsp = camera.journal("dsp");
  const auto focus = std::ranges::find_if(dsp, [](const auto& line) { return Camera::field(line, "addr") == "0x84"; });
  ASSERT_NE(focus, dsp.end());
  EXPECT_EQ(Camera::field(*focus, "blackout"), "1");
  EXPECT_EQ(camera.ask("camera.focus.gpiofrom.status=stop"), "camera.focus.gpiofrom.status&202 Accepted");
  EXPECT_EQ(camera.row(kFocusFile, "AF_ICR_FLG"), "0");

  // Any of the flags keeps a date; a start without one keeps none.
  for (const char* flag : {"BAF_POS_INIT_FLG", ""}) {
    if (*flag != '\0') camera.setRow(kFocusFile, flag, "1");
    camera.write(kTmpDate, std::string("date of ") + flag + "\n");
    camera.write(kSavedDate, "before\n");
    ASSERT_TRUE(camera.reboot());
    const std::string kept = *flag != '\0' ? std::string("date of ") + flag : "before";
    EXPECT_EQ(camera.ask("camera.focus.date.status"), "camera.focus.date.status=" + kept + kOk);
    if (*flag != '\0') camera.setRow(kFocusFile, flag, "0");
    if (*flag != '\0') camera.setRow(kFocusFile, "AF_ICR_FLG", "0");
  }
}

TEST(FocusModels, WhatAModelLacks) {
  Camera without({.without = {"FOCUS_CTRL"}});
  ASSERT_TRUE(without.up());
  for (const char* path :
       {"camera.focus", "camera.focus.status", "camera.focus.gpiofrom.status", "camera.dspadjust.focus"})
    EXPECT_EQ(without.ask(path), path + std::string(k461));
  for (const std::string& line : without.journal("dsp"))
    EXPECT_NE(Camera::field(line, "addr"), "0x84");
  EXPECT_EQ(without.ask("camera.focusassist.status"), "camera.focusassist.status=off&200 OK");

  Camera fixed({.without = {"BACK_FOCUS_MODEL"}});
  ASSERT_TRUE(fixed.up());
  EXPECT_EQ(fixed.ask("camera.focus.abf_pos=initialize"), "camera.focus.abf_pos" + std::string(k461));
  EXPECT_EQ(fixed.ask("camera.focus.adjust_mode=init_pos"), "camera.focus.adjust_mode" + std::string(k451));
  EXPECT_EQ(fixed.ask("camera.focus.adjust_mode"), "camera.focus.adjust_mode=select&200 OK");
}

}  // namespace
}  // namespace test
