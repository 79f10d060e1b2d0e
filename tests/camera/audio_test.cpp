// Sound in and out: what reaches the library, the driver and the detection, and what is kept.

#include <algorithm>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/sysconfig/audio.conf";

std::string detectionFile(int channel) {
  return "flash/sysconfig/aud_detect/aud_detect" + std::to_string(channel - 1) + ".conf";
}

/** What the driver, the library and the detection heard, each in its order. */
Texts heard(Camera& camera) {
  camera.tell("gpio none");  // the driver's messages have no reply; behind this one they have arrived
  Texts all;
  for (const std::string& line : camera.journal()) {
    const std::string who = Camera::field(line, "who");
    const std::string what = Camera::field(line, "what");
    const bool isDriver = who == "gpio" && what != "init_done";
    if (isDriver) all.push_back(what + " " + Camera::field(line, "a"));
    if (who == "library" && what.starts_with("audio_")) all.push_back(what + " " + Camera::field(line, "value"));
    if (who == "detection" && what.starts_with("audio")) all.push_back(what + " " + Camera::field(line, "text"));
  }
  return all;
}

class AudioTest : public CameraTest {
 protected:
  void SetUp() override {
    for (const char* words : {"gpio up", "detection up", "dsp clear"})
      camera().tell(words);
    CameraTest::SetUp();
  }
};

struct Step {
  std::string request;  ///< behind "audio."
  std::string answer;
  Texts told = {};
};

void run(Camera& camera, const std::vector<Step>& steps) {
  for (const Step& step : steps) {
    camera.clearJournal();
    const std::string path = "audio." + step.request.substr(0, step.request.find('='));
    EXPECT_EQ(camera.ask("audio." + step.request), path + step.answer) << step.request;
    EXPECT_EQ(heard(camera), step.told) << step.request;
  }
}

TEST_F(AudioTest, InputReachesLibraryAndDriver) {
  run(camera(), {{"input.halfduplex=off", kOk, {"audio_duplex 1", "halfduplex 5"}},
                 {"input.halfduplex", "=off&200 OK"},
                 {"input.halfduplex=on", kOk, {"audio_duplex 0", "halfduplex 5"}},
                 {"input.halfduplex=1", k451},
                 {"input.powersupply.status=on", kOk, {"mic_power 10"}},
                 {"input.powersupply.status", "=on&200 OK"},
                 {"input.powersupply.status=off", kOk, {"mic_power 11"}},
                 {"input.powersupply.status=auto", k451},
                 {"input.loopback", "=off&200 OK"},
                 {"input.loopback=on", kOk, {"loopback 15"}},
                 {"input.loopback", "=on&200 OK"},
                 {"input.loopback=off", kOk, {"loopback 14"}},
                 {"input.loopback=x", k451},
                 {"output.volume=10", kOk},
                 {"output.volume", "=10&200 OK"},
                 {"output.volume=0", k457},
                 {"output.volume=11", k457},
                 {"output.volume=4294967297", k457},
                 {"output.volume=loud", k451}});
  EXPECT_EQ(camera().row(kFile, "AUDIO_HALFDUPLEX"), "on");
  EXPECT_EQ(camera().row(kFile, "AUDIO_INPUT_POWER_SUPPLY"), "off");
  EXPECT_EQ(camera().row(kFile, "AUDIO_OUTPUT_VOLUME"), "10");
  EXPECT_EQ(camera().row(kFile, "AUDIO_HALFDUPLEX_GAIN"), "-18");
}

TEST_F(AudioTest, TheGainIsKeptAsItsStep) {
  run(camera(), {{"input.gain=25", kOk, {"mic_gain 1"}},
                 {"input.gain", "=26&200 OK"},
                 {"input.gain=-1", kOk, {"mic_gain 8"}},
                 {"input.gain", "=0&200 OK"},
                 {"input.gain=10", kOk, {"mic_gain 0"}},
                 {"input.gain", "=20&200 OK"},
                 {"input.gain=auto", kOk, {"mic_gain 12"}},
                 {"input.gain", "=auto&200 OK"},
                 {"input.gain=Auto", k451},
                 {"input.gain=3x", k451},
                 {"input.gain=4294967297", kOk, {"mic_gain 2"}},
                 {"input.gain", "=32&200 OK"}});
  EXPECT_EQ(camera().row(kFile, "AUDIO_MIC_GAIN"), "32");
}

TEST_F(AudioTest, DetectionHasTwoChannels) {
  run(camera(), {{"input.detection(1).status=on", kOk, {"audio1.status on"}},
                 {"input.detection(2).status=off", kOk, {"audio2.status off"}},
                 {"input.detection(1).status", "=on&200 OK"},
                 {"input.detection(2).level=100", kOk, {"audio2.level 100"}},
                 {"input.detection(2).level=0", kOk, {"audio2.level 0"}},
                 {"input.detection(2).level", "=0&200 OK"},
                 {"input.detection(1).level=101", k457},
                 {"input.detection(1).level=-1", k457},
                 {"input.detection(1).level=4294967297", k457},
                 {"input.detection(1).level=x", k451},
                 {"input.detection(1).temporal=3000", kOk, {"audio1.temporal 3000"}},
                 {"input.detection(2).temporal=7", kOk, {"audio2.temporal 7"}},
                 {"input.detection(1).temporal", "=3000&200 OK"},
                 {"input.detection(1).temporal=3001", k457},
                 {"input.detection(1).temporal=-1", k457},
                 {"input.detection(1).status=ON", k451},
                 {"input.detection(3).level=5", k456},
                 {"input.detection(x).level=5", k451},
                 {"input.detection.level=5", k461}});
  EXPECT_EQ(camera().row(detectionFile(1), "AUD_DETECT_STATUS"), "on");
  EXPECT_EQ(camera().row(detectionFile(2), "AUD_DETECT_LEVEL"), "0");
  EXPECT_EQ(camera().row(detectionFile(2), "AUD_DETECT_TEMPORAL"), "7");
}

TEST_F(AudioTest, WhoDoesNotTakeItLeavesTheRows) {
  const std::string before = camera().read(kFile);
  camera().tell("dsp fail=zr_set_audio_duplex");
  run(camera(), {{"input.halfduplex=off", k500, {"audio_duplex 1"}}});
  EXPECT_EQ(camera().read(kFile), before);
}

TEST(Audio, AStartSendsTheStoredSoundAndLeavesTheRows) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.ask("audio.input.loopback=on");
  EXPECT_EQ(heard(camera).back(), "loopback 15");
  camera.setRow(kFile, "AUDIO_MIC_GAIN", "25");
  camera.setRow(kFile, "AUDIO_HALFDUPLEX", "off");
  camera.setRow(detectionFile(2), "AUD_DETECT_LEVEL", "7");
  const std::string before = camera.read(kFile);
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());
  Texts all = heard(camera);
  // Nobody waits for the driver, whose lines may come later than those of the library.
  std::ranges::stable_partition(all, [](const std::string& line) { return !line.starts_with("audio"); });
  EXPECT_EQ(all, (Texts{"mic_power 11", "halfduplex 5", "mic_gain 1", "audio_duplex 1", "audio1.status off",
                        "audio1.level 50", "audio1.temporal 1000", "audio2.status off", "audio2.level 7",
                        "audio2.temporal 1000"}));
  EXPECT_EQ(camera.read(kFile), before);
  EXPECT_EQ(camera.ask("audio.input.gain&audio.input.loopback"),
            "audio.input.gain=25&200 OK\r\naudio.input.loopback=off&200 OK");
}

TEST_F(AudioTest, TheOnvifRootForwards) {
  expectAnswers(camera(),
                {{"onvif.audio.output.volume=7", "onvif.audio.output.volume&200 OK"},
                 {"audio.output.volume", "audio.output.volume=7&200 OK"},
                 {"onvif.audio.output.volume", "onvif.audio.output.volume=7&200 OK"},
                 {"onvif.audio.output.volume=11", "onvif.audio.output.volume&457 Invalid Range"},
                 {"onvif.audio.output.volume=x", "onvif.audio.output.volume&451 Parameter Not Understood"},
                 {"onvif.audio.output.volume", "onvif.audio.output.volume&401 Unauthorized", UserClass::kUser}});
}

TEST_F(AudioTest, DaylightSavingIsTheOnvifServicesAlone) {
  constexpr const char* kPath = "onvif.system.daylightsaving";
  constexpr const char* kSystem = "sysinfo/system.conf";
  const auto ask = [](const std::string& item, UserClass user = UserClass::kOnvif) {
    return camera().ask("onvif.system.daylightsaving" + item, user).substr(std::string(kPath).size());
  };
  EXPECT_EQ(ask("", UserClass::kAdmin), k401);
  EXPECT_EQ(ask("=off", UserClass::kAdmin), k401);
  EXPECT_EQ(ask(""), "=on&200 OK");
  camera().flash("count");
  EXPECT_EQ(ask("=on"), kOk);
  EXPECT_EQ(camera().flashOperations(), 0U);
  EXPECT_EQ(ask("=ON"), k451);
  EXPECT_EQ(camera().journalFields("library", "what"), Texts());
  EXPECT_EQ(ask("=off"), kOk);
  EXPECT_EQ(camera().journalFields("library", "value"), Texts{"Japan"}) << "the zone is set anew";
  EXPECT_EQ(camera().row(kSystem, "DAYLIGHTSAVING"), "off");
  EXPECT_EQ(ask(""), "=off&200 OK");
  camera().tell("dsp fail=zr_set_timezone");
  EXPECT_EQ(ask("=on"), kOk);
  EXPECT_EQ(camera().row(kSystem, "DAYLIGHTSAVING"), "on");
}

}  // namespace
}  // namespace test
