#include <functional>

#include "dsp/PictureTables.h"
#include "tests/unit/dsp_fixture.h"

namespace {

using Call = std::function<int32_t(CameraDSP&)>;

class DspSetters : public DspTest {};

struct SetterCase {
  const char* name;
  Call call;
  const char* frame;
  int32_t row;
  const char* kept;
};

// Every setter once from the power-on state: its bytes, beside the other bytes of the frame, and the text it keeps.
TEST_F(DspSetters, SendTheWholeFrameAndKeepTheText) {
  const SetterCase cases[] = {
      {"colour", [](auto& d) { return d.setSaturation(17, true); }, "60 fc 00 01 00 02", camera_row::COLOR, "17"},
      {"enhance", [](auto& d) { return d.setEnhance(95, true); }, "60 00 08 01 00 02", camera_row::ENHANCE, "95"},
      {"pedestal 50", [](auto& d) { return d.setPedestal(50, true); }, "60 00 00 00 00 02", camera_row::PEDESTAL, "50"},
      {"pedestal 51", [](auto& d) { return d.setPedestal(51, true); }, "60 00 00 01 00 02", camera_row::PEDESTAL, "51"},
      {"gamma 0.6", [](auto& d) { return d.setImageGamma("0.6", true); }, "60 00 00 01 01 02", camera_row::GAMMA, "1"},
      {"gamma 0.3", [](auto& d) { return d.setImageGamma("0.3", true); }, "60 00 00 01 00 02", camera_row::GAMMA,
       "0.45"},
      {"lumx", [](auto& d) { return d.setLumxStatus(1, true); }, "60 00 00 01 00 01", camera_row::LUMX, "on"},
      {"3ddnr", [](auto& d) { return d.set3ddnr(3, true); }, "60 00 00 01 00 02 03", camera_row::DNR_3D, "high"},
      {"reference", [](auto& d) { return d.setAutoExposureReference(-128, true); }, "20 80 00 08 08 03 01",
       camera_row::AUTO_EXPOSURE_REFERENCE, "-128"},
      {"reference index", [](auto& d) { return d.setAutoExposureReferenceIndex(-2, true); }, "20 ce 00 08 08 03 01",
       camera_row::AUTO_EXPOSURE_REFERENCE, "-50"},
      {"blc", [](auto& d) { return d.setBLC("d", true); }, "20 00 04 08 08 03 01", camera_row::BLC, "d"},
      {"av/pk colour", [](auto& d) { return d.setAvPkColor(5, true); }, "20 00 00 05 08 03 01", camera_row::AVPK_COLOR,
       "5"},
      {"av/pk bw", [](auto& d) { return d.setAvPkBlackWhite(10, true); }, "20 00 00 08 0a 03 01", camera_row::AVPK_BW,
       "10"},
      {"easy day/night", [](auto& d) { return d.setHighGain(0, true); }, "20 00 00 08 08 00 01",
       camera_row::EASY_DAY_NIGHT, "bw"},
      {"true day/night", [](auto& d) { return d.setTrueDaynight(4, true); }, "20 00 00 08 08 04 01",
       camera_row::TRUE_DAY_NIGHT, "autoH"},
      {"true day/night without a word", [](auto& d) { return d.setTrueDaynight(9, true); }, "20 00 00 08 08 09 01",
       camera_row::TRUE_DAY_NIGHT, "color"},
      {"af switch", [](auto& d) { return d.setTrueDaynightAf(true); }, "82 01", camera_row::AUTO_FOCUS, "on"},
      {"senseup", [](auto& d) { return d.setSenseuplimit(60, true); }, "21 01 01 00 00 06 02",
       camera_row::SENSEUP_LIMIT, "60"},
      {"white balance", [](auto& d) { return d.setAWB(2, 255, 0, true); }, "40 02 ff", camera_row::WHITE_BALANCE,
       "autoN"},
      {"wb r", [](auto& d) { return d.setWhiteBalanceR(1); }, "40 01 01 00 57", camera_row::WB_R_GAIN, "1"},
      {"wb b", [](auto& d) { return d.setWhiteBalanceB(2); }, "40 01 54 00 02", camera_row::WB_B_GAIN, "2"},
      {"wb area",
       [](auto& d) {
         return d.setWBArea({1, 2, 0x1234, 4}, true);
       },
       "42 01 00 02 00 34 12 04", camera_row::WBAREAH2, "4660"},
      {"mask status", [](auto& d) { return d.setPrivacymaskStatus(1, true); }, "d2 01", camera_row::PRIVACY_MASK_STATUS,
       "on"},
      {"mask colour", [](auto& d) { return d.setPrivacymaskColor("A234fF", true); }, "d1 a2 a2 a2",
       camera_row::PRIVACY_MASK_COLOR, "A234fF"},
      {"iris", [](auto& d) { return d.setIrisMode("100", true); }, "30 02", camera_row::IRIS, "0"},
      {"sensor", [](auto& d) { return d.setSensor(2); }, "fe 02", camera_row::IRIS, "0"},
      {"ae area",
       [](auto& d) {
         return d.setAutoExposureArea({1, 2, 3, 4}, true);
       },
       "31 01 00 02 00 03 00 04", camera_row::IRIS, "0"},
      {"model", [](auto& d) { return d.setModelType(true, true, true); }, "f3 01 01", camera_row::IRIS, "0"},
      {"mode", [](auto& d) { return d.setDayNightMode(3); }, "f3 03", camera_row::IRIS, "0"},
      {"register", [](auto& d) { return d.writeRegister(dsp::frame::kRegisterData, 0xBEEF); }, "1a ef be",
       camera_row::IRIS, "0"},
  };
  setText(camera_row::IRIS, "0");
  for (const SetterCase& c : cases) {
    CameraDSP d(kDayNight);
    EXPECT_EQ(c.call(d), dsp::kDone) << c.name;
    EXPECT_EQ(sent(), Frames{c.frame}) << c.name;
    EXPECT_EQ(text(c.row), c.kept) << c.name;
    setText(camera_row::WHITE_BALANCE, "autoW");
    setText(camera_row::WB_R_GAIN, "84");
    setText(camera_row::WB_B_GAIN, "87");
    setText(camera_row::BLC, "off");
  }
}

/** One look at every frame that setters share, through values that do not move. */
Frames cachedFrames(CameraDSP& d, const std::function<Frames()>& sent) {
  EXPECT_EQ(d.set3ddnr(0, true) + d.setAvPkBlackWhite(7, true) + d.setSenseuplimit(0, true) + d.setEvref(0, true) +
                d.setWhiteBalanceMode(1) + d.setALC(-1, 0) + d.setIris(-1, 0) + d.setATW(-1, 0) + d.setATWWide(-1, 0) +
                d.setLUMX(-1, 0) + d.setPrivacymaskStatus(0, true),
            0);
  return sent();
}

TEST_F(DspSetters, RefusedValuesLeaveCacheAndTexts) {
  const struct {
    const char* name;
    Call call;
    int32_t result;
  } cases[] = {
      {"colour 101", [](auto& d) { return d.setSaturation(101, true); }, -6},
      {"colour -1", [](auto& d) { return d.setSaturation(-1, true); }, -6},
      {"colour *", [](auto& d) { return d.stepSaturation("*"); }, -7},
      {"enhance 101", [](auto& d) { return d.setEnhance(101, true); }, -6},
      {"pedestal -1", [](auto& d) { return d.setPedestal(-1, true); }, -6},
      {"3ddnr 4", [](auto& d) { return d.set3ddnr(4, true); }, -6},
      {"3ddnr -1", [](auto& d) { return d.set3ddnr(static_cast<uint32_t>(-1), true); }, -6},
      {"blc e", [](auto& d) { return d.setBLC("e", true); }, -6},
      {"reference 128", [](auto& d) { return d.setAutoExposureReference(128, true); }, -6},
      {"av/pk 4", [](auto& d) { return d.setAvPkColor(4, true); }, -6},
      {"av/pk 11", [](auto& d) { return d.setAvPkBlackWhite(11, true); }, -6},
      {"iris open", [](auto& d) { return d.setIrisMode("open", true); }, -6},
      {"priority 3", [](auto& d) { return d.setAutoExposurePriority(3, true); }, -6},
      {"easy 3", [](auto& d) { return d.setHighGain(3, true); }, -6},
      {"senseup 3", [](auto& d) { return d.setSenseuplimit(3, true); }, -7},
      {"shutter 29", [](auto& d) { return d.setShutterSpeed(0, 29, true); }, -6},
      {"shutter 10001", [](auto& d) { return d.setShutterSpeed(0, 10001, true); }, -6},
      {"shutter autox", [](auto& d) { return d.setShutterByName("autox"); }, -7},
      {"wb r 256", [](auto& d) { return d.setAWB(0, 256, 0, true); }, -6},
      {"wb b 256", [](auto& d) { return d.setAWB(0, 0, 256, true); }, -6},
      {"wb mode 4", [](auto& d) { return d.setAWB(4, 1, 1, true); }, 0},
      {"wb r -1", [](auto& d) { return d.setWhiteBalanceR(-1); }, -6},
      {"mask 2", [](auto& d) { return d.setPrivacymaskStatus(2, true); }, -6},
      {"mask colour 12x", [](auto& d) { return d.setPrivacymaskColor("12x", true); }, -1},
      {"mask colour empty", [](auto& d) { return d.setPrivacymaskColor("", true); }, -1},
      {"sensor 0", [](auto& d) { return d.setSensor(0); }, -6},
      {"register 65536", [](auto& d) { return d.writeRegister(dsp::frame::kRegisterAddress, 65536); }, -6},
      {"register 256", [](auto& d) { return d.writeRegister(dsp::frame::kDeviceId, 256); }, -6},
      {"lens3", [](auto& d) { return d.setLensType("lens3"); }, -6},
      {"alc speed 0", [](auto& d) { return d.setALC(scp_service_row::ALC_SPEED, 0); }, -6},
      {"iris start 3319", [](auto& d) { return d.setIris(scp_service_row::IRIS_START, 3319); }, -6},
      {"alc err_l on err_h", [](auto& d) { return d.setALC(scp_service_row::ALC_ERR_L, 400); }, -8},
      {"atw err_h on err_l", [](auto& d) { return d.setATW(scp_service_row::ATW_ERR_H, 20); }, -8},
      {"wide r -16", [](auto& d) { return d.setATWWide(scp_service_row::W_R_RANGE, -16); }, -6},
  };
  CameraDSP fresh(kPlain);
  const Frames before = cachedFrames(fresh, [] { return sent(); });
  const auto textsBefore = allTexts();
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    EXPECT_EQ(c.call(d), c.result) << c.name;
    EXPECT_EQ(sentWithProbes(), Frames{}) << c.name;
    EXPECT_EQ(allTexts(), textsBefore) << c.name;
    EXPECT_EQ(cachedFrames(d, [] { return sent(); }), before) << c.name;
  }
}

TEST_F(DspSetters, AFailedSendKeepsTheTextButNotTheFrame) {
  const struct {
    const char* name;
    const char* failing;
    Call call;
    int32_t row;
    Call sibling;
    const char* frame;
  } cases[] = {
      {"colour", "dsp 60", [](auto& d) { return d.setSaturation(100, true); }, camera_row::COLOR,
       [](auto& d) { return d.set3ddnr(0, true); }, "60 05 00 01 00 02"},
      {"reference", "dsp 20", [](auto& d) { return d.setAutoExposureReference(5, true); },
       camera_row::AUTO_EXPOSURE_REFERENCE, [](auto& d) { return d.setAvPkColor(8, true); }, "20 05 00 08 08 03 01"},
      {"senseup", "dsp 21", [](auto& d) { return d.setSenseuplimit(2, true); }, camera_row::SENSEUP_LIMIT,
       [](auto& d) { return d.setShutterSpeed(17, 60, true); }, "21 01 01 02 0a"},
      {"white balance", "dsp 40", [](auto& d) { return d.setAWB(0, 9, 9, true); }, camera_row::WHITE_BALANCE,
       [](auto& d) { return d.setAWB(1, 8, 8, true); }, "40 01 08 00 08"},
  };
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    const std::string before = text(c.row);
    fakeCameraLibrary.failing = {c.failing};
    EXPECT_EQ(c.call(d), dsp::kSendFailed) << c.name;
    EXPECT_EQ(sent().size(), 1U) << c.name;
    EXPECT_EQ(text(c.row), before) << c.name;
    fakeCameraLibrary.failing.clear();
    EXPECT_EQ(c.sibling(d), dsp::kDone) << c.name;
    const Frames frames = sent();
    ASSERT_FALSE(frames.empty()) << c.name;
    EXPECT_TRUE(frames[0].starts_with(c.frame)) << c.name << ": " << frames[0];
  }
}

TEST_F(DspSetters, WithoutSendingTheFieldsGoOutWithTheLast) {
  CameraDSP d(kPlain);
  EXPECT_EQ(d.setSaturation(0, false), 0);
  EXPECT_EQ(d.setImageGamma("1", false), 0);
  EXPECT_EQ(d.setEnhance(0, false), 0);
  EXPECT_EQ(sent(), Frames{});
  EXPECT_EQ(text(camera_row::COLOR), "0");
  EXPECT_EQ(d.set3ddnr(1, true), 0);
  EXPECT_EQ(sent(), Frames{"60 fb fb 01 01 02 01"});
}

TEST_F(DspSetters, AreaAndIrisAreKeptOnlyWhenTheyWereSent) {
  CameraDSP d(kPlain);
  fakeCameraLibrary.failing = {"dsp 30", "dsp 31"};
  EXPECT_EQ(d.setAutoExposureArea({1, 2, 3, 4}, true), -3);
  EXPECT_EQ(d.getAutoExposureArea().x2, 1920);
  EXPECT_EQ(d.setIrisMode("100", true), -3);
  EXPECT_EQ(d.getIrisMode(), 1);
  fakeCameraLibrary.failing.clear();
  EXPECT_EQ(d.setAutoExposureArea({1, 2, 3, 4}, true), 0);
  EXPECT_EQ(d.getAutoExposureArea().x2, 3);
  EXPECT_EQ(d.setIrisMode("100", true), 0);
  EXPECT_EQ(d.getIrisMode(), 2);
}

struct StepCase {
  int32_t row;
  const char* from;
  const char* step;
  const char* to;
};

TEST_F(DspSetters, Steps) {
  const auto step = [](CameraDSP& d, const StepCase& c) {
    switch (c.row) {
      case camera_row::COLOR:
        return d.stepSaturation(c.step);
      case camera_row::ENHANCE:
        return d.stepEnhance(c.step);
      case camera_row::PEDESTAL:
        return d.stepPedestal(c.step);
      case camera_row::GAMMA:
        return d.stepImageGamma(c.step);
      case camera_row::SENSEUP_LIMIT:
        return d.stepSenseuplimit(c.step);
      case camera_row::WB_R_GAIN:
        return d.stepWhiteBalanceR(c.step);
      case camera_row::WB_B_GAIN:
        return d.stepWhiteBalanceB(c.step);
      default:
        return d.stepAutoExposureReference(c.step);
    }
  };
  const StepCase cases[] = {
      {camera_row::COLOR, "0", "+", "17"},
      {camera_row::COLOR, "3", "-", "3"},
      {camera_row::COLOR, "9", "-", "8"},
      {camera_row::COLOR, "50", "+", "64"},
      {camera_row::COLOR, "91", "+", "100"},
      {camera_row::COLOR, "100", "+", "100"},
      {camera_row::COLOR, "92", "-", "91"},
      {camera_row::ENHANCE, "26", "+", "34"},
      {camera_row::ENHANCE, "44", "-", "43"},
      {camera_row::ENHANCE, "96", "+", "96"},
      {camera_row::PEDESTAL, "0", "+", "32"},
      {camera_row::PEDESTAL, "31", "-", "31"},
      {camera_row::PEDESTAL, "32", "-", "0"},
      {camera_row::PEDESTAL, "60", "+", "60"},
      {camera_row::GAMMA, "0.45", "+", "1"},
      {camera_row::GAMMA, "1", "-", "0.45"},
      {camera_row::GAMMA, "1", "+", "1"},
      {camera_row::SENSEUP_LIMIT, "0", "+", "2"},
      {camera_row::SENSEUP_LIMIT, "60", "+", "60"},
      {camera_row::SENSEUP_LIMIT, "0", "-", "0"},
      {camera_row::SENSEUP_LIMIT, "60", "-", "32"},
      {camera_row::WB_R_GAIN, "254", "+", "255"},
      {camera_row::WB_R_GAIN, "300", "-", "255"},
      {camera_row::WB_B_GAIN, "1", "-", "0"},
      {camera_row::AUTO_EXPOSURE_REFERENCE, "126", "+", "127"},
      {camera_row::AUTO_EXPOSURE_REFERENCE, "-128", "-", "-128"},
  };
  for (const StepCase& c : cases) {
    CameraDSP d(kPlain);
    setText(c.row, c.from);
    EXPECT_EQ(step(d, c), 0) << c.row << " " << c.from << c.step;
    EXPECT_EQ(text(c.row), c.to) << c.row << " " << c.from << c.step;
    EXPECT_EQ(sent().size(), 1U) << "the frame goes out even where the value stays";
    if (c.row == camera_row::WB_R_GAIN) setText(c.row, "84");
  }
}

TEST_F(DspSetters, BandsEndWhereTheScaleChanges) {
  const struct {
    int32_t value;
    int32_t color;
    int32_t enhance;
  } cases[] = {{0, -5, -5}, {8, -5, -5}, {9, -4, -4}, {27, -2, -2}, {35, -2, -1}, {45, 0, 0},
               {54, 0, 1},  {55, 0, 1},  {60, 1, 2},  {66, 2, 3},   {78, 3, 5},   {89, 4, 6},
               {92, 5, 7},  {94, 5, 7},  {95, 5, 8},  {100, 5, 8},  {44, -1, 0},  {36, -1, -1}};
  for (const auto& c : cases) {
    EXPECT_EQ(dsp::kColorBands[dsp::bandIndex(dsp::kColorBands, c.value)].step, c.color) << c.value;
    EXPECT_EQ(dsp::kEnhanceBands[dsp::bandIndex(dsp::kEnhanceBands, c.value)].step, c.enhance) << c.value;
  }
}

}  // namespace
