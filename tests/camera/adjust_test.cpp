// Service values and calibration: where each stands in which frame, and the adjustment procedures.

#include <algorithm>
#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kServiceFile = "flash/sysconfig/scpservice.conf";
constexpr const char* kCalibrationFile = "sysinfo/kq40_camdsp.conf";
constexpr const char* kCalibrationHint = "&202 Accepted(camera.dspadjust.status=save)";

/** Parameters that share a frame: values for all of them in their order, and the frame behind the last. */
struct Frame {
  std::string path;  ///< what stands before the names
  std::string values;
  std::string raw;
};

const Frame kFrames[] = {
    {"adjust_service.alc.", "speed=100 err_en=1599 err_high=1600 err_low=259 restart=5 dn_hysteresis=30",
     "38643f0640060301051e0000"},
    {"adjust_service.iris.", "start=3318 intgain=3200 progain=3199 limit_high=3317 limit_low=259",
     "39f60c800c7f0cf50c030100"},
    {"adjust_service.atw.", "speed=255 err_en=1599 err_high=1600 err_low=259 restart=100", "58ff3f064006030164000000"},
    {"adjust_service.lumx.", "speed=255 gain=5", "78ff05000000000000000000"},
    {"dspadjust.pre_wb_", "lowr=65535 normr=65534 highr=259", "51fffffeff03010000000000"},
    {"dspadjust.pre_wb_", "lowb=65535 normb=65534 highb=259", "52fffffeff03010000000000"},
    {"dspadjust.", "irygain1=255 iryhue1=254 ibygain1=1 ibyhue1=2", "70fffe010200000000000000"},
    {"adjust_service.range.wide.", "r=-15 b=16 g_low=3 g_norm=4 g_high=5 mg_low=6 mg_norm=7 mg_high=8",
     "59f110030405060708000000"},
    {"adjust_service.range.narrow.", "r=-14 b=15 g_low=4 g_norm=5 g_high=6 mg_low=7 mg_norm=8 mg_high=9",
     "5af20f040506070809000000"},
    // second names of the same
    {"adjust_service.atw.range.wide.", "r=-13 b=14 g_low=2 g_norm=3 g_high=4 mg_low=5 mg_norm=6 mg_high=7",
     "59f30e020304050607000000"},
    {"adjust_service.atw.range.narrow.", "r=-12 b=13 g_low=1 g_norm=2 g_high=3 mg_low=4 mg_norm=5 mg_high=6",
     "5af40d010203040506000000"},
};

class Adjust : public CameraTest {
 protected:
  void TearDown() override {
    camera().tell("dsp clear");
    camera().tell("defect up");
    camera().ask("camera.dspadjust.adjustmode=0");
  }
};

TEST_F(Adjust, EveryValueHasItsPlaceInAFrame) {
  camera().ask("camera.adjust_service.atw.err_low=1&camera.adjust_service.atw.err_high=1600");
  for (const Frame& frame : kFrames) {
    const auto forEach = [&](const std::function<void(const std::string& path, const std::string& value)>& action) {
      std::istringstream values(frame.values);
      for (std::string value; values >> value;)
        action("camera." + frame.path + pathOf(value), value.substr(value.find('=')));
    };
    camera().tell("dsp fail=0x" + frame.raw.substr(0, 2));
    forEach([](const std::string& path, const std::string& value) {
      const std::string before = camera().ask(path);
      expectAnswers(camera(), {{path + value, k500}, {path, before}});
    });
    camera().tell("dsp clear");
    camera().clearJournal();
    forEach([](const std::string& path, const std::string& value) {
      camera().ask(path + value);
      EXPECT_EQ(camera().ask(path), path + value + kOk);
    });
    const Texts sent = camera().journalFields("dsp", "raw");
    EXPECT_EQ(sent.size(), static_cast<size_t>(std::ranges::count(frame.values, '=')));
    EXPECT_EQ(sent.back(), frame.raw) << frame.path;
  }
}

TEST_F(Adjust, AnUpperLimitStaysAboveItsLowerOne) {
  for (const std::string limit : {"alc.err", "iris.limit", "atw.err"}) {
    const std::string high = "camera.adjust_service." + limit + "_high";
    const std::string low = "camera.adjust_service." + limit + "_low";
    camera().ask(low + "=7&" + high + "=100");
    camera().clearJournal();
    expectAnswers(camera(), {{high + "=7", k412}, {low + "=100", k412}});
    EXPECT_EQ(camera().journal("dsp"), Texts()) << limit;
    camera().ask(high + "=8&" + low + "=6&" + low + "=7");
    expectAnswers(camera(), {{high, shows("8")}, {low, shows("7")}});
  }
  EXPECT_TRUE(camera().isLogged("limit_low larger than limit_high"));
  camera().ask("camera.adjust_service.alc.dn_hysteresis=31&camera.adjust_service.range.narrow.mg_high=17");
  EXPECT_TRUE(camera().isLogged("dn_hysteresis out of range"));
  EXPECT_TRUE(camera().isLogged("n_mg_high out of range"));
}

/** Service values are in the stored image at once, calibration waits for its save. */
TEST_F(Adjust, WhatWaitsForWhichSave) {
  for (const std::string path : {"camera.adjust_service.alc.speed", "camera.dspadjust.irygain1"}) {
    camera().ask(path + "=007");
    EXPECT_EQ(camera().ask(path), path + shows("7"));
    camera().ask(path.substr(0, path.find('.', 7)) + ".status=save");
    camera().ask(path + "=8");
  }
  for (const char* word : {"whitepointsave", "restore", ""})
    camera().ask(std::string("camera.dspadjust.status=") + word);
  expectRows(camera(), kServiceFile, {"ALC_SPEED=7"});
  expectRows(camera(), kCalibrationFile, {"IRYGAIN1=7"});
  camera().flash("full");
  expectAnswers(camera(), {{"camera.adjust_service.status=save", k500}});
  camera().flash("off");
}

/** A value that is kept for the next start leaves the DSP, and what its frame will carry, alone. */
TEST_F(Adjust, KeptValues) {
  for (const std::string name : {"lowr", "normr", "highr", "lowb", "normb", "highb"}) {
    const std::string path = "camera.dspadjust.pre_wb_" + name;
    camera().ask(path + "=1000");
    camera().clearJournal();
    expectAnswers(camera(), {{path + "_keep=0065534", kCalibrationHint}, {path, shows("65534")}});
    EXPECT_EQ(camera().journal("dsp"), Texts());
  }
  camera().ask("camera.dspadjust.pre_wb_lowr=1&camera.dspadjust.pre_wb_highr=2");
  EXPECT_EQ(Camera::field(camera().journal("dsp").back(), "normal"), "1000");
}

TEST_F(Adjust, IrisOffsetAndAreas) {
  const std::string evref = "camera.dspadjust.iris.evref";
  const std::string area = "camera.dspadjust.ae.area";
  camera().clearJournal();
  expectAnswers(camera(), {{evref + "=-32", kOk},
                           {evref, shows("-32")},
                           {area + "=0-0-100-100", kOk},
                           {area, shows("0-0-1918-1078")},
                           {area + "=s10-s20-s30-40", kOk},
                           {area, shows("10-20-30-431")},
                           {area + "=s10-s20-s10-s30", k451},
                           {area + "=1-2-3", k451}});
  EXPECT_EQ(camera().journalFields("dsp", "raw"),
            (Texts{"3001e0000000000000000000", "31000000007e073604000000", "310a0014001e00af01000000"}));
  camera().tell("dsp fail=0x31");
  expectAnswers(camera(), {{area + "=0-0-100-100", k500}, {area, shows("10-20-30-431")}});
  camera().tell("dsp clear");
  camera().ask("camera.dspadjust.status=save");
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(camera().ask(evref), evref + shows("-32"));
  const Texts frames = camera().journalFields("dsp", "raw");
  EXPECT_NE(std::ranges::find(frames, "300100000000000000000000"), frames.end()) << "the offset ends with the start";
}

TEST_F(Adjust, SensorAndFactoryPosition) {
  const std::string focus = "camera.dspadjust.focus";
  const auto stored = [] { return camera().row("sysinfo/kq40_autofocus.conf", "FOCUS_FACTORY_POS"); };
  camera().tell("gpio position=513");
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.dspadjust.sensor=2", kOk}, {focus, shows("513")}, {focus + "=set", kOk}});
  EXPECT_EQ(stored(), "513");
  EXPECT_EQ(camera().journalFields("dsp", "raw"), (Texts{"fe0200000000000000000000", "840001000001020000000000"}));
  expectAnswers(camera(), {{focus + "=initialize", kOk}});
  EXPECT_EQ(stored(), "0");
  camera().ask("camera.focus.gpiofrom.status=adjusting");
  expectAnswers(camera(), {{focus + "=set", k412}, {focus + "=reset", k451}});
  camera().ask("camera.focus.gpiofrom.status=ready");
  camera().tell("gpio down");
  expectAnswers(camera(), {{focus + "=set", k500}});
  camera().tell("gpio up");
}

/** The steps of a procedure, from the state that the steps before have left. */
TEST_F(Adjust, Procedures) {
  const std::string mode = "camera.dspadjust.adjustmode";
  const std::string step = "camera.dspadjust.subadjust";
  const std::string count = "camera.dspadjust.static_num";
  camera().tell("dsp subadjust=ok:300:400 run_reads=1");
  camera().tell("defect run=60000000 static_count=9");
  expectSequence(camera(), mode, "=2 200  =4 412");
  expectSequence(camera(), step, "=256 457  =a 451  =7 500  =1 200  =3 500  ? 0  ? 2  =3 200  =1 500  ? 0  ? 4");
  expectSequence(camera(), step, "=5 200  ? 0  ? 6");
  expectAnswers(camera(), {{"camera.dspadjust.pre_wb_normr", shows("300")},
                           {"camera.dspadjust.pre_wb_lowb", shows("400")},
                           {mode + "=1", kOk}});
  // A step is known by its number alone.
  expectSequence(camera(), step,
                 "? 6  =1 500  =0 200  =3 500  =1 200  ? 2  =2 500  =3 200  ? 3  =0 200  =1 200  =3 200");
  expectSequence(camera(), mode, "=3 200");
  expectSequence(camera(), step, "? &500  =1 500  =0 200");
  expectSequence(camera(), mode, "? 3");
  EXPECT_EQ(camera().journalFields("defect", "what"),
            (Texts{"static_start", "static_status", "static_stop", "static_start"}));
  camera().ask(mode + "=1&" + step + "=1&" + step + "=3");
  camera().tell("defect static=completed");
  expectAnswers(camera(), {{step, shows("4")}, {count + "=300", k457}});
  camera().tell("defect static_count=12");
  expectAnswers(camera(), {{count, shows("12")}});
  camera().ask(step + "=0&" + step + "=1&" + step + "=3");
  camera().tell("defect static=error");
  expectAnswers(camera(), {{step, shows("255")}});
  camera().tell("defect down");
  expectAnswers(camera(), {{step, shows("255")}, {step + "=0", k500}, {count, k500}});
  camera().ask(mode + "=0&" + mode + "=4");
  camera().tell("dsp fail=0x30");
  expectAnswers(camera(), {{mode + "=0", k500}});
  camera().tell("dsp clear");
  camera().clearJournal();
  expectAnswers(camera(), {{mode + "=0", kOk}});
  EXPECT_EQ(camera().journalFields("dsp", "mode"), Texts{"0"});
}

TEST_F(Adjust, Information) {
  const std::string path = "camera.adjust_service.information";
  const std::string answer = camera().ask(path);
  EXPECT_EQ(answer.size(), path.size() + 1 + 4 * 22 + 3 + std::string(kOk).size());
  EXPECT_TRUE(answer.starts_with(path + "=5343500100020700000000-2012")) << answer;
  camera().tell("dsp fail=zr_get_va_data:0xe2");
  expectAnswers(camera(), {{path, k500}});
  EXPECT_TRUE(camera().isLogged("ID = 2 : reg = E2"));
}

/** A built-in lens has the rows of the first one; what a start loads goes by the stored text alone. */
TEST_F(Adjust, ASecondLensThatTheModelCannotHave) {
  camera().ask("camera.adjust_service.iris.start=33&camera.adjust_service.status=save");
  camera().setRow("flash/sysconfig/camera.conf", "IRIS_LENSTYPE", "lens2");
  camera().setRow(kServiceFile, "SUB_IRIS_START", "44");
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  expectAnswers(camera(), {{"camera.adjust_service.iris.start", shows("33")}});
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
  camera.ask(start + "=11&camera.adjust_service.alc.dn_hysteresis=6");
  expectAnswers(camera, {{"camera.iris.lenstype=lens2", "&202 Accepted(camera.status=save)"},
                         {start, shows("3000")},
                         {"camera.adjust_service.iris.limit_low=3318", k412}});
  camera.ask(start + "=22&camera.adjust_service.status=save");
  expectRows(camera, kServiceFile,
             {"IRIS_START=11", "SUB_IRIS_START=22", "DN_HYSTERESIS_EASYDN=6", "DN_HYSTERESIS_TRUEDN=21"});
  camera.ask("camera.status=save");
  ASSERT_TRUE(camera.reboot());
  EXPECT_EQ(camera.ask(start), start + shows("22"));
}

}  // namespace
}  // namespace test
