// The focus where no daemon is asked: states, the frame of the focus, and the picture of focus assist.

#include "dsp/FocusTables.h"
#include "tests/unit/dsp_fixture.h"

namespace {

namespace row = cam_focus_row;

class DspFocus : public DspTest {
 protected:
  DspFocus() {
    for (int32_t row = 0; row < row::kCount; ++row)
      setFocusText(row, "0");
  }
  static std::string focusText(int32_t row) { return CUserConfig::getInstance()->get({Family::CamFocus, row}); }
  static void setFocusText(int32_t row, const std::string& value) {
    CUserConfig::getInstance()->set({Family::CamFocus, row}, value);
  }

  CameraDSP m_dsp{kDayNight};
};

TEST_F(DspFocus, StatesByWordAndNumber) {
  EXPECT_EQ(m_dsp.getFocusStateAf(), "initialize");
  for (const auto& [text, shown] :
       {std::pair{"adjusting", "adjusting"}, {"0", "adjusting"}, {"ready", "ready"}, {"initialize", "initialize"}}) {
    EXPECT_EQ(m_dsp.setFocusStateAf(text), 0) << text;
    EXPECT_EQ(m_dsp.getFocusStateAf(), shown);
  }
  for (const char* text : {"", "6", "98", "99", "00", "-1", "STOP", "stop ", "adjusting..."}) {
    EXPECT_EQ(m_dsp.setFocusStateAf(text), -7) << text;
    EXPECT_EQ(m_dsp.getFocusStateAf(), "initialize") << text;
  }
}

TEST_F(DspFocus, TheStoredFocusGoesOutOnce) {
  const struct {
    std::array<const char*, 5> texts;  ///< factory position, position, direction, filter, night offset
    const char* flags;                 ///< of rows 5 to 9
    Frames frames;
  } cases[] = {
      {{"513", "770", "near", "night", "20"}, "00000", {"84 00 00 02 03 01 02", "82 14"}},
      {{"0", "1", "NEAR", "NIGHT", "21"}, "00001", {"84 00 00 01 00 00 00 01", "82 14"}},
      {{"0", "0", "Near", "day", "-1"}, "10000", {"84 00 01 00 00 00 00 01", "82"}},
      {{"0", "0", "far", "DAY", "7"}, "00100", {"84 01 01 00 00 00 00 01", "82 07"}},
      {{"0", "0", "?", "?", "x"}, "00000", {"84 01 01", "82"}},
  };
  for (const auto& c : cases) {
    for (int32_t row = 0; row < 5; ++row)
      setFocusText(row, c.texts[static_cast<size_t>(row)]);
    for (int32_t flag = 0; flag < 5; ++flag)
      setFocusText(row::AF_ICR_FLG + flag, std::string(1, c.flags[flag]));
    EXPECT_EQ(CameraDSP::isBlackoutFlagged(), std::string(c.flags) != "00000");
    EXPECT_EQ(m_dsp.loadFocusData(), 0);
    EXPECT_EQ(sent(), c.frames) << c.texts[2];
  }
  fakeCameraLibrary.failing = {"dsp 82"};
  EXPECT_EQ(m_dsp.loadFocusData(), -3);
}

TEST_F(DspFocus, FieldsAreSetWhileTheLensRests) {
  const struct {
    int32_t (*set)(CameraDSP&);
    Frames frames;
    int32_t row;
    const char* text;
  } cases[] = {
      {[](CameraDSP& d) { return d.setFocusDirection(1); }, {"84 01 01"}, row::FOCUS_DIR, "far"},
      {[](CameraDSP& d) { return d.setFocusIrtype(0, true); }, {"84"}, row::FOCUS_IR, "night"},
      {[](CameraDSP& d) { return d.setFocusIrtype(1, false); }, {}, row::FOCUS_IR, "day"},
      {[](CameraDSP& d) { return d.setFocusCurrentPos(258); }, {"84 00 01 02 01"}, row::FOCUS_POS, "258"},
      {[](CameraDSP& d) { return d.setFocusFactoryPos(3); }, {"84 00 01 00 00 03"}, row::FOCUS_FACTORY_POS, "3"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.row);
    CameraDSP dsp(kDayNight);
    setFocusText(c.row, "before");
    EXPECT_EQ(dsp.setFocusStateAf("adjusting"), 0);
    EXPECT_EQ(c.set(dsp), -8);
    EXPECT_EQ(sent(), Frames());
    EXPECT_EQ(focusText(c.row), "before");
    EXPECT_EQ(dsp.setFocusStateAf("initialize"), 0);
    EXPECT_EQ(c.set(dsp), 0);
    EXPECT_EQ(sent(), c.frames);
    EXPECT_EQ(focusText(c.row), c.text);
  }
  EXPECT_EQ(m_dsp.setFocusDirection(2), -6);
  EXPECT_EQ(m_dsp.setFocusIrtype(2, true), -6);
  EXPECT_EQ(m_dsp.correctForFilter("DAY"), -7);
  EXPECT_EQ(sent(), Frames());
}

/** What is set for the assist reaches the DSP alone; the user's settings stand beside it. */
TEST_F(DspFocus, AssistShowsAPictureOfItsOwn) {
  setText(camera_row::SENSEUP_LIMIT, "0");
  EXPECT_EQ(m_dsp.setShutterSpeed(0, 250, true), 0);
  EXPECT_EQ(m_dsp.setAGC(13, true), 0);
  EXPECT_EQ(m_dsp.setEnhance(10, true), 0);
  sent();
  const auto before = allTexts();
  EXPECT_EQ(m_dsp.setFocusAssist(true), 0);
  // The shutter first puts an automatic gain in the place of the fixed one.
  EXPECT_EQ(sent(),
            (Frames{"30 02", "21 01 00 05 0a 00 01", "30 01", "f8 01 9b ff 6a 00 01 01 01 01", "21 01 01 02 0d 00 01",
                    "60 00 05 01 00 02", "21 01 01 02 0d 00 02", "30 01", "f8 01 de ff 6a 00 01 01 01 01"}));
  for (int32_t row = 0; row < camera_row::kCount; ++row)
    EXPECT_EQ(text(row), row == camera_row::SHUTTER ? "" : before[static_cast<size_t>(row)]) << row;
  EXPECT_EQ(m_dsp.getShutterSpeedMode(), "250");
  EXPECT_TRUE(m_dsp.getFocusAssist());

  EXPECT_EQ(m_dsp.setFocusAssist(false), 0);
  const Frames fixedGain{"30 02", "f8 00 9b ff 6a 00 01 01 01 01"};
  Frames frames = sent();
  EXPECT_EQ(Frames(frames.begin(), frames.begin() + 2), (Frames{"30 01", "21 01 00 05 0a 00 02"}));
  EXPECT_EQ(Frames(frames.end() - 2, frames.end()), fixedGain);
  EXPECT_EQ(allTexts(), before);
  EXPECT_FALSE(m_dsp.getFocusAssist());

  fakeCameraLibrary.failing = {"dsp 60"};
  EXPECT_EQ(m_dsp.setFocusAssist(true), -3);
  EXPECT_FALSE(m_dsp.getFocusAssist());
}

}  // namespace
