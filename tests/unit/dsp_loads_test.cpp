#include <algorithm>

#include "tests/unit/dsp_fixture.h"

namespace {

class DspLoads : public DspTest {
 protected:
  DspLoads() {
    for (int32_t row = 0; row < scp_service_row::kCount; ++row)
      setService(row, std::to_string(row + 1));
    setService(scp_service_row::N_R_RANGE, "-12");
    for (int32_t row = 0; row < camdsp_row::kCount; ++row) {
      CUserConfig::getInstance()->setCamdspConfig(row, std::to_string(0x1010 * row));
    }
  }
  static void setService(int32_t row, const std::string& value) {
    CUserConfig::getInstance()->setScpServiceConfig(row, value);
  }
  static std::string service(int32_t row) { return CUserConfig::getInstance()->getScpServiceConfig(row); }

  static constexpr dsp::ServiceLoad kBoot{
      .alc = true, .iris = true, .atw = true, .atwWide = true, .atwNarrow = true, .lumx = true};
};

constexpr char kIrisOfLens1[] = "39 08 00 09 00 0a 00 0b 00 0c";
constexpr char kIrisOfLens2[] = "39 25 00 26 00 27 00 28 00 29";

TEST_F(DspLoads, ServiceValuesByModelAndLens) {
  const struct {
    bool dayNight;
    const char* lens;
    const char* alc;
    const char* iris;
  } cases[] = {
      {false, "lens1", "38 01 02 00 03 00 04 00 05 07", kIrisOfLens1},
      {true, "lens2", "38 01 02 00 03 00 04 00 05 06", kIrisOfLens2},
      {true, "lens2 ", "38 01 02 00 03 00 04 00 05 06", kIrisOfLens1},
  };
  for (const auto& c : cases) {
    CameraDSP d({.dayNight = c.dayNight, .backFocus = false, .lens = true});
    setText(camera_row::IRIS_LENSTYPE, c.lens);
    EXPECT_EQ(d.loadScpServiceData(kBoot), 0);
    EXPECT_EQ(sent(), (Frames{c.alc, c.iris, "58 0d 0e 00 0f 00 10 00 11", "59 12 13 14 15 16 17 18 19",
                              "5a f4 1b 1c 1d 1e 1f 20 21", "78 22 23"}));
    EXPECT_EQ(d.loadScpServiceData({.afForIr = true}), 0);
    EXPECT_EQ(sent(), c.dayNight ? Frames{"82 24"} : Frames{});
  }
}

TEST_F(DspLoads, CalibrationGoesOutOnceAFrame) {
  CameraDSP d(kPlain);
  EXPECT_EQ(d.setIrisMode("100", false), 0);
  EXPECT_EQ(d.loadDspAdjustData(), 0);
  EXPECT_EQ(sent(), (Frames{"51 30 30 10 10 50 50", "52 40 40 20 20 60 60", "70 70 90 80 a0", "30 01"}));
  EXPECT_EQ(CUserConfig::getInstance()->getCamdspConfig(camdsp_row::EVREF), std::to_string(0x1010 * 12))
      << "what is stored stays";
  EXPECT_EQ(CUserConfig::getInstance()->getCamdspConfig(camdsp_row::IBYHUE1), std::to_string(0x1010 * 10));
  EXPECT_EQ(d.setEvref(-33, true), 0);
  EXPECT_EQ(d.setEvref(33, true), 0);
  EXPECT_EQ(sent(), (Frames{"30 01 e0", "30 01 20"}));
  EXPECT_EQ(d.setAdjust(camdsp_row::SPOTNUM, 1, true), -1) << "has no place in a frame";
}

Frames sceneFrames(const std::string& dayNight, const std::string& iris, const std::string& model, bool first) {
  Frames frames = {"21 01 01 02 0a 00 01", "20 10 00 08 07 " + dayNight + " 01", iris, "40 01 54 00 57"};
  if (first) {
    frames.push_back(model);
    frames.push_back("d1 12 12 12");
    frames.push_back("d0 00 ff 80");
    for (int page = 1; page < 32; ++page) {
      char text[8];
      std::snprintf(text, sizeof text, "d0 %02x", static_cast<unsigned>(page));
      frames.push_back(text);
    }
    const char* rest[] = {"d2", "31 00 00 00 00 80 07 38 04", "42 01 00 02 00 7e 07 36 04"};
    frames.insert(frames.end(), std::begin(rest), std::end(rest));
  }
  frames.push_back("60 00 00 00 00 00 02");
  frames.push_back("id 67 61 74 65");
  return frames;
}

TEST_F(DspLoads, SceneByModelAndLens) {
  const struct {
    dsp::Model model;
    const char* lens;
    const char* dayNight;
    const char* iris;
    const char* sent;  ///< the model in a first load
  } cases[] = {
      {{false, false, false}, "lens1", "02", kIrisOfLens1, "f3 00 01"},
      {{true, false, false}, "lens2", "04", kIrisOfLens2, "f3 01 01"},
      {{true, true, false}, "lens1", "04", kIrisOfLens1, "f3 01"},
      {{false, true, false}, "lens2", "02", kIrisOfLens2, "f3"},
  };
  for (const auto& c : cases) {
    CameraDSP d(c.model);
    setText(camera_row::IRIS_LENSTYPE, c.lens);
    setText(camera_row::TRUE_DAY_NIGHT, "autoH");
    setText(camera_row::EASY_DAY_NIGHT, "auto");
    const std::pair<int32_t, const char*> ordinary[] = {{camera_row::STEALTH, "off"},
                                                        {camera_row::IDENTIFY, "off"},
                                                        {camera_row::ENHANCE_BAND, "low"},
                                                        {camera_row::ATW_CONVERGENCE, "normal"}};
    for (const auto& [row, word] : ordinary)
      setText(row, "OFF");
    EXPECT_EQ(d.loadSceneData(true), 0);
    EXPECT_EQ(sent(), sceneFrames(c.dayNight, c.iris, c.sent, true));
    EXPECT_EQ(d.loadSceneData(false), 0);
    EXPECT_EQ(sent(), sceneFrames(c.dayNight, c.iris, "", false));
    for (const auto& [row, word] : ordinary)
      EXPECT_EQ(text(row), word) << "an unknown word becomes the ordinary one";
  }
}

TEST_F(DspLoads, ALoadGoesOnBehindARefusalAndAFailure) {
  CameraDSP d(kPlain);
  setText(camera_row::SHUTTER, "flickerless");
  setText(camera_row::BRIGHTNESS, "20");
  setText(camera_row::BLC, "nonsense");
  EXPECT_EQ(d.loadSceneData(true), 0);
  const size_t all = sent().size();
  EXPECT_EQ(text(camera_row::BRIGHTNESS), "autoM");
  fakeCameraLibrary.failing = {"dsp 21"};
  EXPECT_EQ(d.loadSceneData(true), -3);
  EXPECT_EQ(sent().size(), all);
}

TEST_F(DspLoads, ServiceSetters) {
  namespace row = scp_service_row;
  using D = CameraDSP;
  using Setter = int32_t (D::*)(int32_t, int32_t);
  const struct {
    Setter set;
    int32_t row;
    int32_t value;
    int32_t result;
    const char* frame;
  } cases[] = {
      {&D::setALC, row::ALC_ERR_H, 5, 0, "38 00 00 00 05"},
      {&D::setALC, row::ALC_ERR_H, 4, -8, ""},
      {&D::setALC, row::DN_HYSTERESIS_EASYDN, 30, 0, "38 00 00 00 00 00 00 00 00 1e"},
      {&D::setALC, row::DN_HYSTERESIS_EASYDN, 31, -6, ""},
      {&D::setIris, row::SUB_IRIS_INTGAIN, 1, 0, "39 00 00 01"},
      {&D::setIris, row::SUB_IRIS_INTGAIN, 0, -6, ""},
      {&D::setIris, row::SUB_IRIS_LIMIT_H, 42, 0, "39 00 00 00 00 00 00 2a"},
      {&D::setIris, row::SUB_IRIS_LIMIT_H, 41, -8, ""},
      {&D::setIris, row::SUB_IRIS_LIMIT_L, 3318, -8, ""},
      {&D::setATWWide, row::W_R_RANGE, -15, 0, "59 f1 00 08 08 08 08 08 08"},
      {&D::setATWNarrow, row::N_B_RANGE, 16, 0, "5a 00 10 08 08 08 08 08 08"},
      {&D::setAfForIr, row::AF_FOR_IR, 100, 0, "82 64"},
      {&D::setAfForIr, row::AF_FOR_IR, 101, -6, ""},
      {&D::setLUMX, row::ALC_SPEED, 99, 0, "78"},  // a foreign row: the frame as it stands
  };
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    const std::string before = service(c.row);
    EXPECT_EQ((d.*c.set)(c.row, c.value), c.result) << c.row << " " << c.value;
    EXPECT_EQ(sent(), c.result == 0 ? Frames{c.frame} : Frames{}) << c.row << " " << c.value;
    const bool isKept = c.result == 0 && c.value != 99;
    EXPECT_EQ(service(c.row), isKept ? std::to_string(c.value) : before) << c.row << " " << c.value;
    setService(c.row, before);
  }
}

TEST_F(DspLoads, ServiceReaders) {
  namespace row = scp_service_row;
  const std::vector<unsigned char> payload = {0xF1, 0xF0, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  fakeDspRead = [&](unsigned char* frame) {
    std::copy(payload.begin(), payload.end(), frame + 1);
    return 0;
  };
  using D = CameraDSP;
  using Reader = int32_t (D::*)();
  const struct {
    Reader read;
    bool dayNight;
    const char* lens;
    int32_t row;
    const char* value;
  } cases[] = {
      {&D::getALC, false, "lens1", row::ALC_ERR_EN, "1008"},
      {&D::getALC, true, "lens1", row::DN_HYSTERESIS_TRUEDN, "9"},
      {&D::getALC, true, "lens1", row::DN_HYSTERESIS_EASYDN, "7"},
      {&D::getALC, false, "lens1", row::DN_HYSTERESIS_EASYDN, "9"},
      {&D::getIris, false, "lens1", row::IRIS_START, "61681"},
      {&D::getIris, false, "lens1", row::SUB_IRIS_START, "37"},
      {&D::getIris, false, "lens2", row::SUB_IRIS_LIMIT_L, "2569"},
      {&D::getATW, false, "lens1", row::ATW_RESTART, "8"},
      {&D::getATWWide, false, "lens1", row::W_R_RANGE, "-15"},
      {&D::getATWWide, false, "lens1", row::W_B_RANGE, "240"},
      {&D::getATWNarrow, false, "lens1", row::N_MG_RANGE_HIGH, "8"},
      {&D::getLUMX, false, "lens1", row::ET_LUMX_SPEED, "241"},
      {&D::getAfForIr, false, "lens1", row::AF_FOR_IR, "241"},
  };
  for (const auto& c : cases) {
    for (int32_t i = 0; i < row::kCount; ++i)
      setService(i, std::to_string(i + 1));
    setText(camera_row::IRIS_LENSTYPE, c.lens);
    CameraDSP d({.dayNight = c.dayNight, .backFocus = false, .lens = false});
    EXPECT_EQ((d.*c.read)(), 0);
    EXPECT_EQ(service(c.row), c.value) << c.row;
  }
  fakeDspRead = [](unsigned char*) { return -1; };
  CameraDSP d(kPlain);
  setService(row::ALC_SPEED, "42");
  EXPECT_EQ(d.getALC(), -2);
  EXPECT_EQ(service(row::ALC_SPEED), "42");
}

TEST_F(DspLoads, LensType) {
  CameraDSP d(kPlain);
  EXPECT_EQ(d.setLensType("lens2"), 0);
  EXPECT_EQ(sent(), Frames{kIrisOfLens2});
  EXPECT_EQ(text(camera_row::IRIS_LENSTYPE), "lens2");
  fakeCameraLibrary.failing = {"dsp 39"};
  EXPECT_EQ(d.setLensType("lens1"), -3);
  EXPECT_EQ(text(camera_row::IRIS_LENSTYPE), "lens2");
  CameraDSP builtIn({.dayNight = false, .backFocus = false, .lens = true});
  EXPECT_EQ(builtIn.setLensType("lens2"), -7);
}

}  // namespace
