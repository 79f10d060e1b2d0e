// The scenes: what each setting takes and what it makes of it, which scene can be changed, goto, save and restore.

#include <algorithm>
#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* k202 = "&202 Accepted(camera.scene.status=save)";

/** A write of a setting of the current scene that is taken. */
struct Taken {
  std::string item;   ///< "path=value" below camera.scene.
  Texts frames;       ///< what reached the DSP: "address" or "address:field=value"
  std::string shown;  ///< what a read gives afterwards
  Texts told = {};    ///< what reached the detection daemon
};

/** The frames to the DSP since the journal was cleared, in the words of `expected`; without the probe of the board. */
Texts framesIn(const Camera& camera, const Texts& expected) {
  Texts frames;
  for (const std::string& line : camera.journal("dsp")) {
    const std::string address = Camera::field(line, "addr");
    if (Camera::field(line, "what") != "set" || address == "0x18" || address == "0x19") continue;
    std::string text = address;
    const std::string wanted = frames.size() < expected.size() ? expected[frames.size()] : "";
    if (const size_t colon = wanted.find(':'); colon != std::string::npos) {
      const std::string name = wanted.substr(colon + 1, wanted.find('=') - colon - 1);
      text += ":" + name + "=" + Camera::field(line, name);
    }
    frames.push_back(text);
  }
  return frames;
}

void expectTaken(Camera& camera, const std::vector<Taken>& cases) {
  for (const Taken& item : cases) {
    camera.clearJournal();
    expectAnswers(camera, {{"camera.scene." + item.item, k202}});
    EXPECT_EQ(framesIn(camera, item.frames), item.frames) << item.item;
    EXPECT_EQ(camera.toldDetection(), item.told) << item.item;
    expectAnswers(camera, {{"camera.scene." + pathOf(item.item), shows(item.shown)}});
  }
}

/** Requests that are refused by what is in force: nothing is sent, and nothing changes. */
void expectRefused(Camera& camera, const std::string& answer, std::initializer_list<std::string> items) {
  for (const std::string& item : items) {
    const std::string path = "camera.scene." + pathOf(item);
    const std::string before = camera.ask(path);
    camera.clearJournal();
    expectAnswers(camera, {{"camera.scene." + item, answer}, {path, before}});
    EXPECT_EQ(framesIn(camera, {}), Texts()) << item;
  }
}

void set(Camera& camera, std::initializer_list<const char*> items) {
  for (const char* item : items)
    expectAnswers(camera, {{std::string("camera.scene.") + item, k202}});
}

std::string sceneFile(int scene) { return "flash/sysconfig/scene/" + std::to_string(scene) + ".conf"; }
constexpr const char* kCameraFile = "flash/sysconfig/camera.conf";

class Scenes : public CameraTest {
 protected:
  void SetUp() override {
    EXPECT_EQ(camera().ask("camera.scene(0).status=goto").substr(0, 25), "camera.scene(0).status&20");
    set(camera(), {"image.true_daynight=color", "image.senseup_limit=0", "shutter=60", "image.brightness=autoM",
                   "image.blc=off", "image.color=50", "image.enhance=50", "image.pedestal=0", "image.gamma=0.45"});
    CameraTest::SetUp();
  }
  void TearDown() override {
    camera().tell("dsp clear");
    camera().tell("detection up");
    camera().flash("off");
  }

  /** Whether the DSP got what belongs to the camera and not to a scene: its model, to name one. */
  static bool hasCameraWideFrames() {
    const Texts frames = framesIn(camera(), {});
    return std::count(frames.begin(), frames.end(), "0xf3") == 1;
  }
};

TEST_F(Scenes, SettingsThatMoveOneFieldOfAFrame) {
  const struct {
    std::string path;
    std::string field;
    std::string values;  ///< in triples of words: what is written, the field in the frame, what is shown
  } settings[] = {
      {"image.color", "0x60:color",
       "0 -5 0  8 -5 8  9 -4 9  27 -2 27  35 -2 35  36 -1 36  44 -1 44  45 0 45  54 0 54  55 0 55  60 1 60  "
       "66 2 66  78 3 78  89 4 89  92 5 92  94 5 94  95 5 95  100 5 100"},
      {"image.color", "0x60:color",
       "+ 5 100  - 4 91  + 5 100  3 -5 3  - -5 3  9 -4 9  - -5 8  0 -5 0  + -4 17  50 0 50  + 1 64"},
      {"image.enhance", "0x60:enhance",
       "0 -5 0  8 -5 8  9 -4 9  27 -2 27  35 -1 35  36 -1 36  44 0 44  45 0 45  54 1 54  55 1 55  60 2 60  "
       "66 3 66  78 5 78  89 6 89  92 7 92  94 7 94  95 8 95  100 8 100"},
      {"image.enhance", "0x60:enhance",
       "96 8 96  + 8 96  26 -3 26  + -2 34  44 0 44  - -1 43  44 0 44  + 1 59  - 0 53"},
      {"image.pedestal", "0x60:pedestal", "0 0 0  + 0 32  - 0 0  31 0 31  - 0 31  51 1 51  60 1 60  + 1 60"},
      {"image.gamma", "0x60:gamma", "0.6 1 1  + 1 1  - 0 0.45  0.35 0 0.45"},
      {"image.3ddnr", "0x60:dnr", "mid 2 mid"},
      {"image.lumx", "0x60:lumx", "on 1 on  off 0 off"},
      {"shutter", "0x21:speed", "250 5 250  + 6 500"},
      {"shutter", "0x21:shutter", "30 1 30  - 0 30"},
      {"auto_exposure.av_pk.color", "0x20:avpk_color", "5 5 5"},
      {"auto_exposure.av_pk.black_white", "0x20:avpk_bw", "10 10 10"},
      {"image.true_daynight", "0x20:daynight", "bw 0 bw  autoL 2 autoL  auto 3 autoM  autoH 4 autoH"},
      {"image.true_daynight.af", "0x82:value", "off 0 off  on 1 on"},
      {"image.white_balance", "0x40:mode", "manual 0 manual"},
      {"image.white_balance.r", "0x40:r", "s10 10 s10  - 8 s8  s254 254 s254  + 255 s255"},
      {"image.white_balance.b", "0x40:b", "s1 1 s1  - 0 s0  s254 254 s254  + 255 s255"},
      {"image.white_balance", "0x40:mode", "autoN 2 autoN  auto 1 autoW"},
  };
  for (const auto& [path, field, values] : settings) {
    std::istringstream words(values);
    for (std::string written, number, shown; words >> written >> number >> shown;)
      expectTaken(camera(), {{path + "=" + written, {field + "=" + number}, shown}});
  }
  expectTaken(camera(), {{"image.white_balance=op_auto", {"0x40:mode=0", "0x41:state=1"}, "manual"}});
}

TEST_F(Scenes, ExposureSettings) {
  const Texts gainFrames{"0x21:agc=1", "0x30:mode=1", "0xf8:automatic=1"};
  expectTaken(camera(),
              {{"image.senseup_limit=8", {"0x21:senseup_limit=3"}, "8", {"tamper.senseup 8"}},
               {"image.senseup_limit=+", {"0x21:senseup_limit=4"}, "16"},
               {"image.senseup_limit=60", {"0x21:senseup_limit=6"}, "60", {"tamper.senseup 60"}},
               {"image.senseup_limit=+", {"0x21:senseup_limit=6"}, "60"},
               {"image.senseup_limit=-", {"0x21:senseup_limit=5"}, "32"},
               {"image.senseup_limit=0", {"0x21:senseup_limit=0"}, "0", {"tamper.senseup 0"}},
               {"image.senseup_limit=-", {"0x21:senseup_limit=0"}, "0"},
               {"image.brightness=10", {"0x30:mode=2", "0xf8:gain=106"}, "10", {"tamper.agc_mode 10"}},
               {"image.brightness=55", {"0x30:mode=2", "0xf8:gain=423"}, "48", {"tamper.agc_mode 55"}},
               {"shutter=auto", {"0x21:agc=1", "0x30:mode=1", "0xf8:automatic=1", "0x21:shutter=1"}, "auto"},
               {"image.brightness=autoM", gainFrames, "autoM", {"tamper.agc_mode autoM"}},
               {"shutter=semi_auto", {"0x21:fast_limit=5"}, "auto250"},
               {"auto_exposure.priority=quality", {"0x21:priority=2", "0x30", "0xf8"}, "quality"},
               {"shutter=flickerless", {"0x21:shutter=2"}, "flickerless"},
               {"auto_exposure.reference=3", {"0x20:reference=48"}, "3", {"tamper.reference 48"}},
               {"auto_exposure.reference=+", {"0x20:reference=64"}, "4", {"tamper.reference 64"}},
               {"auto_exposure.reference_ext=-", {"0x20:reference=62"}, "62", {"tamper.reference 62"}},
               {"auto_exposure.reference_ext=-128", {"0x20:reference=-128"}, "-128", {"tamper.reference -128"}},
               {"auto_exposure.reference_ext=-", {"0x20:reference=-128"}, "-128", {"tamper.reference -128"}},
               {"auto_exposure.reference_ext=126", {"0x20:reference=126"}, "126", {"tamper.reference 126"}},
               {"auto_exposure.reference_ext=+", {"0x20:reference=127"}, "127", {"tamper.reference 127"}}});
  expectRefused(camera(), k405, {"auto_exposure.priority=motion", "image.brightness=10"});  // flickerless
  set(camera(), {"image.senseup_limit=2"});
  expectRefused(camera(), k457, {"shutter=60"});
  set(camera(), {"image.senseup_limit=0", "shutter=60", "image.true_daynight=autoL"});
  expectRefused(camera(), k405, {"image.brightness=5"});
  expectRefused(camera(), k461, {"image.easy_daynight=bw", "image.brightness.highgain"});
}

TEST_F(Scenes, BacklightCompensation) {
  const std::string area = "0123456789abcdefABCDEF0123456789ff";
  const std::string other = "1" + area.substr(1);
  const Texts pages{"0x22:page=0", "0x22:page=1"};
  expectTaken(camera(), {{"image.blc=b", {"0x20:blc=2"}, "b", {"tamper.blc_type b"}},
                         {"image.blc.area=" + area, {}, area, {"tamper.blc_area " + area}},
                         {"image.blc=manual", {"0x20:blc=5", pages[0], pages[1]}, "manual", {"tamper.blc_type manual"}},
                         {"image.blc.area=" + other, pages, other, {"tamper.blc_area " + other}}});
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.scene.image.blc.area=" + other, kOk}});
  EXPECT_EQ(framesIn(camera(), pages), pages);
}

TEST_F(Scenes, OnlyTheCurrentOneCanBeChanged) {
  expectAnswers(
      camera(),
      {{"camera.scene.status", shows("0")},
       {"camera.scene(0).image.color=40", "&202 Accepted(camera.scene(0).status=save)"},
       {"camera.scene(3).image.color=40", k412},
       {"camera.scene(3).image.color=x", k412},
       {"camera.scene(3).shutter", shows("auto")},
       {"camera.scene(3).name", shows("Night")},
       {"camera.scene(3).auto_exposure.av_pk.black_white=6", "&202 Accepted(camera.scene(3).status=save)"},
       {"camera.scene.auto_exposure.av_pk.black_white", shows("6")},
       {"camera.scene(3).status",
        shows("Night-0-custom-0.45-auto-color-on-0-0-OFF-high-0-mid-autoM-8-combo-color-8-8-autoW-54-87-off-off-0-"
              "normal-FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF")}});
}

TEST_F(Scenes, GotoWaitsForASave) {
  constexpr const char* kHint2 = "&202 Accepted(camera.scene(2).status=save)";
  expectAnswers(camera(), {{"camera.scene.status=save", kOk}});
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.scene(2).status=goto", kHint2},
                           {"camera.scene.status", shows("2")},
                           {"camera.scene.image.color", shows("0")}});
  EXPECT_EQ(framesIn(camera(), {}).back(), "0x60");
  EXPECT_FALSE(hasCameraWideFrames());
  EXPECT_EQ(camera().toldDetection(), Texts{"tamper.reference 0"});
  expectRows(camera(), kCameraFile, {"SCENE_FILE_NAME=0"});
  // The new scene is what a restore goes back to.
  expectAnswers(camera(), {{"camera.status=restore", kOk},
                           {"camera.scene.image.color", shows("0")},
                           {"camera.scene(2).image.color=77", kHint2},
                           {"camera.scene(0).image.color=50", k412},
                           {"camera.scene(2).status=save", kOk}});
  expectRows(camera(), kCameraFile, {"SCENE_FILE_NAME=2", "COMMENT2=Day", "COLOR=77"});
  expectRows(camera(), sceneFile(2), {"COLOR=77", "COMMENT2=Day"});

  set(camera(), {"image.color=12"});  // lost: nobody saves it
  ASSERT_TRUE(camera().reboot());
  expectAnswers(camera(), {{"camera.scene.status", shows("2")}, {"camera.scene.image.color", shows("77")}});
  camera().write(sceneFile(2), "COLOR=55\nSHUTTER=250\n");
  expectAnswers(camera(), {{"camera.scene(2).status=goto", kOk},
                           {"camera.scene.image.color", shows("55")},
                           {"camera.scene.shutter", shows("250")}});
  expectRows(camera(), kCameraFile, {"COLOR=55"});  // a goto to the current scene waits for nothing

  camera().clearJournal();
  expectAnswers(camera(), {{"camera.scene(2).status=initialize", kOk}, {"camera.scene.image.color", shows("0")}});
  EXPECT_TRUE(hasCameraWideFrames());
  expectRows(camera(), sceneFile(2), {"COLOR=0"});
  expectRows(camera(), kCameraFile, {"COLOR=0"});

  // The second goto to a scene is one to the current scene, and writes what the first one left in memory.
  camera().ask("camera.scene(3).status=goto&camera.scene(3).status=goto");
  expectRows(camera(), kCameraFile, {"COMMENT2=Night"});
}

TEST_F(Scenes, TheCameraSavesAndRestoresAsAWhole) {
  const std::string duration = "camera.motion.auto_patrol(0).position(4).duration";
  camera().ask(duration + "=10&camera.motion.position.speed=100");
  expectAnswers(camera(), {{"camera.scene.status=save", kOk}, {"camera.scene.image.color=33", k202}});
  expectRows(camera(), kCameraFile, {"COLOR=50"});
  camera().ask(duration + "=20&camera.motion.position.speed=55");
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.status=restore", kOk},
                           {"camera.scene.image.color", shows("50")},
                           {duration, duration + shows("10")},
                           {"camera.motion.position.speed", shows("100")}});
  EXPECT_EQ(camera().toldDetection().size(), 11U);
  EXPECT_TRUE(hasCameraWideFrames());

  // The live picture goes into the scene that was spoken of last; the current scene stays.
  for (const int scene : {5, 7})
    camera().write(sceneFile(scene), "COLOR=0\n");
  camera().ask(duration + "=30&camera.motion.position.speed=55");
  expectAnswers(camera(), {{"camera.scene.image.color=34", k202},
                           {"camera.scene(5).status", camera().ask("camera.scene(5).status")},
                           {"camera.status=save", kOk}});
  expectRows(camera(), sceneFile(5), {"COLOR=34", "COMMENT2=Wide_d"});
  expectRows(camera(), sceneFile(7), {"COMMENT2=Lumx"});
  expectRows(camera(), kCameraFile, {"SCENE_FILE_NAME=0", "COLOR=34", "POSITION_SPEED=55"});
  expectRows(camera(), "flash/sysconfig/patrol/0.conf", {"PATROL_DURATION_4=30"});

  // The save of a scene makes it the current one.
  expectAnswers(camera(), {{"camera.scene(7).status=save", kOk}});
  expectRows(camera(), kCameraFile, {"SCENE_FILE_NAME=7", "COMMENT2=Lumx"});
}

TEST_F(Scenes, InitializeOfAnotherSceneChangesNoPicture) {
  camera().write(sceneFile(4), "COLOR=91\n");
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.scene(4).status=initialize", kOk}});
  expectRows(camera(), sceneFile(4), {"COLOR=0"});
  EXPECT_EQ(framesIn(camera(), {}), Texts());
  expectAnswers(camera(), {{"camera.scene.image.color", shows("50")}});
}

TEST_F(Scenes, AFastEncoderSwitchesNoiseReductionOff) {
  set(camera(), {"image.3ddnr=mid"});
  expectAnswers(camera(), {{"camera.scene.status=save", kOk}});
  set(camera(), {"image.3ddnr=low"});
  camera().ask("encode(1).framerate=30");
  expectRefused(camera(), k412, {"image.3ddnr=high", "image.3ddnr=2"});
  EXPECT_NE(camera().ask("camera.scene(0).status").find("-high-50-off-"), std::string::npos);
  expectAnswers(camera(), {{"camera.scene.status=save", kOk}});
  expectRows(camera(), sceneFile(0), {"DNR_3D=mid"});  // the live "low" stays behind
  expectRows(camera(), kCameraFile, {"DNR_3D=mid"});
  expectAnswers(camera(), {{"camera.scene.image.3ddnr", shows("low")}});
  camera().ask("encode(1).framerate=5");
}

TEST_F(Scenes, FailuresOfTheWorldAre500) {
  camera().tell("dsp fail=0x60,0x20,0x82");
  for (const auto& [item, answer] : {std::pair{"image.color=70", k500},
                                     {"image.3ddnr=low", k500},
                                     {"image.blc=a", k500},
                                     {"image.true_daynight=bw", k405},
                                     {"image.true_daynight.af=off", k500}}) {
    const std::string path = "camera.scene." + pathOf(item);
    const std::string before = camera().ask(path);
    expectAnswers(camera(), {{std::string("camera.scene.") + item, answer}, {path, before}});
  }
  EXPECT_TRUE(camera().isLogged("code[416] not hundle"));
  expectAnswers(camera(), {{"camera.scene(1).status=goto", k500}, {"camera.scene.status", shows("0")}});
  camera().tell("dsp clear");

  // The DSP has the value by the time the detection daemon fails.
  camera().tell("detection down");
  expectAnswers(camera(),
                {{"camera.scene.image.brightness=autoH", k500}, {"camera.scene.image.brightness", shows("autoH")}});
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.status=restore", k500}});
  EXPECT_FALSE(framesIn(camera(), {}).empty()) << "the picture goes back all the same";
  camera().tell("detection up");

  camera().flash("full");
  expectEach(camera(), "", {"camera.scene.status=save", "camera.status=save", "camera.scene(0).status=goto"}, k500);
}

/** The same nodes on other models. */
TEST(SceneModels, DayAndNightWithoutACutFilter) {
  Camera camera({.without = {"DAY_NIGHT"}});
  ASSERT_TRUE(camera.up());
  set(camera, {"image.senseup_limit=0", "shutter=60", "image.easy_daynight=color", "image.brightness=20"});
  const Texts autoFrames{"0x21:agc=1", "0x30:mode=1", "0xf8:automatic=1", "0x20:daynight=2"};
  expectTaken(camera, {{"image.easy_daynight=auto", autoFrames, "auto"},
                       {"image.brightness.highgain=auto", {"0x20:daynight=2"}, "auto"}});
  expectRefused(camera, k405, {"image.brightness=20"});
  expectRefused(camera, k461, {"image.true_daynight=bw", "image.true_daynight.af=off"});
  camera.tell("dsp fail=0x20");
  expectAnswers(camera, {{"camera.scene.image.easy_daynight=auto", k405}});
}

TEST(SceneModels, SomeModelsShowTheEasySettingAsTheTrueOne) {
  Camera camera({.model = "KT-A30", .without = {"DAY_NIGHT"}});
  ASSERT_TRUE(camera.up());
  set(camera, {"image.brightness=autoM"});
  expectTaken(camera, {{"image.true_daynight=autoH", {"0x20:daynight=2"}, "auto"},
                       {"image.true_daynight=color", {"0x21", "0x30", "0xf8", "0x20:daynight=1"}, "color"}});
  expectAnswers(camera, {{"camera.scene.image.easy_daynight", shows("color")}});
}

}  // namespace
}  // namespace test
