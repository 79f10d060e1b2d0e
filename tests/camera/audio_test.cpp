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
Texts heard(const Camera& camera) {
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

  static void run(const std::vector<Step>& steps) {
    expectSteps(camera(), "audio.input.", steps, [] { return heard(camera()); });
  }
};

TEST_F(AudioTest, InputReachesLibraryAndDriver) {
  run({{"halfduplex=off", kOk, {"audio_duplex 1", "halfduplex 5"}},
       {"halfduplex=on", kOk, {"audio_duplex 0", "halfduplex 5"}},
       {"powersupply.status=on", kOk, {"mic_power 10"}},
       {"powersupply.status=off", kOk, {"mic_power 11"}},
       {"loopback=on", kOk, {"loopback 15"}},
       {"loopback", "=on&200 OK"},
       {"loopback=off", kOk, {"loopback 14"}}});
  expectRows(camera(), kFile, {"AUDIO_HALFDUPLEX=on", "AUDIO_INPUT_POWER_SUPPLY=off", "AUDIO_HALFDUPLEX_GAIN=-18"});
}

TEST_F(AudioTest, TheGainIsKeptAsItsStep) {
  run({{"gain=25", kOk, {"mic_gain 1"}},
       {"gain", "=26&200 OK"},
       {"gain=-1", kOk, {"mic_gain 8"}},
       {"gain", "=0&200 OK"},
       {"gain=10", kOk, {"mic_gain 0"}},
       {"gain=auto", kOk, {"mic_gain 12"}},
       {"gain", "=auto&200 OK"},
       {"gain=3x", k451},
       {"gain=4294967297", kOk, {"mic_gain 2"}}});
  EXPECT_EQ(camera().row(kFile, "AUDIO_MIC_GAIN"), "32");
}

TEST_F(AudioTest, DetectionHasTwoChannels) {
  run({{"detection(1).status=on", kOk, {"audio1.status on"}},
       {"detection(2).status=off", kOk, {"audio2.status off"}},
       {"detection(2).level=100", kOk, {"audio2.level 100"}},
       {"detection(1).level=101", k457},
       {"detection(1).temporal=3000", kOk, {"audio1.temporal 3000"}},
       {"detection(2).temporal=7", kOk, {"audio2.temporal 7"}},
       {"detection(1).temporal", "=3000&200 OK"}});
  EXPECT_EQ(camera().row(detectionFile(1), "AUD_DETECT_STATUS"), "on");
  EXPECT_EQ(camera().row(detectionFile(2), "AUD_DETECT_TEMPORAL"), "7");
}

TEST_F(AudioTest, WhoDoesNotTakeItLeavesTheRows) {
  const std::string before = camera().read(kFile) + camera().read(detectionFile(1));
  camera().tell("gpio down");
  camera().tell("detection down");
  run({{"powersupply.status=on", k500},
       {"gain=auto", k500},
       {"loopback=on", k500},
       {"loopback", "=off&200 OK"},
       {"halfduplex=off", k500, {"audio_duplex 1"}},
       {"detection(1).level=77", k500}});
  for (const char* words : {"gpio up", "detection up", "detection refuse", "dsp fail=zr_set_audio_duplex"})
    camera().tell(words);
  run({{"detection(1).status=off", k500, {"audio1.status off"}}, {"halfduplex=off", k500, {"audio_duplex 1"}}});
  EXPECT_EQ(camera().read(kFile) + camera().read(detectionFile(1)), before);
  // Nobody waits for the driver's answer.
  camera().tell("gpio silent");
  run({{"gain=auto", kOk, {"mic_gain 12"}}});
}

TEST(Audio, AStartSendsTheStoredSoundAndLeavesTheRows) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.ask("audio.input.loopback=on");
  EXPECT_EQ(heard(camera).back(), "loopback 15");
  camera.setRows(kFile, {"AUDIO_MIC_GAIN=25", "AUDIO_HALFDUPLEX=off"});
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
  expectAnswers(camera(), {{"onvif.audio.output.volume=7", kOk},
                           {"audio.output.volume", "=7&200 OK"},
                           {"onvif.audio.output.volume", "=7&200 OK"},
                           {"onvif.audio.output.volume=11", k457},
                           {"onvif.audio.output.volume", k401, UserClass::kUser}});
}

TEST_F(AudioTest, DaylightSavingIsTheOnvifServicesAlone) {
  const std::string path = "onvif.system.daylightsaving";
  constexpr UserClass kOnvif = UserClass::kOnvif;
  camera().flash("count");
  expectAnswers(camera(), path,
                {{"", k401}, {"=off", k401}, {"", "=on&200 OK", kOnvif}, {"=on", kOk, kOnvif}, {"=ON", k451, kOnvif}});
  EXPECT_EQ(camera().flashOperations(), 0U);
  EXPECT_EQ(camera().journalFields("library", "what"), Texts());
  expectAnswers(camera(), path, {{"=off", kOk, kOnvif}, {"", "=off&200 OK", kOnvif}});
  EXPECT_EQ(camera().journalFields("library", "value"), Texts{"Japan"}) << "the zone is set anew";
  EXPECT_EQ(camera().row("sysinfo/system.conf", "DAYLIGHTSAVING"), "off");
  camera().tell("dsp fail=zr_set_timezone");
  expectAnswers(camera(), path, {{"=on", kOk, kOnvif}});
  EXPECT_EQ(camera().row("sysinfo/system.conf", "DAYLIGHTSAVING"), "on");
}

}  // namespace
}  // namespace test
