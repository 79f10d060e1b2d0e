// Motion and tamper detection: the settings, what the detection daemon gets, and what is kept of it.

#include <array>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* k202 = "&202 Accepted(camera.detection.status=save)";

constexpr const char* kFile = "flash/sysconfig/camera.conf";
const std::string kArea = "0123456789abcdefABCDEF0123456789ff";
const std::string kMotion = "camera.detection";
const std::string kTamper = "camera.detection(tampering)";

void expect(Camera& camera, const std::vector<Step>& cases) {
  expectSteps(camera, "", cases, [&] { return camera.toldDetection(); });
}

class Detection : public CameraTest {
 protected:
  void TearDown() override { camera().tell("detection up"); }

  static std::string stored(const std::string& key) { return camera().row(kFile, key); }
};

TEST_F(Detection, AcceptedValuesGoToTheDaemon) {
  const std::string loose = "0" + std::string(33, 'z');
  expect(camera(), {{kMotion + ".status=on", k202, {"motion.status on"}},
                    {kMotion + "(motion).status=off", k202, {"motion.status off"}},
                    {kMotion + ".level=007", k202, {"motion.level 7"}},
                    {kMotion + ".area=" + kArea, k202, {"motion.area " + kArea}},
                    {kMotion + ".area=" + loose, k202, {"motion.area " + loose}},
                    {kMotion + ".area_count", shows("80")},
                    {kTamper + ".status=on", k202, {"tamper.status on"}},
                    {kTamper + ".status", shows("on")},
                    {kMotion + "(motion).status", shows("off")},
                    {kTamper + ".status=off", k202, {"tamper.status off"}},
                    {kTamper + ".level=0", k202, {"tamper.level 0"}},
                    {kMotion + ".level", shows("7")},
                    {kTamper + ".temporal=120", k202, {"tamper.temporal 120"}}});
}

TEST_F(Detection, EachKindHasItsOwnSettings) {
  expectEach(
      camera(), "",
      {kMotion + ".temporal", kMotion + ".temporal=x", kTamper + ".area", kTamper + ".area=1", kTamper + ".area_count"},
      k461);
  expectEach(camera(), "", {"camera.detection(Motion).status=on"}, k451);
}

TEST_F(Detection, SavedAndRestored) {
  camera().ask(kMotion + ".status=on&" + kMotion + ".level=40&" + kMotion + ".area=" + kArea + "&" + kTamper +
               ".status=on&" + kTamper + ".level=60&" + kTamper + ".temporal=30&camera.scene(5).status");
  expect(camera(), {{kMotion + ".status=save", kOk}});
  expectRows(camera(), kFile, {"DETECT_STATUS=on", "DETECT_LEVEL=40", "DETECT_AREA=" + std::string(kArea)});
  expectRows(camera(), kFile, {"TAMP_DETECT_TEMPO=30"});
  expectRows(camera(), kFile, {"SCENE_FILE_NAME=0"});  // the scene that was spoken of is not made the current one

  const Texts tamper = {"tamper.level 60",
                        "tamper.temporal 30",
                        "tamper.status on",
                        "tamper.aspect 16:9",
                        "tamper.agc_mode " + stored("BRIGHTNESS"),
                        "tamper.blc_type " + stored("BLC"),
                        "tamper.senseup " + stored("SENSEUP_LIMIT"),
                        "tamper.reference " + stored("AUTO_EXPOSURE_REFERENCE")};
  Texts both = {"motion.area " + kArea, "motion.level 40", "motion.status on"};
  both.insert(both.end(), tamper.begin(), tamper.end());
  camera().ask(kMotion + ".level=1&" + kTamper + ".status=off&" + kTamper + ".level=1");
  expect(camera(), {{kTamper + ".status=restore", kOk, tamper},
                    {kTamper + ".level", shows("60")},
                    {kMotion + ".level", shows("1")}});
  camera().ask(kMotion + ".status=off&" + kTamper + ".level=1");
  expect(camera(), {{kMotion + ".status=restore", kOk, both},
                    {kMotion + ".status", shows("on")},
                    {kMotion + ".level", shows("40")},
                    {kTamper + ".level", shows("60")}});

  camera().ask(kTamper + ".temporal=31");
  expect(camera(), {{kTamper + ".status=save", kOk}});
  expectRows(camera(), kFile, {"TAMP_DETECT_TEMPO=31"});
}

TEST_F(Detection, OnlyWhatTheDaemonTookIsKept) {
  const std::string motion = kMotion + ".status=on&" + kMotion + ".level=50&" + kMotion + ".area=" + kArea;
  const std::string tamper = kTamper + ".status=on&" + kTamper + ".level=50&" + kTamper + ".temporal=50";
  for (const char* fault : {"down", "refuse"}) {
    camera().ask(motion);
    camera().ask(tamper);
    camera().tell(std::string("detection ") + fault);
    for (const auto& [path, other, kept] : {std::array{kMotion + ".status", std::string("off"), std::string("on")},
                                            {kMotion + ".level", "51", "50"},
                                            {kMotion + ".area", std::string(34, 'F'), kArea},
                                            {kTamper + ".status", "off", "on"},
                                            {kTamper + ".level", "51", "50"},
                                            {kTamper + ".temporal", "51", "50"}})
      expectAnswers(camera(), {{path + "=" + other, k500}, {path, shows(kept)}});
    expectEach(camera(), "", {kMotion + ".status=restore", kTamper + ".status=restore"}, k500);
    camera().tell("detection up");
  }
}

/** One value that is refused does not keep the others from the daemon. */
TEST_F(Detection, ARestoreSendsWhatItCan) {
  camera().ask(kMotion + ".area=" + kArea + "&" + kMotion + ".status=save");
  camera().tell("detection refuse for=motion.area");
  camera().clearJournal();
  EXPECT_EQ(camera().ask(kMotion + ".status=restore"), kMotion + ".status" + k500);
  EXPECT_EQ(camera().toldDetection().size(), 11U);
}

TEST(DetectionAndEncoder, MotionDetectionIsOffAtAHighRate) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.ask(kMotion + ".status=on&" + kMotion + ".status=save");
  camera.setRow("flash/sysconfig/encode/encode0.conf", "FRAME_RATE", "30");
  ASSERT_TRUE(camera.reboot());
  expect(camera, {{kMotion + ".status", shows("off")},
                  {kMotion + ".status=on", k412},
                  {kMotion + ".status=save", k412},
                  {kMotion + "(motion).status=nonsense", k412},
                  {kMotion + ".level=3", k202, {"motion.level 3"}},
                  {kTamper + ".status=on", k202, {"tamper.status on"}},
                  {kTamper + ".status", shows("on")}});
  EXPECT_EQ(camera.row(kFile, "DETECT_STATUS"), "on");
}

}  // namespace
}  // namespace test
