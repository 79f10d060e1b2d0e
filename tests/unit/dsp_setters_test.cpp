#include <functional>

#include "tests/unit/dsp_fixture.h"

namespace {

using Call = std::function<int32_t(CameraDSP&)>;

class DspSetters : public DspTest {};

// The bytes of a setter beside the other bytes of its frame, from the power-on state, and the text that is kept.
TEST_F(DspSetters, SendTheWholeFrameAndKeepTheText) {
  namespace row = camera_row;
  const struct {
    Call call;
    const char* frame;
    int32_t row;
    const char* kept;
  } cases[] = {
      {[](auto& d) { return d.setPedestal(51, true); }, "60 00 00 01 00 02", row::PEDESTAL, "51"},
      {[](auto& d) { return d.set3ddnr(3, true); }, "60 00 00 01 00 02 03", row::DNR_3D, "high"},
      {[](auto& d) { return d.setBLC("d", true); }, "20 00 04 08 08 03 01", row::BLC, "d"},
      // a mode without a word
      {[](auto& d) { return d.setTrueDaynight(9, true); }, "20 00 00 08 08 09 01", row::TRUE_DAY_NIGHT, "color"},
      {[](auto& d) { return d.setSenseuplimit(60, true); }, "21 01 01 00 00 06 02", row::SENSEUP_LIMIT, "60"},
      {[](auto& d) { return d.setAWB(2, 255, 0, true); }, "40 02 ff", row::WHITE_BALANCE, "autoN"},
      {[](auto& d) { return d.setPrivacymaskColor("A234fF", true); }, "d1 a2 a2 a2", row::PRIVACY_MASK_COLOR, "A234fF"},
      {[](auto& d) { return d.setModelType(true, true, true); }, "f3 01 01", row::IRIS, "0"},
      {[](auto& d) { return d.setDayNightMode(3); }, "f3 03", row::IRIS, "0"},
  };
  setText(row::IRIS, "0");
  for (const auto& c : cases) {
    CameraDSP d(kDayNight);
    EXPECT_EQ(c.call(d), dsp::kDone) << c.frame;
    EXPECT_EQ(sent(), Frames{c.frame});
    EXPECT_EQ(text(c.row), c.kept) << c.frame;
    setText(row::WHITE_BALANCE, "autoW");
    setText(row::WB_R_GAIN, "84");
    setText(row::WB_B_GAIN, "87");
    setText(row::BLC, "off");
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

template <class... Results>
void expectAll(int32_t expected, Results... results) {
  for (const int32_t result : {results...})
    EXPECT_EQ(result, expected);
}

TEST_F(DspSetters, RefusedValuesLeaveCacheAndTexts) {
  namespace row = scp_service_row;
  CameraDSP d(kPlain);
  const Frames framesBefore = cachedFrames(d, [] { return sent(); });
  const auto textsBefore = allTexts();
  expectAll(-6, d.setSaturation(101, true), d.setSaturation(-1, true), d.setEnhance(101, true), d.setPedestal(-1, true),
            d.set3ddnr(4, true), d.set3ddnr(0xFFFFFFFF, true), d.setBLC("e", true),
            d.setAutoExposureReference(128, true), d.setAvPkColor(4, true), d.setAvPkBlackWhite(11, true),
            d.setIrisMode("open", true), d.setAutoExposurePriority(3, true), d.setHighGain(3, true),
            d.setShutterSpeed(0, 29, true), d.setShutterSpeed(0, 10001, true), d.setAWB(0, 256, 0, true),
            d.setAWB(0, 0, 256, true), d.setWhiteBalanceR(-1), d.setPrivacymaskStatus(2, true), d.setSensor(0),
            d.writeRegister(dsp::frame::kRegisterAddress, 65536), d.writeRegister(dsp::frame::kDeviceId, 256),
            d.setLensType("lens3"), d.setALC(row::ALC_SPEED, 0), d.setIris(row::IRIS_START, 3319),
            d.setATWWide(row::W_R_RANGE, -16));
  expectAll(-7, d.stepSaturation("*"), d.setSenseuplimit(3, true), d.setShutterByName("autox"));
  expectAll(-8, d.setALC(row::ALC_ERR_L, 400), d.setATW(row::ATW_ERR_H, 20));
  expectAll(-1, d.setPrivacymaskColor("12x", true), d.setPrivacymaskColor("", true));
  expectAll(0, d.setAWB(4, 1, 1, true));  // no such mode: nothing happens
  EXPECT_EQ(sentWithProbes(), Frames{});
  EXPECT_EQ(allTexts(), textsBefore);
  EXPECT_EQ(cachedFrames(d, [] { return sent(); }), framesBefore);
}

TEST_F(DspSetters, AFailedSendKeepsTheTextButNotTheFrame) {
  namespace row = camera_row;
  const struct {
    const char* failing;
    Call call;
    int32_t row;
    Call sibling;
    const char* frame;
  } cases[] = {
      {"dsp 60", [](auto& d) { return d.setSaturation(100, true); }, row::COLOR,
       [](auto& d) { return d.set3ddnr(0, true); }, "60 05 00 01 00 02"},
      {"dsp 20", [](auto& d) { return d.setAutoExposureReference(5, true); }, row::AUTO_EXPOSURE_REFERENCE,
       [](auto& d) { return d.setAvPkColor(8, true); }, "20 05 00 08 08 03 01"},
      {"dsp 21", [](auto& d) { return d.setSenseuplimit(2, true); }, row::SENSEUP_LIMIT,
       [](auto& d) { return d.setShutterSpeed(17, 60, true); }, "21 01 01 02 0a"},
      {"dsp 40", [](auto& d) { return d.setAWB(0, 9, 9, true); }, row::WHITE_BALANCE,
       [](auto& d) { return d.setAWB(1, 8, 8, true); }, "40 01 08 00 08"},
  };
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    const std::string before = text(c.row);
    fakeCameraLibrary.failing = {c.failing};
    EXPECT_EQ(c.call(d), dsp::kSendFailed) << c.failing;
    EXPECT_EQ(sent().size(), 1U) << c.failing;
    EXPECT_EQ(text(c.row), before) << c.failing;
    fakeCameraLibrary.failing.clear();
    EXPECT_EQ(c.sibling(d), dsp::kDone) << c.failing;
    const Frames frames = sent();
    ASSERT_FALSE(frames.empty()) << c.failing;
    EXPECT_TRUE(frames[0].starts_with(c.frame)) << frames[0];
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

}  // namespace
