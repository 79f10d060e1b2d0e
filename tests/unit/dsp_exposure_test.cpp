#include <functional>
#include <sstream>

#include "dsp/ExposureTables.h"
#include "tests/unit/dsp_fixture.h"

namespace {

using Call = std::function<int32_t(CameraDSP&)>;

class DspExposure : public DspTest {};

struct StateCase {
  dsp::Model model;
  const char* before;  ///< shutter, brightness, day/night of the model's kind, senseup limit
  Call request;
  int32_t result;
  std::string frames;  ///< with ", " between them
  const char* after;   ///< shutter, brightness, day/night
};

template <auto kSetter, class Value, bool... kSend>
Call call(Value value) {
  return [value](CameraDSP& d) { return (d.*kSetter)(value, kSend...); };
}
constexpr auto named = call<&CameraDSP::setShutterByName, const char*>;
constexpr auto step = call<&CameraDSP::stepShutter, const char*>;
constexpr auto gain = call<&CameraDSP::setAGC, uint32_t, true>;
constexpr auto easyMode = call<&CameraDSP::setEasyDaynight, uint32_t, true>;
constexpr auto trueMode = call<&CameraDSP::setTrueDaynight, uint32_t, true>;
constexpr auto priority = call<&CameraDSP::setAutoExposurePriority, uint32_t, true>;
Call speed(int32_t mode, int32_t speed) {
  return [=](CameraDSP& d) { return d.setShutterSpeedWithAGC(mode, speed); };
}
Call loadedSpeed(int32_t speed) {
  return [=](CameraDSP& d) { return d.setShutterSpeed(0, speed, false); };
}

// An automatic gain goes out in three frames.
const std::string kAutoM = "21 01 01 00 00 02 01, 30 01, f8 01 de ff 00 00 01 01 01 01";
const std::string kAutoH = "21 01 01 00 00 02 02, 30 01, f8 01 de ff 00 00 01 01 01 01";

// Shutter, gain, senseup limit and day/night hold each other: what a request does in which state.
const StateCase kStates[] = {
    {kPlain, "100 autoM color 0", named("auto"), 0, "21 01 01 02 0a 00 02", "auto autoM color"},
    {kPlain, "auto autoH color 8", named("semi_auto"), 0, "21 01 01 02 05 03 02", "auto250 autoH color"},
    {kPlain, "auto autoH color 2", named("auto100"), 0, "21 01 01 02 03 01 02", "auto100 autoH color"},
    {kPlain, "auto manual color 0", named("flickerless"), 0, "21 01 02 02 0a 00 02", "flickerless manual color"},
    {kPlain, "auto autoM color 0", speed(0, 10000), 0, "21 01 00 0a 0a 00 02", "10000 autoM color"},
    {kPlain, "auto autoM color 0", speed(0, 70), 0, "21 01 00 02 0a 00 02", "70 autoM color"},
    {kPlain, "auto autoM color 8", speed(16, 30), 0, "21 01 01 00 00 03 02", "30 autoM color"},
    {kPlain, "auto autoM color 2", speed(0, 60), -7, "", "auto autoM color"},
    {kPlain, "60 autoM color 2", named("auto"), 0, "21 01 01 02 0a 01 02", "auto autoM color"},
    {kPlain, "60 autoM color 3", named("auto"), -3, "", "60 autoM color"},
    {kPlain, "100 autoM color 0", step("+"), 0, "21 01 00 05 0a 00 02", "250 autoM color"},
    {kPlain, "50 autoM color 0", step("-"), 0, "21 01 00 00 0a 00 02", "30 autoM color"},
    {kPlain, "10000 autoM color 0", step("+"), 0, "21 01 00 0a 0a 00 02", "10000 autoM color"},
    {kPlain, "120 autoM color 0", step("+"), 0, "21 01 00 04 0a 00 02", "120 autoM color"},
    {kPlain, "60 0 color 0", named("auto"), 0, kAutoM + ", 21 01 01 02 0a 00 01", "auto autoM color"},
    {kPlain, "60 0 color 0", speed(0, 50), 0, "21 01 00 01 0a 00 02, 30 02, f8 00 e7 ff 00 00 01 01 01 01",
     "50 0 color"},
    {kPlain, "60 autoM color 0", gain(23), 0, "30 02, f8 00 de ff d5 00 01 01 01 01", "60 20 color"},
    {kPlain, "auto autoM color 0", gain(23), -8, "", "auto autoM color"},
    {kDayNight, "flickerless autoM color 0", gain(3), -8, "", "flickerless autoM color"},
    {kPlain, "60 autoM auto 0", gain(3), -8, "", "60 autoM auto"},
    {kPlain, "60 autoM auto 0", gain(0), -8, "", "60 autoM auto"},
    {kPlain, "60 autoM auto 0", gain(2), 0, kAutoH, "60 autoH auto"},
    {kDayNight, "60 autoM autoL 0", gain(0), -8, "", "60 autoM autoL"},
    {kDayNight, "60 autoH autoL 0", gain(1), 0, kAutoM, "60 autoM autoL"},
    {kDayNight, "auto autoM bw 0", gain(0), 0, "21 01 01 00 00 02, 30 01, f8 01 de ff 00 00 01 01 01 01",
     "auto manual bw"},
    {kDayNight, "60 20 color 0", trueMode(3), 0, kAutoM + ", 20 00 00 08 08 03 01", "60 autoM autoM"},
    {kDayNight, "60 manual bw 0", trueMode(2), 0, kAutoM + ", 20 00 00 08 08 02 01", "60 autoM autoL"},
    {kPlain, "60 20 color 0", loadedSpeed(50), 0, "30 02, f8 00 e7 ff d5 00 01 01 01 01", "50 20 color"},
    {kDayNight, "60 autoH color 0", trueMode(2), 0, "20 00 00 08 08 02 01", "60 autoH autoL"},
    {kDayNight, "60 20 color 0", trueMode(0), 0, "20 00 00 08 08 00 01", "60 20 bw"},
    {kPlain, "60 manual color 0", easyMode(2), 0, kAutoM + ", 20 00 00 08 08 02 01", "60 autoM auto"},
    {kPlain, "60 autoH color 0", easyMode(2), 0, "20 00 00 08 08 02 01", "60 autoH auto"},
    {kPlain, "60 autoH auto 0", easyMode(0), 0, kAutoH + ", 20 00 00 08 08 00 01", "60 autoH bw"},
    {kPlain, "60 autoH auto 0", easyMode(1), 0, kAutoH + ", 20 00 00 08 08 01 01", "60 autoH color"},
    {kPlain, "auto 20 auto 0", easyMode(1), 0, "20 00 00 08 08 01 01", "auto 20 color"},
    {kPlain, "60 autoH color 0", priority(2), 0, "21 02 01 00 00 02 02, 30 01, f8 01 de ff 00 00 01 01 01 01",
     "60 autoH color"},
    {kPlain, "60 20 color 0", priority(0), 0, "30 02, f8 00 de ff d5 00 01 01 01 01", "60 20 color"},
    {kPlain, "flickerless autoH color 0", priority(0), -7, "", "flickerless autoH color"},
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
    SCOPED_TRACE(std::string(c.before) + ": " + c.frames);
    EXPECT_EQ(c.request(d), c.result);
    EXPECT_EQ(joined(sent(), ", "), c.frames);
    EXPECT_EQ(joined({text(rows[0]), text(rows[1]), text(rows[2])}, " "), c.after);
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
  // A step starts from the speed behind the automatic mode.
  for (const auto& [before, stepped] : {std::pair{"auto", "50"}, {"flickerless", "100"}}) {
    d.store(camera_row::SHUTTER, before);
    EXPECT_EQ(d.stepShutter("+"), 0);
    EXPECT_EQ(text(camera_row::SHUTTER), stepped);
  }
  EXPECT_EQ(d.setShutterByName("auto"), 0);
  EXPECT_EQ(d.stepShutter("+"), 0);
  EXPECT_EQ(text(camera_row::SHUTTER), "100");
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
  const std::pair<int32_t, int32_t> indexes[] = {{-300, -5}, {-128, -5}, {-113, -5}, {-112, -4}, {-88, -4}, {-87, -3},
                                                 {-63, -3},  {-62, -2},  {-38, -2},  {-37, -1},  {-13, -1}, {-12, 0},
                                                 {8, 0},     {9, 1},     {24, 1},    {25, 2},    {40, 2},   {41, 3},
                                                 {56, 3},    {57, 4},    {72, 4},    {73, 5},    {127, 5},  {300, 5}};
  for (const auto& [raw, index] : indexes)
    EXPECT_EQ(dsp::aeReferenceIndex(raw), index) << raw;
  const int32_t raws[] = {-125, -125, -100, -75, -50, -25, 0, 16, 32, 48, 64, 80, 80};
  for (int32_t index = -6; index <= 6; ++index)
    EXPECT_EQ(dsp::aeReferenceRaw(index), raws[index + 6]) << index;

  CameraDSP d(kPlain);
  std::istringstream steps("16 + 32  0 - -25  80 + 80  127 + 80  -125 - -125");
  for (std::string from, step, to; steps >> from >> step >> to;) {
    setText(camera_row::AUTO_EXPOSURE_REFERENCE, from);
    EXPECT_EQ(d.stepAutoExposureReferenceIndex(step), 0);
    EXPECT_EQ(text(camera_row::AUTO_EXPOSURE_REFERENCE), to) << from << step;
  }
}

TEST_F(DspExposure, WordsAndTheirNumbers) {
  namespace row = camera_row;
  const struct {
    int32_t row;
    std::vector<std::pair<const char*, int32_t>> words;
  } cases[] = {
      {row::WHITE_BALANCE, {{"auto", 1}, {"AUTO", 0}}},
      {row::BRIGHTNESS, {{"auto", 1}, {"autoH", 2}, {"60", 63}, {"0", 3}, {"", 0}, {"6x", 0}}},
      {row::TRUE_DAY_NIGHT, {{"OFF", 1}}},
      {row::EASY_DAY_NIGHT, {{"OFF", 2}, {"bw", 0}}},
      {row::AUTO_EXPOSURE_PRIORITY, {{"quality", 2}}},
      {row::DNR_3D, {{"high", 3}}},
      {row::ATW_CONVERGENCE, {{"strong", 1}}},
      {row::ENHANCE_BAND, {{"high", 1}}},
      {row::STEALTH, {{"on", 1}}},
      {row::PRIVACY_MASK_STATUS, {{"", 0}}},
      {row::IDENTIFY, {{"ON", 0}}},
  };
  CameraDSP d(kPlain);
  for (const auto& [row, words] : cases) {
    for (const auto& [word, number] : words) {
      setText(row, word);
      EXPECT_EQ(d.getCurrentInt(row), number) << row << " " << word;
    }
  }
}

}  // namespace
