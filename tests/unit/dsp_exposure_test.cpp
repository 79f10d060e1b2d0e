#include <functional>
#include <sstream>

#include "dsp/ExposureTables.h"
#include "tests/unit/dsp_fixture.h"

namespace {

using Call = std::function<int32_t(CameraDSP&)>;

class DspExposure : public DspTest {};

struct StateCase {
  const char* name;
  dsp::Model model;
  const char* before;  ///< shutter, brightness, day/night of the model's kind, senseup limit
  Call request;
  int32_t result;
  const char* frames;  ///< with ", " between them
  const char* after;   ///< shutter, brightness, day/night
};

Call shutterByName(const char* name) {
  return [name](CameraDSP& d) { return d.setShutterByName(name); };
}
Call shutterSpeed(int32_t mode, int32_t speed) {
  return [=](CameraDSP& d) { return d.setShutterSpeedWithAGC(mode, speed); };
}
Call shutterStep(const char* step) {
  return [step](CameraDSP& d) { return d.stepShutter(step); };
}
Call gainCode(uint32_t code) {
  return [code](CameraDSP& d) { return d.setAGC(code, true); };
}
Call easy(uint32_t mode) {
  return [mode](CameraDSP& d) { return d.setEasyDaynight(mode, true); };
}
Call trueDayNight(uint32_t mode) {
  return [mode](CameraDSP& d) { return d.setTrueDaynight(mode, true); };
}
Call priority(uint32_t value) {
  return [value](CameraDSP& d) { return d.setAutoExposurePriority(value, true); };
}

// Shutter, gain, senseup limit and day/night hold each other: what a request does in which state.
const StateCase kStates[] = {
    {"auto shutter", kPlain, "100 autoM color 0", shutterByName("auto"), 0, "21 01 01 02 0a 00 02", "auto autoM color"},
    {"semi_auto", kPlain, "auto autoH color 8", shutterByName("semi_auto"), 0, "21 01 01 02 05 03 02",
     "auto250 autoH color"},
    {"auto100", kPlain, "auto autoH color 2", shutterByName("auto100"), 0, "21 01 01 02 03 01 02",
     "auto100 autoH color"},
    {"auto1000", kPlain, "auto autoH color 2", shutterByName("auto1000"), 0, "21 01 01 02 07 01 02",
     "auto1000 autoH color"},
    {"flickerless", kPlain, "auto manual color 0", shutterByName("flickerless"), 0, "21 01 02 02 0a 00 02",
     "flickerless manual color"},
    {"manual speed", kPlain, "auto autoM color 0", shutterSpeed(0, 10000), 0, "21 01 00 0a 0a 00 02",
     "10000 autoM color"},
    {"unlisted speed", kPlain, "auto autoM color 0", shutterSpeed(0, 70), 0, "21 01 00 02 0a 00 02", "70 autoM color"},
    {"speed 30 in its own mode", kPlain, "auto autoM color 8", shutterSpeed(16, 30), 0, "21 01 01 00 00 03 02",
     "30 autoM color"},
    {"speed beside a senseup limit", kPlain, "auto autoM color 2", shutterSpeed(0, 60), -7, "", "auto autoM color"},
    {"auto beside a senseup limit", kPlain, "60 autoM color 2", shutterByName("auto"), 0, "21 01 01 02 0a 01 02",
     "auto autoM color"},
    {"shutter beside an unknown limit", kPlain, "60 autoM color 3", shutterByName("auto"), -3, "", "60 autoM color"},
    {"step up", kPlain, "100 autoM color 0", shutterStep("+"), 0, "21 01 00 05 0a 00 02", "250 autoM color"},
    {"step down to 30 stays in mode 0", kPlain, "50 autoM color 0", shutterStep("-"), 0, "21 01 00 00 0a 00 02",
     "30 autoM color"},
    {"step at the end", kPlain, "10000 autoM color 0", shutterStep("+"), 0, "21 01 00 0a 0a 00 02",
     "10000 autoM color"},
    {"no rung", kPlain, "120 autoM color 0", shutterStep("+"), 0, "21 01 00 04 0a 00 02", "120 autoM color"},
    {"auto shutter ends a fixed gain", kPlain, "60 0 color 0", shutterByName("auto"), 0,
     "21 01 01 00 00 02 01, 30 01, f8 01 de ff 00 00 01 01 01 01, 21 01 01 02 0a 00 01", "auto autoM color"},
    {"a fixed gain follows the speed", kPlain, "60 0 color 0", shutterSpeed(0, 50), 0,
     "21 01 00 01 0a 00 02, 30 02, f8 00 e7 ff 00 00 01 01 01 01", "50 0 color"},
    {"fixed gain", kPlain, "60 autoM color 0", gainCode(23), 0, "30 02, f8 00 de ff d5 00 01 01 01 01", "60 20 color"},
    {"fixed gain, auto shutter", kPlain, "auto autoM color 0", gainCode(23), -8, "", "auto autoM color"},
    {"fixed gain, flickerless", kDayNight, "flickerless autoM color 0", gainCode(3), -8, "", "flickerless autoM color"},
    {"fixed gain, easy auto", kPlain, "60 autoM auto 0", gainCode(3), -8, "", "60 autoM auto"},
    {"manual gain, easy auto", kPlain, "60 autoM auto 0", gainCode(0), -8, "", "60 autoM auto"},
    {"automatic gain, easy auto", kPlain, "60 autoM auto 0", gainCode(2), 0,
     "21 01 01 00 00 02 02, 30 01, f8 01 de ff 00 00 01 01 01 01", "60 autoH auto"},
    {"manual gain, true auto", kDayNight, "60 autoM autoL 0", gainCode(0), -8, "", "60 autoM autoL"},
    {"automatic gain, true auto", kDayNight, "60 autoH autoL 0", gainCode(1), 0,
     "21 01 01 00 00 02 01, 30 01, f8 01 de ff 00 00 01 01 01 01", "60 autoM autoL"},
    {"manual gain, true bw", kDayNight, "auto autoM bw 0", gainCode(0), 0,
     "21 01 01 00 00 02, 30 01, f8 01 de ff 00 00 01 01 01 01", "auto manual bw"},
    {"true auto ends a fixed gain", kDayNight, "60 20 color 0", trueDayNight(3), 0,
     "21 01 01 00 00 02 01, 30 01, f8 01 de ff 00 00 01 01 01 01, 20 00 00 08 08 03 01", "60 autoM autoM"},
    {"the lowest true auto ends a manual gain", kDayNight, "60 manual bw 0", trueDayNight(2), 0,
     "21 01 01 00 00 02 01, 30 01, f8 01 de ff 00 00 01 01 01 01, 20 00 00 08 08 02 01", "60 autoM autoL"},
    {"a load's shutter sends the compensation alone", kPlain, "60 20 color 0",
     [](CameraDSP& d) { return d.setShutterSpeed(0, 50, false); }, 0, "30 02, f8 00 e7 ff d5 00 01 01 01 01",
     "50 20 color"},
    {"true auto keeps an automatic gain", kDayNight, "60 autoH color 0", trueDayNight(2), 0, "20 00 00 08 08 02 01",
     "60 autoH autoL"},
    {"true bw keeps a fixed gain", kDayNight, "60 20 color 0", trueDayNight(0), 0, "20 00 00 08 08 00 01", "60 20 bw"},
    {"easy auto ends a manual gain", kPlain, "60 manual color 0", easy(2), 0,
     "21 01 01 00 00 02 01, 30 01, f8 01 de ff 00 00 01 01 01 01, 20 00 00 08 08 02 01", "60 autoM auto"},
    {"easy auto keeps an automatic gain", kPlain, "60 autoH color 0", easy(2), 0, "20 00 00 08 08 02 01",
     "60 autoH auto"},
    {"easy bw sends the gain again", kPlain, "60 autoH auto 0", easy(0), 0,
     "21 01 01 00 00 02 02, 30 01, f8 01 de ff 00 00 01 01 01 01, 20 00 00 08 08 00 01", "60 autoH bw"},
    {"easy color sends the gain again", kPlain, "60 autoH auto 0", easy(1), 0,
     "21 01 01 00 00 02 02, 30 01, f8 01 de ff 00 00 01 01 01 01, 20 00 00 08 08 01 01", "60 autoH color"},
    {"easy color, gain refused", kPlain, "auto 20 auto 0", easy(1), 0, "20 00 00 08 08 01 01", "auto 20 color"},
    {"priority goes out with the gain", kPlain, "60 autoH color 0", priority(2), 0,
     "21 02 01 00 00 02 02, 30 01, f8 01 de ff 00 00 01 01 01 01", "60 autoH color"},
    {"priority beside a fixed gain", kPlain, "60 20 color 0", priority(0), 0, "30 02, f8 00 de ff d5 00 01 01 01 01",
     "60 20 color"},
    {"priority while flickerless", kPlain, "flickerless autoH color 0", priority(0), -7, "", "flickerless autoH color"},
};

std::string joined(const std::vector<std::string>& texts, const char* between) {
  std::string all;
  for (const std::string& text : texts)
    all += (all.empty() ? "" : between) + text;
  return all;
}

TEST_F(DspExposure, ShutterGainSenseupAndDayNightHoldEachOther) {
  for (const StateCase& c : kStates) {
    const int32_t dayNightRow = c.model.dayNight ? camera_row::TRUE_DAY_NIGHT : camera_row::EASY_DAY_NIGHT;
    const int32_t rows[] = {camera_row::SHUTTER, camera_row::BRIGHTNESS, dayNightRow, camera_row::SENSEUP_LIMIT};
    CameraDSP d(c.model);
    std::istringstream before(c.before);
    for (const int32_t row : rows) {
      std::string word;
      before >> word;
      d.store(row, word);
    }
    EXPECT_EQ(c.request(d), c.result) << c.name;
    EXPECT_EQ(joined(sent(), ", "), c.frames) << c.name;
    EXPECT_EQ(joined({text(rows[0]), text(rows[1]), text(rows[2])}, " "), c.after) << c.name;
  }
}

// A shutter text from a file leaves speed 30 behind an automatic mode, a running change leaves 60; both read alike.
TEST_F(DspExposure, AStoredShutterTextSetsModeAndSpeed) {
  const struct {
    const char* stored;
    const char* read;
    const char* frame;
  } cases[] = {
      {"30", "30", "21 01 01 00 00 00 02"},           {"250", "250", "21 01 00 05 0a 00 02"},
      {"auto", "auto", "21 01 01 02 0a 00 02"},       {"semi_auto", "auto250", "21 01 01 02 05 00 02"},
      {"auto100", "auto100", "21 01 01 02 03 00 02"}, {"flickerless", "flickerless", "21 01 02 02 0a 00 02"},
  };
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    setText(camera_row::SHUTTER, c.stored);
    EXPECT_EQ(d.loadSceneData(true), 0);
    EXPECT_EQ(d.getShutterSpeedMode(), c.read);
    EXPECT_EQ(text(camera_row::SHUTTER), c.read);
    const Frames frames = sent();
    ASSERT_FALSE(frames.empty());
    EXPECT_EQ(frames[0], std::string(c.frame).replace(18, 2, "01")) << c.stored;
  }
  CameraDSP d(kPlain);
  d.store(camera_row::SHUTTER, "auto");
  EXPECT_EQ(d.stepShutter("+"), 0);
  EXPECT_EQ(text(camera_row::SHUTTER), "50") << "a step starts from the speed behind the automatic mode";
  d.store(camera_row::SHUTTER, "flickerless");
  EXPECT_EQ(d.stepShutter("+"), 0);
  EXPECT_EQ(text(camera_row::SHUTTER), "100");
  EXPECT_EQ(d.setShutterByName("auto"), 0);
  EXPECT_EQ(d.stepShutter("+"), 0);
  EXPECT_EQ(text(camera_row::SHUTTER), "100");
}

TEST_F(DspExposure, FocusAssistModeHasNoName) {
  CameraDSP d(kPlain);
  EXPECT_EQ(d.setShutterSpeed(48, 60, true), 0);
  EXPECT_EQ(sent(), Frames{"21 01 01 02 0d 00 02"});
  EXPECT_EQ(text(camera_row::SHUTTER), "");
}

TEST_F(DspExposure, GainAndCompensationFollowTheSensorBoard) {
  const struct {
    int board;  ///< negative: the probe fails
    const char* speed;
    uint32_t gain;
    const char* frame;
    const char* kept;
  } cases[] = {
      {0, "30", 0, "f8 00 00 00 00 00 01 01 01 01", "0"},
      {29, "120", 48, "f8 00 bd ff a7 01 01 01 01 01", "48"},
      {29, "10000", 55, "f8 00 ec fe a7 01 01 01 01 01", "48"},
      {30, "10000", 55, "f8 00 d9 fe 4b 02 01 01 01 01", "55"},
      {200, "70", 60, "f8 00 dd ff 80 02 01 01 01 01", "60"},
      {-1, "500", 31, "f8 00 7a ff 43 01 01 01 01 01", "31"},
      {0, "60", 61, "f8 00 de ff 00 00 01 01 01 01", "48"},
  };
  for (const auto& c : cases) {
    CameraDSP d(kPlain);
    d.store(camera_row::SHUTTER, c.speed);
    useBoard(static_cast<uint8_t>(c.board));
    if (c.board < 0) fakeDspRead = [](unsigned char*) { return -1; };
    EXPECT_EQ(d.setAGC(c.gain + 3, true), 0);
    EXPECT_EQ(sent(), (Frames{"30 02", c.frame})) << c.board << " " << c.gain;
    EXPECT_EQ(text(camera_row::BRIGHTNESS), c.kept) << c.board << " " << c.gain;
  }
}

TEST_F(DspExposure, TheBoardIsAskedAtEachUse) {
  CameraDSP d(kPlain);
  d.store(camera_row::SHUTTER, "60");
  EXPECT_EQ(d.setAGC(3, true), 0);
  EXPECT_EQ(sentWithProbes(),
            (Frames{"18 01", "19 20", "18 01", "19 20", "30 02", "f8 00 de ff 00 00 01 01 01 01", "18 01", "19 20"}));
  fakeCameraLibrary.failing = {"dsp 18"};
  EXPECT_EQ(d.setAGC(1, true), 0) << "a probe that fails is no error";
}

TEST_F(DspExposure, AFailedGainKeepsTheText) {
  for (const char* failing : {"dsp 21", "dsp 30", "dsp f8"}) {
    CameraDSP d(kPlain);
    fakeCameraLibrary.failing = {failing};
    EXPECT_EQ(d.setAGC(2, true), -3) << failing;
    EXPECT_EQ(text(camera_row::BRIGHTNESS), "autoM") << failing;
    EXPECT_EQ(d.setTrueDaynight(2, true), 0) << "an automatic gain is not sent again";
    setText(camera_row::BRIGHTNESS, "20");
    EXPECT_EQ(d.setShutterByName("auto"), -3) << failing;
    EXPECT_EQ(text(camera_row::SHUTTER), "auto");
    EXPECT_EQ(d.setTrueDaynight(3, true), -3) << failing;
    EXPECT_EQ(text(camera_row::TRUE_DAY_NIGHT), "autoL");
    EXPECT_EQ(d.setEasyDaynight(2, true), -3) << failing;
    EXPECT_EQ(text(camera_row::EASY_DAY_NIGHT), "color");
    setText(camera_row::BRIGHTNESS, "autoM");
  }
}

TEST_F(DspExposure, TheReferenceMapsBothWays) {
  const struct {
    int32_t raw;
    int32_t index;
  } cases[] = {{-300, -5}, {-128, -5}, {-113, -5}, {-112, -4}, {-88, -4}, {-87, -3}, {-63, -3}, {-62, -2},
               {-38, -2},  {-37, -1},  {-13, -1},  {-12, 0},   {8, 0},    {9, 1},    {24, 1},   {25, 2},
               {40, 2},    {41, 3},    {56, 3},    {57, 4},    {72, 4},   {73, 5},   {127, 5},  {300, 5}};
  for (const auto& c : cases)
    EXPECT_EQ(dsp::aeReferenceIndex(c.raw), c.index) << c.raw;
  const int32_t raws[] = {-125, -125, -100, -75, -50, -25, 0, 16, 32, 48, 64, 80, 80};
  for (int32_t index = -6; index <= 6; ++index)
    EXPECT_EQ(dsp::aeReferenceRaw(index), raws[index + 6]) << index;

  CameraDSP d(kPlain);
  const struct {
    const char* from;
    const char* step;
    const char* to;
  } steps[] = {{"16", "+", "32"}, {"0", "-", "-25"}, {"80", "+", "80"}, {"127", "+", "80"}, {"-125", "-", "-125"}};
  for (const auto& s : steps) {
    setText(camera_row::AUTO_EXPOSURE_REFERENCE, s.from);
    EXPECT_EQ(d.stepAutoExposureReferenceIndex(s.step), 0);
    EXPECT_EQ(text(camera_row::AUTO_EXPOSURE_REFERENCE), s.to) << s.from << s.step;
  }
}

TEST_F(DspExposure, WordsAndTheirNumbers) {
  const struct {
    int32_t row;
    const char* text;
    int32_t number;
  } cases[] = {
      {camera_row::WHITE_BALANCE, "auto", 1},   {camera_row::WHITE_BALANCE, "AUTO", 0},
      {camera_row::BRIGHTNESS, "auto", 1},      {camera_row::BRIGHTNESS, "autoH", 2},
      {camera_row::BRIGHTNESS, "60", 63},       {camera_row::BRIGHTNESS, "0", 3},
      {camera_row::BRIGHTNESS, "", 0},          {camera_row::BRIGHTNESS, "6x", 0},
      {camera_row::TRUE_DAY_NIGHT, "OFF", 1},   {camera_row::EASY_DAY_NIGHT, "OFF", 2},
      {camera_row::EASY_DAY_NIGHT, "bw", 0},    {camera_row::AUTO_EXPOSURE_PRIORITY, "quality", 2},
      {camera_row::DNR_3D, "high", 3},          {camera_row::ATW_CONVERGENCE, "strong", 1},
      {camera_row::ENHANCE_BAND, "high", 1},    {camera_row::STEALTH, "on", 1},
      {camera_row::PRIVACY_MASK_STATUS, "", 0}, {camera_row::IDENTIFY, "ON", 0},
  };
  CameraDSP d(kPlain);
  for (const auto& c : cases) {
    setText(c.row, c.text);
    EXPECT_EQ(d.getCurrentInt(c.row), c.number) << c.row << " " << c.text;
  }
}

}  // namespace
