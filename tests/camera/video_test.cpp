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

  static std::vector<std::string> analogModes() {
    std::vector<std::string> modes;
    for (const std::string& line : camera().journal("library")) {
      if (Camera::field(line, "what") == "analog_out") modes.push_back(Camera::field(line, "value"));
    }
    return modes;
  }
};

TEST_F(VideoTest, TheOutputRunsBesideTheFirstEncoderAlone) {
  struct Case {
    std::string request;
    std::string answer;
    std::vector<std::string> modes;  ///< what reaches the library
    std::string row;                 ///< what the file holds
  };
  const Case cases[] = {
      {"video.output.status", "=off&200 OK", {}, "off"},
      {"video.output.status=on", kOk, {"1"}, "on"},
      {"video.output.status", "=on&200 OK", {}, "on"},
      {"video.output.status=ON", k451, {}, "on"},
      {"video.output.status=colorbar", kOk, {"3"}, "on"},
      {"video.output.status", "=on&200 OK", {}, "on"},
      {"encode(2).type=jpeg", "&202 Accepted(encode(2).status=save)", {}, "on"},
      {"video.output.status", "=off&200 OK", {}, "on"},
      {"video.output.status=on", k412, {}, "on"},
      {"video.output.status=colorbar", kOk, {"3"}, "on"},
      {"video.output.status=off", kOk, {"0"}, "off"},
      {"encode(2).type=off", "&202 Accepted(encode(2).status=save)", {}, "off"},
      {"video.output.status", "=off&200 OK", {}, "off"},
      {"video.output.video_signal", "=ntsc&200 OK", {}, "off"},
      {"video.output.video_signal=pal", kOk, {"2"}, "off"},
      {"video.output.video_signal", "=pal&200 OK", {}, "off"},
      {"video.output.video_signal=secam", k451, {}, "off"},
      {"video.output.video_signal=ntsc", kOk, {"1"}, "off"},
  };
  for (const Case& item : cases) {
    camera().clearJournal();
    EXPECT_EQ(camera().ask(item.request), item.request.substr(0, item.request.find('=')) + item.answer) << item.request;
    EXPECT_EQ(analogModes(), item.modes) << item.request;
    EXPECT_EQ(camera().row(kFile, "VIDEO_OUTPUT"), item.row) << item.request;
  }
}

TEST_F(VideoTest, TheLibraryMayRefuse) {
  camera().tell("dsp fail=zr_set_video_analog_out");
  expectAnswers(camera(), {{"video.output.status=on", "video.output.status&500 Internal Server Error"},
                           {"video.output.status", "video.output.status=off&200 OK"},
                           {"video.output.video_signal=pal", "video.output.video_signal&500 Internal Server Error"},
                           {"video.output.video_signal", "video.output.video_signal=pal&200 OK"}});
  EXPECT_EQ(camera().row(kFile, "VIDEO_OUTPUT"), "off");
}

TEST_F(VideoTest, AFullFlashRefusesWhatRunsAlready) {
  camera().flash("full");
  expectAnswers(camera(), {{"video.output.status=on", "video.output.status&500 Internal Server Error"},
                           {"video.output.status", "video.output.status=on&200 OK"},
                           {"video.output.status=colorbar", "video.output.status&200 OK"}});
  camera().flash("off");
  EXPECT_EQ(analogModes(), (std::vector<std::string>{"1", "3"}));
  EXPECT_TRUE(camera().isLogged("Audio: Cannot be write userdata"));
}

TEST_F(VideoTest, ARestartPutsTheStoredOutputOutAndTakesTheSwitch) {
  camera().ask("video.output.status=on&video.output.status=colorbar&video.output.video_signal=ntsc");
  camera().tell("dsp video_switch=1");
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(analogModes(), std::vector<std::string>{"1"});
  expectAnswers(camera(), {{"video.output.status", "video.output.status=on&200 OK"},
                           {"video.output.video_signal", "video.output.video_signal=pal&200 OK"}});
}

}  // namespace
}  // namespace test
