// The analog video output: when it can run, what reaches the camera library, what outlives a restart.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/sysconfig/video.conf";

class VideoTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().tell("dsp clear");
    camera().ask("video.output.status=off&encode(2).type=off");
    CameraTest::SetUp();
  }

  static Texts analogModes() {
    Texts modes;
    for (const std::string& line : camera().journal("library"))
      if (Camera::field(line, "what") == "analog_out") modes.push_back(Camera::field(line, "value"));
    return modes;
  }
};

TEST_F(VideoTest, TheOutputRunsBesideTheFirstEncoderAlone) {
  const std::string status = "video.output.status";
  const std::string signal = "video.output.video_signal";
  const char* hint = "&202 Accepted(encode(2).status=save)";
  const auto stored = [] { return camera().row(kFile, "VIDEO_OUTPUT"); };
  expectSteps(camera(), "",
              {{status, shows("off")},
               {status + "=on", kOk, {"1"}},
               {status + "=colorbar", kOk, {"3"}},
               {status, shows("on")},
               {"encode(2).type=jpeg", hint},
               {status, shows("off")},
               {status + "=on", k412},
               {status + "=colorbar", kOk, {"3"}}},
              analogModes);
  EXPECT_EQ(stored(), "on");
  expectSteps(camera(), "",
              {{status + "=off", kOk, {"0"}},
               {"encode(2).type=off", hint},
               {status, shows("off")},
               {signal, shows("ntsc")},
               {signal + "=pal", kOk, {"2"}},
               {signal, shows("pal")},
               {signal + "=ntsc", kOk, {"1"}}},
              analogModes);
  EXPECT_EQ(stored(), "off");
}

TEST_F(VideoTest, TheLibraryMayRefuse) {
  camera().tell("dsp fail=zr_set_video_analog_out");
  expectAnswers(camera(), {{"video.output.status=on", k500},
                           {"video.output.status", shows("off")},
                           {"video.output.video_signal=pal", k500},
                           {"video.output.video_signal", shows("pal")}});
  expectRows(camera(), kFile, {"VIDEO_OUTPUT=off"});
}

TEST_F(VideoTest, AFullFlashRefusesWhatRunsAlready) {
  camera().flash("full");
  expectAnswers(
      camera(),
      {{"video.output.status=on", k500}, {"video.output.status", shows("on")}, {"video.output.status=colorbar", kOk}});
  camera().flash("off");
  EXPECT_EQ(analogModes(), (Texts{"1", "3"}));
  EXPECT_TRUE(camera().isLogged("Audio: Cannot be write userdata"));
}

TEST_F(VideoTest, ARestartPutsTheStoredOutputOutAndTakesTheSwitch) {
  camera().ask("video.output.status=on&video.output.status=colorbar&video.output.video_signal=ntsc");
  camera().tell("dsp video_switch=1");
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(analogModes(), Texts{"1"});
  expectAnswers(camera(), {{"video.output.status", shows("on")}, {"video.output.video_signal", shows("pal")}});
}

}  // namespace
}  // namespace test
