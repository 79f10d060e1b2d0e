// Motion and tamper detection: the settings, what the detection daemon gets, and what is kept of it.

#include <array>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* k202 = "&202 Accepted(camera.detection.status=save)";

const std::string kArea = "0123456789abcdefABCDEF0123456789ff";
const std::string kMotion = "camera.detection";
const std::string kTamper = "camera.detection(tampering)";

/** A request, its answer behind the path, and what the daemon got meanwhile. */
struct Case {
  std::string request;
  std::string answer;
  Texts sent;
};

void expect(Camera& camera, const std::vector<Case>& cases) {
  for (const Case& item : cases) {
    camera.clearJournal();
    const std::string path = item.request.substr(0, item.request.find('='));
    EXPECT_EQ(camera.ask(item.request), path + item.answer) << item.request;
    EXPECT_EQ(camera.toldDetection(), item.sent) << item.request;
  }
}

class Detection : public CameraTest {
 protected:
  void TearDown() override { camera().tell("detection up"); }

  static std::string stored(const std::string& key) { return camera().row("flash/sysconfig/camera.conf", key); }
};

TEST_F(Detection, AcceptedValuesGoToTheDaemon) {
  const std::string loose = "0" + std::string(33, 'z');
  expect(camera(), {{kMotion + ".status=on", k202, {"motion.status on"}},
                    {kMotion + ".status", "=on&200 OK", {}},
                    {kMotion + "(motion).status=off", k202, {"motion.status off"}},
                    {kMotion + "(motion).status", "=off&200 OK", {}},
                    {kMotion + ".level=100", k202, {"motion.level 100"}},
                    {kMotion + ".level=007", k202, {"motion.level 7"}},
                    {kMotion + ".level", "=7&200 OK", {}},
                    {kMotion + ".area=" + kArea, k202, {"motion.area " + kArea}},
                    {kMotion + ".area", "=" + kArea + kOk, {}},
                    {kMotion + ".area=" + loose, k202, {"motion.area " + loose}},
                    {kMotion + ".area_count", "=80&200 OK", {}},
                    {kTamper + ".status=on", k202, {"tamper.status on"}},
                    {kTamper + ".status", "=on&200 OK", {}},
                    {kMotion + ".status", "=off&200 OK", {}},
                    {kTamper + ".status=off", k202, {"tamper.status off"}},
                    {kTamper + ".level=0", k202, {"tamper.level 0"}},
                    {kTamper + ".level", "=0&200 OK", {}},
                    {kMotion + ".level", "=7&200 OK", {}},
                    {kTamper + ".temporal=120", k202, {"tamper.temporal 120"}},
                    {kTamper + ".temporal=5", k202, {"tamper.temporal 5"}},
                    {kTamper + ".temporal", "=5&200 OK", {}}});
}

TEST_F(Detection, RefusedValuesDoNot) {
  expect(camera(), {{kMotion + ".status=ON", k451, {}},
                    {kMotion + ".level=101", k457, {}},
                    {kMotion + ".level=-1", k457, {}},
                    {kMotion + ".level=x", k451, {}},
                    {kMotion + ".area=" + kArea.substr(1), k451, {}},
                    {kMotion + ".area=" + kArea + "0", k451, {}},
                    {kMotion + ".area=g" + kArea.substr(1), k451, {}},
                    {kMotion + ".temporal", k461, {}},
                    {kMotion + ".temporal=x", k461, {}},
                    {kTamper + ".status=start", k451, {}},
                    {kTamper + ".level=4294967296", k457, {}},
                    {kTamper + ".temporal=4", k457, {}},
                    {kTamper + ".temporal=121", k457, {}},
                    {kTamper + ".temporal=5s", k451, {}},
                    {kTamper + ".area", k461, {}},
                    {kTamper + ".area=" + kArea, k461, {}},
                    {kTamper + ".area_count", k461, {}},
                    {"camera.detection(foo).status", k451, {}},
                    {"camera.detection(Motion).status=on", k451, {}}});
}

TEST_F(Detection, SavedAndRestored) {
  const std::string all = kMotion + ".status=on&" + kMotion + ".level=40&" + kMotion + ".area=" + kArea + "&" +
                          kTamper + ".status=on&" + kTamper + ".level=60&" + kTamper + ".temporal=30";
  camera().ask(all + "&camera.scene(5).status");
  expect(camera(), {{kMotion + ".status=save", kOk, {}}});
  EXPECT_EQ(stored("DETECT_STATUS"), "on");
  EXPECT_EQ(stored("DETECT_LEVEL"), "40");
  EXPECT_EQ(stored("DETECT_AREA"), kArea);
  EXPECT_EQ(stored("TAMP_DETECT_TEMPO"), "30");
  EXPECT_EQ(stored("SCENE_FILE_NAME"), "0");  // the scene that was spoken of is not made the current one

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
                    {kTamper + ".level", "=60&200 OK", {}},
                    {kMotion + ".level", "=1&200 OK", {}}});
  camera().ask(kMotion + ".status=off&" + kTamper + ".level=1");
  expect(camera(), {{kMotion + ".status=restore", kOk, both},
                    {kMotion + ".status", "=on&200 OK", {}},
                    {kMotion + ".level", "=40&200 OK", {}},
                    {kTamper + ".level", "=60&200 OK", {}}});

  camera().ask(kTamper + ".temporal=31");
  expect(camera(), {{kTamper + ".status=save", kOk, {}}});
  EXPECT_EQ(stored("TAMP_DETECT_TEMPO"), "31");
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
  expect(camera, {{kMotion + ".status", "=off&200 OK", {}},
                  {kMotion + ".status=on", k412, {}},
                  {kMotion + ".status=save", k412, {}},
                  {kMotion + "(motion).status=nonsense", k412, {}},
                  {kMotion + ".level=3", k202, {"motion.level 3"}},
                  {kTamper + ".status=on", k202, {"tamper.status on"}},
                  {kTamper + ".status", "=on&200 OK", {}}});
  EXPECT_EQ(camera.row("flash/sysconfig/camera.conf", "DETECT_STATUS"), "on");
}

}  // namespace
}  // namespace test
