#include <stdexcept>

#include "tests/unit/dsp_fixture.h"

namespace {

class DspChannel : public DspTest {
 protected:
  CameraDSP m_dsp{kPlain};
};

TEST_F(DspChannel, RawFrames) {
  const struct {
    const char* text;
    const char* frame;
    const char* result;
  } cases[] = {
      {"60fB", "60 fb", "60FB00000000000000000000"},
      {"0102030405060708090A0B0C", "01 02 03 04 05 06 07 08 09 0a 0b 0c", "0102030405060708090A0B0C"},
      {"0102030405060708090A0B0C0D", "01 02 03 04 05 06 07 08 09 0a 0b 0c", "0102030405060708090A0B0C"},
      {"x11xx1", "f1 1f f1", "F11FF1000000000000000000"},
      {"", "00", "000000000000000000000000"},
  };
  for (const auto& c : cases) {
    std::string result;
    EXPECT_EQ(m_dsp.setVaData(c.text, result), 0) << c.text;
    EXPECT_EQ(sent(), Frames{c.frame}) << c.text;
    EXPECT_EQ(result, c.result) << c.text;
  }
  std::string result;
  EXPECT_THROW((void)m_dsp.setVaData("010", result), std::out_of_range);
  EXPECT_EQ(sent(), Frames{});
  fakeCameraLibrary.failing = {"dsp 60"};
  EXPECT_EQ(m_dsp.setVaData("60", result), -1);
}

TEST_F(DspChannel, RawReads) {
  unsigned char asked = 0;
  fakeDspRead = [&](unsigned char* frame) {
    asked = frame[0];
    EXPECT_EQ(frame[11], 0);
    for (unsigned char i = 0; i < 12; ++i)
      frame[i] = static_cast<unsigned char>(0xA0 + i);
    return 0;
  };
  std::string result;
  EXPECT_EQ(m_dsp.getVaData("e1", result), 0);
  EXPECT_EQ(asked, 0xE1);
  EXPECT_EQ(result, "A0A1A2A3A4A5A6A7A8A9AAAB");
  EXPECT_EQ(m_dsp.getSCPInformation(result), 0);
  EXPECT_EQ(result.size(), 4 * 22 + 3U);
  EXPECT_TRUE(result.starts_with("a1a2a3a4a5a6a7a8a9aaab-a1")) << result;
  uint32_t value = 0;
  EXPECT_EQ(m_dsp.readRegister(dsp::frame::kRegisterData, value), 0);
  EXPECT_EQ(value, 0xA2A1U);

  int reads = 0;
  fakeDspRead = [&](unsigned char*) { return ++reads, -1; };
  EXPECT_EQ(m_dsp.getVaData("e", result), -2);
  EXPECT_EQ(m_dsp.getVaData("e11", result), -2);
  EXPECT_EQ(reads, 0);
  EXPECT_EQ(m_dsp.getVaData("e1", result), -1);
  EXPECT_EQ(m_dsp.readRegister(dsp::frame::kRegisterData, value), -2);
  EXPECT_EQ(m_dsp.getSCPInformation(result), -2);
  EXPECT_EQ(result, "");
}

TEST_F(DspChannel, IdInTheOrderOfTheCharacterGenerator) {
  const std::pair<std::string, const char*> cases[] = {
      {"ab", "id 61 62"},           {"", "id"},
      {"\xB0\xA1", "id 88 9f"},     {"\xB1\xA1", "id 89 40"},
      {"\xB1\xDF", "id 89 7e"},     {"\xB1\xE0", "id 89 80"},
      {"\xE0\xA1z", "id e0 9f 7a"}, {"a\xB0", "id 61 b0"},
  };
  for (const auto& [id, call] : cases) {
    EXPECT_EQ(m_dsp.setId(id), 0) << call;
    EXPECT_EQ(sent(), Frames{call});
    EXPECT_EQ(text(camera_row::COMMENT), id);
  }
  const std::string longText = std::string(39, 'x') + "\xB0\xA1";
  EXPECT_EQ(m_dsp.setId(longText), 0);
  EXPECT_EQ(sent()[0].size(), 2 + 40 * 3U);
  EXPECT_EQ(text(camera_row::COMMENT), longText);
  fakeCameraLibrary.failing = {"id"};
  EXPECT_EQ(m_dsp.setId("other"), -1);
  EXPECT_EQ(text(camera_row::COMMENT), longText);
}

TEST_F(DspChannel, FourPointTexts) {
  const auto points = [](const dsp::Area& area) { return std::vector<int32_t>{area.x1, area.y1, area.x2, area.y2}; };
  const struct {
    const char* text;
    int32_t aspect;
    std::vector<int32_t> points;
  } cases[] = {
      {"0-0-100-100", 0, {0, 0, 1918, 1078}},   {"0-0-100-100", 1, {240, 0, 1680, 1078}},
      {"33-50-34-51", 0, {632, 539, 652, 549}}, {"s0-s0-s1918-s1078", 1, {0, 0, 1918, 1078}},
      {"s10-5-50-s600", 0, {10, 53, 959, 600}},
  };
  for (const auto& c : cases) {
    dsp::Area area{};
    EXPECT_EQ(m_dsp.cameraWBPointconvert(c.text, area, c.aspect), 0) << c.text;
    EXPECT_EQ(points(area), c.points) << c.text;
  }
  for (const char* text : {"s0-s0-s1919-s1078", "s0-s0-s1918-s1079", "0-0-101-100", "s5-s0-s5-s9", "s0-s9-s5-s9",
                           "0-0-100", "", "0--100-100", "a-0-100-100", "s-0-100-100", "0-0-99999999999-100"}) {
    dsp::Area area{};
    EXPECT_EQ(m_dsp.cameraWBPointconvert(text, area, 0), -1) << text;
    EXPECT_EQ(points(area), points({})) << text;
  }
}

TEST_F(DspChannel, BacklightArea) {
  const std::string all(34, 'F');
  const std::string firstCell = "01" + std::string(32, '0');
  const std::string secondRow = "0080" + std::string(30, '0');  // bit 15: first cell of the second row
  const std::string lastCell = std::string(32, '0') + "40";     // bit 134: last cell of the last row
  const std::string spareBit = std::string(32, '0') + "80";     // bit 135 belongs to no row
  const std::string third = "04" + std::string(32, '0');
  const struct {
    std::string digits;
    int32_t aspect;
    const char* mode;
    int32_t result;
    Frames frames;
  } cases[] = {
      {all, 0, "off", 1, {}},
      {firstCell, 0, "off", 0, {}},
      {firstCell, 0, "manual", 0, {"22 00 01", "22 01"}},
      {secondRow, 0, "manual", 0, {"22 00 00 00 01", "22 01"}},
      {lastCell, 0, "manual", 0, {"22", "22 01 00 00 00 00 00 00 00 40"}},
      {all, 0, "manual", 1, {"22 00 ff 7f ff 7f ff 7f ff 7f ff 7f", "22 01 ff 7f ff 7f ff 7f ff 7f"}},
      {std::string(34, 'f'), 0, "off", 0, {}},
      {spareBit, 0, "manual", -7, {}},
      {std::string(34, '0'), 0, "off", -7, {}},
      {std::string(33, 'F'), 0, "off", -7, {}},
      {std::string(33, 'F') + "g", 0, "off", -7, {}},
      {firstCell, 1, "off", -7, {}},
      {lastCell, 1, "off", -7, {}},
      {third, 1, "off", 0, {}},
  };
  for (const auto& c : cases) {
    setText(camera_row::BLC_AREA, all);
    setText(camera_row::BLC, c.mode);
    m_dsp.setAspect(c.aspect);
    EXPECT_EQ(m_dsp.setBLCArea(c.digits), c.result) << c.digits;
    EXPECT_EQ(sent(), c.frames) << c.digits;
    EXPECT_EQ(text(camera_row::BLC_AREA), c.result == 0 ? c.digits : all) << c.digits;
  }
  m_dsp.setAspect(0);
  setText(camera_row::BLC_AREA, all);
  EXPECT_EQ(m_dsp.setBLC("manual", true), 0);
  EXPECT_EQ(sent().size(), 3U) << "entering manual puts the area out";
  fakeCameraLibrary.failing = {"dsp 22 01"};
  EXPECT_EQ(m_dsp.setBLCArea(firstCell), -3);
  EXPECT_EQ(text(camera_row::BLC_AREA), all);
}

TEST_F(DspChannel, OnePushWhiteBalance) {
  const struct {
    const char* name;
    const char* before;
    int running;        ///< reads that answer "running"
    unsigned char end;  ///< the answer after them
    int32_t result;
    int reads;
    Frames frames;
    const char* r;
    const char* b;
  } cases[] = {
      {"finished", "autoW", 3, 1, 0, 4, {"40 00 54 00 57", "41 01"}, "258", "772"},
      {"from manual", "manual", 0, 1, 0, 1, {"41 01"}, "258", "772"},
      {"failed", "autoN", 1, 2, 0, 2, {"40 00 54 00 57", "41 01", "41 01"}, "84", "87"},
      {"last read", "manual", 199, 1, 0, 200, {"41 01"}, "258", "772"},
      {"timeout", "manual", 1000, 1, 0, 200, {"41 01", "41 01"}, "84", "87"},
  };
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    setText(camera_row::WHITE_BALANCE, c.before);
    setText(camera_row::WB_R_GAIN, "84");
    setText(camera_row::WB_B_GAIN, "87");
    int reads = 0;
    fakeDspRead = [&](unsigned char* frame) {
      EXPECT_EQ(frame[0], 0x41);
      EXPECT_EQ(frame[1], 0) << "each read starts from a zeroed frame";
      const unsigned char answer[] = {0x41, ++reads > c.running ? c.end : static_cast<unsigned char>(0), 2, 1, 4, 3};
      std::copy(std::begin(answer), std::end(answer), frame);
      return 0;
    };
    EXPECT_EQ(d.setWhiteBalanceMode(3), c.result) << c.name;
    EXPECT_EQ(reads, c.reads) << c.name;
    EXPECT_EQ(sent(), c.frames) << c.name;
    EXPECT_EQ(text(camera_row::WHITE_BALANCE), "manual") << c.name;
    EXPECT_EQ(text(camera_row::WB_R_GAIN), c.r) << c.name;
    EXPECT_EQ(text(camera_row::WB_B_GAIN), c.b) << c.name;
  }
  setText(camera_row::WHITE_BALANCE, "autoN");
  fakeDspRead = [](unsigned char*) { return -1; };
  EXPECT_EQ(m_dsp.setOpWBaction(1, 2), -2);
  EXPECT_EQ(text(camera_row::WHITE_BALANCE), "autoN");
}

}  // namespace
