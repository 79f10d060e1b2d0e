// Service values and calibration: every leaf from a copy of its figures, and the adjustment procedures.

#include <algorithm>
#include <map>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kServiceFile = "flash/sysconfig/scpservice.conf";
constexpr const char* kCalibrationFile = "sysinfo/kq40_camdsp.conf";
const std::string kServiceHint = "&202 Accepted(camera.adjust_service.status=save)";
const std::string kCalibrationHint = "&202 Accepted(camera.dspadjust.status=save)";

/** A value that the DSP takes: its range, its row, and where its bytes stand in which frame. */
struct Leaf {
  std::string path;
  int low;
  int high;
  std::string key;
  std::string frame;
  int at;
  int bytes;
  /** Another limit that this one must stay above (1) or below (-1). */
  std::string partner = {};
  int side = 0;
};

std::vector<Leaf> serviceLeaves() {
  std::vector<Leaf> leaves{
      {"alc.speed", 1, 100, "ALC_SPEED", "0x38", 1, 1},
      {"alc.err_en", 0, 1600, "ALC_ERR_EN", "0x38", 2, 2},
      {"alc.err_high", 0, 1600, "ALC_ERR_H", "0x38", 4, 2, "alc.err_low", 1},
      {"alc.err_low", 0, 1600, "ALC_ERR_L", "0x38", 6, 2, "alc.err_high", -1},
      {"alc.restart", 0, 5, "ALC_RESTART", "0x38", 8, 1},
      {"alc.dn_hysteresis", 6, 30, "DN_HYSTERESIS_TRUEDN", "0x38", 9, 1},
      {"iris.start", 0, 3318, "IRIS_START", "0x39", 1, 2},
      {"iris.intgain", 1, 3200, "IRIS_INTGAIN", "0x39", 3, 2},
      {"iris.progain", 1, 3200, "IRIS_PROGAIN", "0x39", 5, 2},
      {"iris.limit_high", 0, 3318, "IRIS_LIMIT_H", "0x39", 7, 2, "iris.limit_low", 1},
      {"iris.limit_low", 0, 3318, "IRIS_LIMIT_L", "0x39", 9, 2, "iris.limit_high", -1},
      {"atw.speed", 1, 255, "ATW_SPEED", "0x58", 1, 1},
      {"atw.err_en", 1, 1600, "ATW_ERR_EN", "0x58", 2, 2},
      {"atw.err_high", 1, 1600, "ATW_ERR_H", "0x58", 4, 2, "atw.err_low", 1},
      {"atw.err_low", 1, 1600, "ATW_ERR_L", "0x58", 6, 2, "atw.err_high", -1},
      {"atw.restart", 0, 100, "ATW_RESTART", "0x58", 8, 1},
      {"lumx.speed", 1, 255, "ET_LUMX_SPEED", "0x78", 1, 1},
      {"lumx.gain", 1, 5, "ET_LUMX_GAIN", "0x78", 2, 1},
  };
  const Leaf ranges[] = {
      {"range.wide.r", -15, 16, "W_R_RANGE", "0x59", 1, 1},
      {"range.wide.b", -15, 16, "W_B_RANGE", "0x59", 2, 1},
      {"range.wide.g_low", 1, 16, "W_G_RANGE_LOW", "0x59", 3, 1},
      {"range.wide.g_norm", 1, 16, "W_G_RANGE_NORM", "0x59", 4, 1},
      {"range.wide.g_high", 1, 16, "W_G_RANGE_HIGH", "0x59", 5, 1},
      {"range.wide.mg_low", 1, 16, "W_MG_RANGE_LOW", "0x59", 6, 1},
      {"range.wide.mg_norm", 1, 16, "W_MG_RANGE_NORM", "0x59", 7, 1},
      {"range.wide.mg_high", 1, 16, "W_MG_RANGE_HIGH", "0x59", 8, 1},
      {"range.narrow.r", -15, 16, "N_R_RANGE", "0x5a", 1, 1},
      {"range.narrow.b", -15, 16, "N_B_RANGE", "0x5a", 2, 1},
      {"range.narrow.g_low", 1, 16, "N_G_RANGE_LOW", "0x5a", 3, 1},
      {"range.narrow.g_norm", 1, 16, "N_G_RANGE_NORM", "0x5a", 4, 1},
      {"range.narrow.g_high", 1, 16, "N_G_RANGE_HIGH", "0x5a", 5, 1},
      {"range.narrow.mg_low", 1, 16, "N_MG_RANGE_LOW", "0x5a", 6, 1},
      {"range.narrow.mg_norm", 1, 16, "N_MG_RANGE_NORM", "0x5a", 7, 1},
      {"range.narrow.mg_high", 1, 16, "N_MG_RANGE_HIGH", "0x5a", 8, 1},
  };
  for (Leaf leaf : ranges) {
    leaves.push_back(leaf);
    leaf.path = "atw." + leaf.path;  // the same values, at a second place
    leaves.push_back(leaf);
  }
  for (Leaf& leaf : leaves) {
    leaf.path = "camera.adjust_service." + leaf.path;
    if (!leaf.partner.empty()) leaf.partner = "camera.adjust_service." + leaf.partner;
  }
  return leaves;
}

std::vector<Leaf> calibrationLeaves() {
  std::vector<Leaf> leaves{
      {"pre_wb_lowr", 0, 65535, "PREWBLOWR", "0x51", 1, 2},   {"pre_wb_normr", 0, 65535, "PREWBNORMR", "0x51", 3, 2},
      {"pre_wb_highr", 0, 65535, "PREWBHIGHR", "0x51", 5, 2}, {"pre_wb_lowb", 0, 65535, "PREWBLOWB", "0x52", 1, 2},
      {"pre_wb_normb", 0, 65535, "PREWBNORMB", "0x52", 3, 2}, {"pre_wb_highb", 0, 65535, "PREWBHIGHB", "0x52", 5, 2},
      {"irygain1", 0, 255, "IRYGAIN1", "0x70", 1, 1},         {"iryhue1", 0, 255, "IRYHUE1", "0x70", 2, 1},
      {"ibygain1", 0, 255, "IBYGAIN1", "0x70", 3, 1},         {"ibyhue1", 0, 255, "IBYHUE1", "0x70", 4, 1},
  };
  for (Leaf& leaf : leaves)
    leaf.path = "camera.dspadjust." + leaf.path;
  return leaves;
}

std::string assignment(const std::string& path, int value) { return path + "=" + std::to_string(value); }

/** The number in the leaf's bytes of the one frame that was sent since the journal was cleared; -1 for other frames. */
int sentNumber(const Camera& camera, const Leaf& leaf) {
  const Texts frames = camera.journal("dsp");
  if (frames.size() != 1 || Camera::field(frames[0], "addr") != leaf.frame) return -1;
  const std::string bytes = Camera::field(frames[0], "raw");
  int number = 0;
  for (int i = leaf.bytes - 1; i >= 0; --i)
    number = number << 8 | std::stoi(bytes.substr(static_cast<size_t>(2 * (leaf.at + i)), 2), nullptr, 16);
  return number;
}

class Adjust : public CameraTest {
 protected:
  void TearDown() override {
    camera().tell("dsp clear");
    camera().tell("defect up");
    camera().ask("camera.dspadjust.adjustmode=0");
  }

  /** Takes the ends of the range and nothing outside; leaves the value at the end that is given. */
  static void expectRange(const Leaf& leaf, const std::string& hint) {
    SCOPED_TRACE(leaf.path);
    int low = leaf.low;
    int high = leaf.high;
    if (leaf.side != 0) {
      const int limit = leaf.side > 0 ? low : high;
      EXPECT_EQ(camera().ask(assignment(leaf.partner, limit)), leaf.partner + hint);
      camera().clearJournal();
      EXPECT_EQ(camera().ask(assignment(leaf.path, limit)), leaf.path + k412) << "as much as the partner";
      leaf.side > 0 ? ++low : --high;
    }
    camera().clearJournal();
    for (const int outside : {leaf.low - 1, leaf.high + 1})
      EXPECT_EQ(camera().ask(assignment(leaf.path, outside)), leaf.path + k457) << outside;
    for (const char* text : {"x", "1.0", "0x1"})
      EXPECT_EQ(camera().ask(leaf.path + "=" + text), leaf.path + k451) << text;
    EXPECT_EQ(camera().journal("dsp"), Texts());
    for (const int value : {low, high}) {
      camera().clearJournal();
      EXPECT_EQ(camera().ask(assignment(leaf.path, value)), leaf.path + hint);
      EXPECT_EQ(sentNumber(camera(), leaf), value & (leaf.bytes == 1 ? 0xff : 0xffff));
      EXPECT_EQ(camera().ask(leaf.path), assignment(leaf.path, value) + kOk);
    }
  }
};

TEST_F(Adjust, EveryValue) {
  for (const auto& [leaves, hint] :
       {std::pair{serviceLeaves(), kServiceHint}, std::pair{calibrationLeaves(), kCalibrationHint}}) {
    for (const Leaf& leaf : leaves) {
      expectRange(leaf, hint);
      camera().tell("dsp fail=" + leaf.frame);
      EXPECT_EQ(camera().ask(assignment(leaf.path, leaf.high - 1)), leaf.path + k500);
      camera().tell("dsp clear");
    }
  }
  EXPECT_TRUE(camera().isLogged("dn_hysteresis out of range"));
  EXPECT_TRUE(camera().isLogged("n_mg_high out of range"));
  EXPECT_TRUE(camera().isLogged("limit_low larger than limit_high"));

  std::vector<Leaf> all = serviceLeaves();
  const std::vector<Leaf> calibration = calibrationLeaves();
  all.insert(all.end(), calibration.begin(), calibration.end());
  std::map<std::string, std::string> kept;
  for (const Leaf& leaf : all)
    kept[leaf.path] = camera().ask(leaf.path);
  EXPECT_EQ(camera().ask("camera.adjust_service.status=save"), std::string("camera.adjust_service.status") + kOk);
  EXPECT_EQ(camera().ask("camera.dspadjust.status=save"), std::string("camera.dspadjust.status") + kOk);
  ASSERT_TRUE(camera().reboot());
  for (const Leaf& leaf : all) {
    EXPECT_EQ(camera().ask(leaf.path), kept[leaf.path]);
    const bool isService = leaf.path.starts_with("camera.adjust_service");
    EXPECT_EQ(leaf.path + "=" + camera().row(isService ? kServiceFile : kCalibrationFile, leaf.key) + kOk,
              kept[leaf.path]);
  }
}

/** Service values are in the stored image at once, calibration waits for its save. */
TEST_F(Adjust, WhatWaitsForWhichSave) {
  const std::string service = "camera.adjust_service.alc.speed";
  const std::string calibration = "camera.dspadjust.irygain1";
  for (const std::string& path : {service, calibration}) {
    camera().ask(assignment(path, 7));
    camera().ask(path.substr(0, path.find('.', 7)) + ".status=save");
    camera().ask(assignment(path, 8));
  }
  EXPECT_EQ(camera().row(kServiceFile, "ALC_SPEED"), "7");
  for (const char* word : {"whitepointsave", "restore", ""})
    camera().ask(std::string("camera.dspadjust.status=") + word);
  EXPECT_EQ(camera().row(kCalibrationFile, "IRYGAIN1"), "7");
  expectAnswers(camera(), {{"camera.dspadjust.status=whitepointsave", "camera.dspadjust.status&200 OK"},
                           {"camera.dspadjust.status=all", std::string("camera.dspadjust.status") + k451},
                           {"camera.adjust_service.status=restore", std::string("camera.adjust_service.status") + k451},
                           {"camera.dspadjust.status", std::string("camera.dspadjust.status") + k405}});
}

TEST_F(Adjust, NumbersAreKeptInDecimals) {
  for (const std::string path : {"camera.adjust_service.alc.speed", "camera.adjust_service.iris.start",
                                 "camera.dspadjust.irygain1", "camera.dspadjust.pre_wb_lowr_keep"}) {
    camera().ask(path + "=007");
    EXPECT_EQ(camera().ask(path), path + "=7" + kOk);
  }
}

/** A value that is kept for the next start leaves the DSP, and what its frame will carry, alone. */
TEST_F(Adjust, KeptValues) {
  for (const Leaf& leaf : calibrationLeaves()) {
    if (leaf.bytes == 1) continue;
    camera().ask(assignment(leaf.path, 1000));
    camera().clearJournal();
    EXPECT_EQ(camera().ask(assignment(leaf.path + "_keep", 65535)), leaf.path + "_keep" + kCalibrationHint);
    EXPECT_EQ(camera().ask(assignment(leaf.path + "_keep", 65536)), leaf.path + "_keep" + k457);
    EXPECT_EQ(camera().journal("dsp"), Texts());
    EXPECT_EQ(camera().ask(leaf.path), assignment(leaf.path, 65535) + kOk);
  }
  camera().ask("camera.dspadjust.pre_wb_lowr=1&camera.dspadjust.pre_wb_highr=2");
  EXPECT_EQ(Camera::field(camera().journal("dsp").back(), "normal"), "1000");
}

TEST_F(Adjust, IrisOffsetAndAreas) {
  const std::string evref = "camera.dspadjust.iris.evref";
  const std::string area = "camera.dspadjust.ae.area";
  camera().clearJournal();
  expectAnswers(camera(), {{evref + "=-33", evref + k457},
                           {evref + "=33", evref + k457},
                           {evref + "=-32", evref + kOk},
                           {evref, evref + "=-32" + kOk},
                           {area + "=0-0-100-100", area + kOk},
                           {area, area + "=0-0-1918-1078" + kOk},
                           {area + "=s10-s20-s30-40", area + kOk},
                           {area, area + "=10-20-30-431" + kOk},
                           {area + "=s10-s20-s10-s30", area + k451},
                           {area + "=1-2-3", area + k451}});
  EXPECT_EQ(camera().journalFields("dsp", "raw"),
            (Texts{"3001e0000000000000000000", "31000000007e073604000000", "310a0014001e00af01000000"}));
  camera().tell("dsp fail=0x31");
  EXPECT_EQ(camera().ask(area + "=0-0-100-100"), area + k500);
  EXPECT_EQ(camera().ask(area), area + "=10-20-30-431" + kOk);
  camera().tell("dsp clear");
  camera().ask("camera.dspadjust.status=save");
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(camera().ask(evref), evref + "=-32" + kOk);
  const Texts frames = camera().journalFields("dsp", "raw");
  EXPECT_NE(std::ranges::find(frames, "300100000000000000000000"), frames.end()) << "the offset ends with the start";
}

TEST_F(Adjust, SensorAndFactoryPosition) {
  const std::string sensor = "camera.dspadjust.sensor";
  const std::string focus = "camera.dspadjust.focus";
  camera().tell("gpio position=513");
  camera().clearJournal();
  expectAnswers(camera(), {{sensor + "=0", sensor + k457},
                           {sensor + "=3", sensor + k457},
                           {sensor + "=one", sensor + k451},
                           {sensor + "=2", sensor + kOk},
                           {focus, focus + "=513" + kOk},
                           {focus + "=set", focus + kOk},
                           {focus + "=reset", focus + k451}});
  EXPECT_EQ(camera().row("sysinfo/kq40_autofocus.conf", "FOCUS_FACTORY_POS"), "513");
  EXPECT_EQ(camera().journalFields("dsp", "raw"), (Texts{"fe0200000000000000000000", "840001000001020000000000"}));
  EXPECT_EQ(camera().ask(focus + "=initialize"), focus + kOk);
  EXPECT_EQ(camera().row("sysinfo/kq40_autofocus.conf", "FOCUS_FACTORY_POS"), "0");
  camera().ask("camera.focus.gpiofrom.status=adjusting");
  EXPECT_EQ(camera().ask(focus + "=set"), focus + k412);
  EXPECT_EQ(camera().ask(focus + "=reset"), focus + k451);
  camera().ask("camera.focus.gpiofrom.status=ready");
}

/** The steps of a procedure, from the state that the steps before have left. */
TEST_F(Adjust, Procedures) {
  const std::string mode = "camera.dspadjust.adjustmode";
  const std::string step = "camera.dspadjust.subadjust";
  camera().tell("dsp subadjust=ok:300:400 run_reads=1");
  camera().tell("defect run=60000000 static_count=9");
  expectAnswers(camera(), {
                              {mode + "=5", mode + k457},
                              {mode + "=-1", mode + k457},
                              {mode + "=2", mode + kOk},
                              {mode + "=4", mode + k412},
                              {step + "=256", step + k457},
                              {step + "=a", step + k451},
                              {step + "=7", step + k500},
                              {step + "=1", step + kOk},
                              {step + "=3", step + k500},
                              {step, step + "=0" + kOk},
                              {step, step + "=2" + kOk},
                              {step + "=3", step + kOk},
                              {step + "=1", step + k500},
                              {step, step + "=0" + kOk},
                              {step, step + "=4" + kOk},
                              {step + "=5", step + kOk},
                              {step, step + "=0" + kOk},
                              {step, step + "=6" + kOk},
                              {"camera.dspadjust.pre_wb_normr", "camera.dspadjust.pre_wb_normr=300&200 OK"},
                              {"camera.dspadjust.pre_wb_lowb", "camera.dspadjust.pre_wb_lowb=400&200 OK"},
                              {mode + "=1", mode + kOk},
                              {step, step + "=6" + kOk},  // a step is known by its number alone
                              {step + "=1", step + k500},
                              {step + "=0", step + kOk},
                              {step + "=3", step + k500},
                              {step + "=1", step + kOk},
                              {step, step + "=2" + kOk},
                              {step + "=2", step + k500},
                              {step + "=3", step + kOk},
                              {step, step + "=3" + kOk},
                              {step + "=0", step + kOk},
                              {step + "=1", step + kOk},
                              {step + "=3", step + kOk},
                              {mode + "=3", mode + kOk},
                              {step, step + k500},
                              {step + "=1", step + k500},
                              {step + "=0", step + kOk},
                              {mode, mode + "=3" + kOk},
                          });
  EXPECT_EQ(camera().journalFields("defect", "what"),
            (Texts{"static_start", "static_status", "static_stop", "static_start"}));
  camera().ask(mode + "=1&" + step + "=1&" + step + "=3");
  camera().tell("defect static=completed");
  expectAnswers(camera(), {{step, step + "=4" + kOk},
                           {"camera.dspadjust.static_num=300", "camera.dspadjust.static_num" + std::string(k457)}});
  camera().tell("defect static_count=12");
  EXPECT_EQ(camera().ask("camera.dspadjust.static_num"), "camera.dspadjust.static_num=12&200 OK");
  camera().ask(step + "=0&" + step + "=1&" + step + "=3");
  camera().tell("defect static=error");
  EXPECT_EQ(camera().ask(step), step + "=255" + kOk);
  camera().ask(mode + "=0&" + mode + "=4");
  camera().tell("dsp fail=0x30");
  EXPECT_EQ(camera().ask(mode + "=0"), mode + k500);
  camera().tell("dsp clear");
  camera().clearJournal();
  EXPECT_EQ(camera().ask(mode + "=0"), mode + kOk);
  EXPECT_EQ(camera().journalFields("dsp", "mode"), Texts{"0"});
}

TEST_F(Adjust, Information) {
  const std::string path = "camera.adjust_service.information";
  const std::string answer = camera().ask(path);
  EXPECT_EQ(answer.size(), path.size() + 1 + 4 * 22 + 3 + std::string(kOk).size());
  EXPECT_TRUE(answer.starts_with(path + "=5343500100020700000000-2012")) << answer;
  camera().tell("dsp fail=zr_get_va_data:0xe2");
  EXPECT_EQ(camera().ask(path), path + k500);
  EXPECT_TRUE(camera().isLogged("ID = 2 : reg = E2"));
}

/** A built-in lens has the rows of the first one; what a start loads goes by the stored text alone. */
TEST_F(Adjust, ASecondLensThatTheModelCannotHave) {
  camera().ask("camera.adjust_service.iris.start=33&camera.adjust_service.status=save");
  camera().setRow("flash/sysconfig/camera.conf", "IRIS_LENSTYPE", "lens2");
  camera().setRow(kServiceFile, "SUB_IRIS_START", "44");
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(camera().ask("camera.adjust_service.iris.start"), "camera.adjust_service.iris.start=33&200 OK");
  const Texts starts = camera().journalFields("dsp", "start");
  EXPECT_NE(std::ranges::find(starts, "44"), starts.end());
  EXPECT_EQ(std::ranges::find(starts, "33"), starts.end());
  camera().setRow("flash/sysconfig/camera.conf", "IRIS_LENSTYPE", "lens1");
  ASSERT_TRUE(camera().reboot());
}

TEST(AdjustModels, RowsOfTheSecondLensAndOfAModelWithoutFilter) {
  Camera camera({.without = {"LENS_MODEL", "DAY_NIGHT"}});
  ASSERT_TRUE(camera.up());
  const std::string start = "camera.adjust_service.iris.start";
  const auto save = [&] { camera.ask("camera.adjust_service.status=save"); };
  camera.ask(start + "=11&camera.adjust_service.alc.dn_hysteresis=6");
  EXPECT_EQ(camera.ask("camera.iris.lenstype=lens2"), "camera.iris.lenstype&202 Accepted(camera.status=save)");
  EXPECT_EQ(camera.ask(start), start + "=3000" + kOk);
  EXPECT_EQ(camera.ask("camera.adjust_service.iris.limit_low=3318"),
            "camera.adjust_service.iris.limit_low" + std::string(k412));
  camera.ask(start + "=22");
  save();
  EXPECT_EQ(camera.row(kServiceFile, "IRIS_START"), "11");
  EXPECT_EQ(camera.row(kServiceFile, "SUB_IRIS_START"), "22");
  EXPECT_EQ(camera.row(kServiceFile, "DN_HYSTERESIS_EASYDN"), "6");
  EXPECT_EQ(camera.row(kServiceFile, "DN_HYSTERESIS_TRUEDN"), "21");
  camera.ask("camera.status=save");
  ASSERT_TRUE(camera.reboot());
  EXPECT_EQ(camera.ask(start), start + "=22" + kOk);
}

}  // namespace
}  // namespace test
