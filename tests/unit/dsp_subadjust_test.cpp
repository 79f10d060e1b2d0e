#include "tests/unit/dsp_fixture.h"

namespace {

class DspSubadjust : public DspTest {
 protected:
  CameraDSP m_dsp{kPlain};
};

TEST_F(DspSubadjust, WhichStepFollowsWhichState) {
  const char* startedBy[] = {"", "50 02", "", "50 03", "", "50 01", ""};
  const char* allowedFrom[] = {"0123456", "01246", "0123456", "02346", "0123456", "02456", "0123456"};
  for (uint32_t step = 0; step <= 6; ++step) {
    for (uint32_t state = 0; state <= 6; ++state) {
      m_dsp.setSubadjustState(state);
      const bool isAllowed = std::string(allowedFrom[step]).find(static_cast<char>('0' + state)) != std::string::npos;
      EXPECT_EQ(m_dsp.setWhiteBalanceSubadjust(step), isAllowed ? 0 : -1) << step << " from " << state;
      EXPECT_EQ(m_dsp.getSubadjustState(), isAllowed ? step : state);
      EXPECT_EQ(sent(), isAllowed && step % 2 == 1 ? Frames{startedBy[step]} : Frames{});
    }
  }
  EXPECT_EQ(m_dsp.setWhiteBalanceSubadjust(7), -1);
}

TEST_F(DspSubadjust, WhatTheDspFound) {
  namespace row = camdsp_row;
  const struct {
    uint32_t state;
    unsigned char answer;
    int32_t result;
    uint32_t stateAfter;
    int32_t redRow;
    const char* red;
    Frames frames;
  } cases[] = {
      {1, 0, 0, 1, row::PREWBNORMR, "1000", {}},
      {1, 1, 2, 2, row::PREWBNORMR, "258", {"51 cb 02 02 01 6e 05", "52 a5 03 04 03 f4 01"}},
      {3, 1, 4, 4, row::PREWBHIGHR, "258", {"51 cb 02 e8 03 02 01", "52 a5 03 c6 02 04 03"}},
      {5, 1, 6, 6, row::PREWBLOWR, "258", {"51 02 01 e8 03 6e 05", "52 04 03 c6 02 f4 01"}},
      {5, 2, 255, 5, row::PREWBLOWR, "1000", {"51 e8 03 e8 03 6e 05", "52 e9 03 c6 02 f4 01"}},
      {2, 1, -1, 2, row::PREWBNORMR, "1000", {}},
  };
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    for (const int32_t red : {row::PREWBNORMR, row::PREWBLOWR, row::PREWBHIGHR}) {
      CUserConfig::getInstance()->setCamdspConfig(red, "1000");
      CUserConfig::getInstance()->setCamdspConfig(red + 1, "1001");
    }
    fakeDspRead = [&](unsigned char* frame) {
      EXPECT_EQ(frame[0], 0x50);
      const unsigned char answer[] = {0x50, c.answer, 2, 1, 4, 3};
      std::copy(std::begin(answer), std::end(answer), frame);
      return 0;
    };
    d.setSubadjustState(c.state);
    EXPECT_EQ(d.getWhiteBalanceSubadjust(), c.result) << c.state;
    EXPECT_EQ(d.getSubadjustState(), c.stateAfter) << c.state;
    EXPECT_EQ(sent(), c.frames) << c.state;
    EXPECT_EQ(CUserConfig::getInstance()->getCamdspConfig(c.redRow), c.red) << c.state;
  }
  fakeDspRead = [](unsigned char*) { return -1; };
  EXPECT_EQ(m_dsp.getWhiteBalanceSubadjust(), -2);
}

}  // namespace
