// The scenes: what each setting takes and what it makes of it, which scene can be changed, goto, save and restore.

#include <algorithm>

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

/** A write that is refused, and the status. */
struct Refused {
  std::string item;
  std::string answer;
};

std::string pathOf(const std::string& item) { return "camera.scene." + item.substr(0, item.find('=')); }

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
    EXPECT_EQ(camera.ask("camera.scene." + item.item), pathOf(item.item) + k202);
    EXPECT_EQ(framesIn(camera, item.frames), item.frames) << item.item;
    EXPECT_EQ(camera.toldDetection(), item.told) << item.item;
    EXPECT_EQ(camera.ask(pathOf(item.item)), pathOf(item.item) + "=" + item.shown + kOk) << item.item;
  }
}

void expectRefused(Camera& camera, const std::vector<Refused>& cases) {
  for (const Refused& item : cases) {
    const std::string before = camera.ask(pathOf(item.item));
    camera.clearJournal();
    EXPECT_EQ(camera.ask("camera.scene." + item.item), pathOf(item.item) + item.answer) << item.item;
    EXPECT_EQ(framesIn(camera, {}), Texts()) << item.item;
    EXPECT_EQ(camera.ask(pathOf(item.item)), before) << item.item;
  }
}

void set(Camera& camera, std::initializer_list<const char*> items) {
  for (const char* item : items) {
    EXPECT_EQ(camera.ask(std::string("camera.scene.") + item), pathOf(item) + k202) << item;
  }
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
  }

  /** Whether the DSP got what belongs to the camera and not to a scene: its model, to name one. */
  static bool hasCameraWideFrames() {
    const Texts frames = framesIn(camera(), {});
    return std::count(frames.begin(), frames.end(), "0xf3") == 1;
  }
};

TEST_F(Scenes, PictureSettings) {
  expectTaken(camera(), {
                            {"image.color=8", {"0x60:color=-5"}, "8"},
                            {"image.color=9", {"0x60:color=-4"}, "9"},
                            {"image.color=100", {"0x60:color=5"}, "100"},
                            {"image.color=+", {"0x60:color=5"}, "100"},
                            {"image.color=-", {"0x60:color=4"}, "91"},
                            {"image.enhance=44", {"0x60:enhance=0"}, "44"},
                            {"image.enhance=+", {"0x60:enhance=1"}, "59"},
                            {"image.pedestal=+", {"0x60:pedestal=0"}, "32"},
                            {"image.pedestal=51", {"0x60:pedestal=1"}, "51"},
                            {"image.pedestal=-", {"0x60:pedestal=0"}, "0"},
                            {"image.gamma=0.6", {"0x60:gamma=1"}, "1"},
                            {"image.gamma=+", {"0x60:gamma=1"}, "1"},
                            {"image.gamma=-", {"0x60:gamma=0"}, "0.45"},
                            {"image.gamma=0.35", {"0x60:gamma=0"}, "0.45"},
                            {"image.3ddnr=mid", {"0x60:dnr=2"}, "mid"},
                            {"image.lumx=on", {"0x60:lumx=1"}, "on"},
                            {"image.lumx=off", {"0x60:lumx=0"}, "off"},
                        });
  expectRefused(camera(), {{"image.color=101", k457},
                           {"image.color=-1", k457},
                           {"image.color=1.5", k451},
                           {"image.color=+1", k451},
                           {"image.color=4294967296", k457},
                           {"image.gamma=0.7", k451},
                           {"image.3ddnr=2", k451},
                           {"image.lumx=1", k451},
                           {"image.pedestal=x", k451}});
}

TEST_F(Scenes, ExposureSettings) {
  const Texts gainFrames{"0x21:agc=1", "0x30:mode=1", "0xf8:automatic=1"};
  expectTaken(camera(),
              {
                  {"image.senseup_limit=8", {"0x21:senseup_limit=3"}, "8", {"tamper.senseup 8"}},
                  {"image.senseup_limit=+", {"0x21:senseup_limit=4"}, "16"},
                  {"image.senseup_limit=0", {"0x21:senseup_limit=0"}, "0", {"tamper.senseup 0"}},
                  {"shutter=250", {"0x21:speed=5"}, "250"},
                  {"shutter=+", {"0x21:speed=6"}, "500"},
                  {"shutter=30", {"0x21:shutter=1"}, "30"},
                  {"shutter=-", {"0x21:shutter=0"}, "30"},
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
                  {"auto_exposure.av_pk.color=5", {"0x20:avpk_color=5"}, "5"},
                  {"auto_exposure.av_pk.black_white=10", {"0x20:avpk_bw=10"}, "10"},
              });
  expectRefused(camera(), {{"auto_exposure.priority=motion", k405},  // flickerless
                           {"auto_exposure.priority=1", k451},
                           {"image.brightness=10", k405},  // no fixed gain beside an automatic shutter
                           {"image.brightness=61", k457},
                           {"image.brightness=4294967296", k457},
                           {"image.brightness=auto", k451},
                           {"image.senseup_limit=3", k457},
                           {"shutter=70", k457},
                           {"shutter=120", k457},
                           {"shutter=automatic", k457},
                           {"shutter=fast", k451},
                           {"auto_exposure.reference=6", k457},
                           {"auto_exposure.reference_ext=128", k457},
                           {"auto_exposure.av_pk.color=4", k457},
                           {"auto_exposure.av_pk.black_white=11", k457}});
  set(camera(), {"image.senseup_limit=2"});
  expectRefused(camera(), {{"shutter=60", k457}});
}

TEST_F(Scenes, DayAndNight) {
  expectTaken(camera(), {{"image.true_daynight=bw", {"0x20:daynight=0"}, "bw"},
                         {"image.true_daynight=autoL", {"0x20:daynight=2"}, "autoL"},
                         {"image.true_daynight=auto", {"0x20:daynight=3"}, "autoM"},
                         {"image.true_daynight=autoH", {"0x20:daynight=4"}, "autoH"},
                         {"image.true_daynight.af=off", {"0x82:value=0"}, "off"},
                         {"image.true_daynight.af=on", {"0x82:value=1"}, "on"}});
  expectRefused(camera(), {{"image.brightness=5", k405},
                           {"image.true_daynight=night", k451},
                           {"image.true_daynight.af=1", k451},
                           {"image.easy_daynight=bw", k461},
                           {"image.brightness.highgain", k461}});
}

TEST_F(Scenes, WhiteBalance) {
  expectTaken(camera(), {{"image.white_balance=manual", {"0x40:mode=0"}, "manual"},
                         {"image.white_balance.r=s10", {"0x40:r=10"}, "s10"},
                         {"image.white_balance.b=s254", {"0x40:b=254"}, "s254"},
                         {"image.white_balance.b=+", {"0x40:b=255"}, "s255"},
                         {"image.white_balance.r=-", {"0x40:r=8"}, "s8"},
                         {"image.white_balance=autoN", {"0x40:mode=2"}, "autoN"},
                         {"image.white_balance=auto", {"0x40:mode=1"}, "autoW"},
                         {"image.white_balance=op_auto", {"0x40:mode=0", "0x41:state=1"}, "manual"}});
  expectRefused(camera(), {{"image.white_balance=autoM", k451},
                           {"image.white_balance.r=10", k451},
                           {"image.white_balance.r=s", k451},
                           {"image.white_balance.r=s1x", k451},
                           {"image.white_balance.b=s256", k457},
                           {"image.white_balance.b=s-1", k457}});
}

TEST_F(Scenes, BacklightCompensation) {
  const std::string area = "0123456789abcdefABCDEF0123456789ff";
  const Texts pages{"0x22:page=0", "0x22:page=1"};
  expectTaken(
      camera(),
      {{"image.blc=b", {"0x20:blc=2"}, "b", {"tamper.blc_type b"}},
       {"image.blc.area=" + area, {}, area, {"tamper.blc_area " + area}},
       {"image.blc=manual", {"0x20:blc=5", pages[0], pages[1]}, "manual", {"tamper.blc_type manual"}},
       {"image.blc.area=1" + area.substr(1), pages, "1" + area.substr(1), {"tamper.blc_area 1" + area.substr(1)}}});
  camera().clearJournal();
  EXPECT_EQ(camera().ask("camera.scene.image.blc.area=1" + area.substr(1)),
            std::string("camera.scene.image.blc.area") + kOk);
  EXPECT_EQ(framesIn(camera(), pages), pages);
  expectRefused(camera(), {{"image.blc=e", k451},
                           {"image.blc.area=" + std::string(34, '0'), k451},
                           {"image.blc.area=" + area.substr(1), k451},
                           {"image.blc.area=g" + area.substr(1), k451}});
}

TEST_F(Scenes, OnlyTheCurrentOneCanBeChanged) {
  expectAnswers(
      camera(),
      {{"camera.scene.status", "camera.scene.status=0&200 OK"},
       {"camera.scene(0).image.color=40", "camera.scene(0).image.color&202 Accepted(camera.scene(0).status=save)"},
       {"camera.scene(3).image.color=40", std::string("camera.scene(3).image.color") + k412},
       {"camera.scene(3).image.color=x", std::string("camera.scene(3).image.color") + k412},
       {"camera.scene(3).image.color", "camera.scene(3).image.color=0&200 OK"},
       {"camera.scene(3).shutter", "camera.scene(3).shutter=auto&200 OK"},
       {"camera.scene(3).name", "camera.scene(3).name=Night&200 OK"},
       {"camera.scene(3).name=x", "camera.scene(3).name&501 Not Implemented", UserClass::kDebug},
       {"camera.scene(3).auto_exposure.av_pk.black_white=6",
        "camera.scene(3).auto_exposure.av_pk.black_white&202 Accepted(camera.scene(3).status=save)"},
       {"camera.scene.auto_exposure.av_pk.black_white", "camera.scene.auto_exposure.av_pk.black_white=6&200 OK"},
       {"camera.scene(8).image.color", std::string("camera.scene(8).image.color") + k456},
       {"camera.scene(x).image.color", std::string("camera.scene(x).image.color") + k451},
       {"camera.scene(-1).status", std::string("camera.scene(-1).status") + k451},
       {"camera.scene(3).status=keep", std::string("camera.scene(3).status") + k451},
       {"camera.status=keep", std::string("camera.status") + k451},
       {"camera.scene(3).status",
        "camera.scene(3).status=Night-0-custom-0.45-auto-color-on-0-0-OFF-high-0-mid-autoM-8-combo-color-8-8-"
        "autoW-54-87-off-off-0-normal-FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF&200 OK"}});
}

TEST_F(Scenes, GotoWaitsForASave) {
  EXPECT_EQ(camera().ask("camera.scene.status=save"), std::string("camera.scene.status") + kOk);
  camera().clearJournal();
  expectAnswers(camera(),
                {{"camera.scene(2).status=goto", "camera.scene(2).status&202 Accepted(camera.scene(2).status=save)"},
                 {"camera.scene.status", "camera.scene.status=2&200 OK"},
                 {"camera.scene.image.color", "camera.scene.image.color=0&200 OK"}});
  const Texts frames = framesIn(camera(), {});
  EXPECT_EQ(frames.back(), "0x60");
  EXPECT_FALSE(hasCameraWideFrames());
  EXPECT_EQ(camera().toldDetection(), Texts{"tamper.reference 0"});
  EXPECT_EQ(camera().row(kCameraFile, "SCENE_FILE_NAME"), "0");
  // The new scene is what a restore goes back to.
  expectAnswers(camera(), {{"camera.status=restore", std::string("camera.status") + kOk},
                           {"camera.scene.image.color", "camera.scene.image.color=0&200 OK"}});

  expectAnswers(camera(), {{"camera.scene(2).image.color=77",
                            "camera.scene(2).image.color&202 Accepted(camera.scene(2).status=save)"},
                           {"camera.scene(0).image.color=50", std::string("camera.scene(0).image.color") + k412},
                           {"camera.scene(2).status=save", std::string("camera.scene(2).status") + kOk}});
  EXPECT_EQ(camera().row(kCameraFile, "SCENE_FILE_NAME"), "2");
  EXPECT_EQ(camera().row(kCameraFile, "COMMENT2"), "Day");
  EXPECT_EQ(camera().row(kCameraFile, "COLOR"), "77");
  EXPECT_EQ(camera().row(sceneFile(2), "COLOR"), "77");
  EXPECT_EQ(camera().row(sceneFile(2), "COMMENT2"), "Day");

  set(camera(), {"image.color=12"});  // lost: nobody saves it
  ASSERT_TRUE(camera().reboot());
  expectAnswers(camera(), {{"camera.scene.status", "camera.scene.status=2&200 OK"},
                           {"camera.scene.image.color", "camera.scene.image.color=77&200 OK"}});
  camera().write(sceneFile(2), "COLOR=55\nSHUTTER=250\n");
  expectAnswers(camera(), {{"camera.scene(2).status=goto", std::string("camera.scene(2).status") + kOk},
                           {"camera.scene.image.color", "camera.scene.image.color=55&200 OK"},
                           {"camera.scene.shutter", "camera.scene.shutter=250&200 OK"}});
  EXPECT_EQ(camera().row(kCameraFile, "COLOR"), "55");  // a goto to the current scene waits for nothing

  camera().clearJournal();
  expectAnswers(camera(), {{"camera.scene(2).status=initialize", std::string("camera.scene(2).status") + kOk},
                           {"camera.scene.image.color", "camera.scene.image.color=0&200 OK"}});
  EXPECT_TRUE(hasCameraWideFrames());
  EXPECT_EQ(camera().row(sceneFile(2), "COLOR"), "0");
  EXPECT_EQ(camera().row(kCameraFile, "COLOR"), "0");

  // The second goto to a scene is one to the current scene, and writes what the first one left in memory.
  camera().ask("camera.scene(3).status=goto&camera.scene(3).status=goto");
  EXPECT_EQ(camera().row(kCameraFile, "COMMENT2"), "Night");
}

TEST_F(Scenes, TheCameraSavesAndRestoresAsAWhole) {
  const std::string duration = "camera.motion.auto_patrol(0).position(4).duration";
  camera().ask(duration + "=10&camera.motion.position.speed=100");
  expectAnswers(camera(), {{"camera.scene.status=save", std::string("camera.scene.status") + kOk},
                           {"camera.scene.image.color=33", std::string("camera.scene.image.color") + k202}});
  EXPECT_EQ(camera().row(kCameraFile, "COLOR"), "50");
  camera().ask(duration + "=20&camera.motion.position.speed=55");
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.status=restore", std::string("camera.status") + kOk},
                           {"camera.scene.image.color", "camera.scene.image.color=50&200 OK"},
                           {duration, duration + "=10&200 OK"},
                           {"camera.motion.position.speed", "camera.motion.position.speed=100&200 OK"}});
  EXPECT_EQ(camera().toldDetection().size(), 11U);
  EXPECT_TRUE(hasCameraWideFrames());

  // The live picture goes into the scene that was spoken of last; the current scene stays.
  for (const int scene : {5, 7}) {
    camera().write(sceneFile(scene), "COLOR=0\n");
  }
  camera().ask(duration + "=30&camera.motion.position.speed=55");
  expectAnswers(camera(), {{"camera.scene.image.color=34", std::string("camera.scene.image.color") + k202},
                           {"camera.scene(5).status", camera().ask("camera.scene(5).status")},
                           {"camera.status=save", std::string("camera.status") + kOk}});
  EXPECT_EQ(camera().row(sceneFile(5), "COLOR"), "34");
  EXPECT_EQ(camera().row(sceneFile(5), "COMMENT2"), "Wide_d");
  EXPECT_EQ(camera().row(sceneFile(7), "COMMENT2"), "Lumx");
  EXPECT_EQ(camera().row(kCameraFile, "SCENE_FILE_NAME"), "0");
  EXPECT_EQ(camera().row(kCameraFile, "COLOR"), "34");
  EXPECT_EQ(camera().row(kCameraFile, "POSITION_SPEED"), "55");
  EXPECT_EQ(camera().row("flash/sysconfig/patrol/0.conf", "PATROL_DURATION_4"), "30");

  // The save of a scene makes it the current one.
  EXPECT_EQ(camera().ask("camera.scene(7).status=save"), std::string("camera.scene(7).status") + kOk);
  EXPECT_EQ(camera().row(kCameraFile, "SCENE_FILE_NAME"), "7");
  EXPECT_EQ(camera().row(kCameraFile, "COMMENT2"), "Lumx");
}

TEST_F(Scenes, InitializeOfAnotherSceneChangesNoPicture) {
  camera().write(sceneFile(4), "COLOR=91\n");
  camera().clearJournal();
  EXPECT_EQ(camera().ask("camera.scene(4).status=initialize"), std::string("camera.scene(4).status") + kOk);
  EXPECT_EQ(camera().row(sceneFile(4), "COLOR"), "0");
  EXPECT_EQ(framesIn(camera(), {}), Texts());
  EXPECT_EQ(camera().ask("camera.scene.image.color"), "camera.scene.image.color=50&200 OK");
}

TEST_F(Scenes, AFastEncoderSwitchesNoiseReductionOff) {
  set(camera(), {"image.3ddnr=mid"});
  EXPECT_EQ(camera().ask("camera.scene.status=save"), std::string("camera.scene.status") + kOk);
  set(camera(), {"image.3ddnr=low"});
  camera().ask("encode(1).framerate=30");
  expectRefused(camera(), {{"image.3ddnr=high", k412}, {"image.3ddnr=2", k412}});
  EXPECT_NE(camera().ask("camera.scene(0).status").find("-high-50-off-"), std::string::npos);
  EXPECT_EQ(camera().ask("camera.scene.status=save"), std::string("camera.scene.status") + kOk);
  EXPECT_EQ(camera().row(sceneFile(0), "DNR_3D"), "mid");  // the live "low" stays behind
  EXPECT_EQ(camera().row(kCameraFile, "DNR_3D"), "mid");
  EXPECT_EQ(camera().ask("camera.scene.image.3ddnr"), "camera.scene.image.3ddnr=low&200 OK");
  camera().ask("encode(1).framerate=5");
}

TEST_F(Scenes, FailuresOfTheWorldAre500) {
  camera().tell("dsp fail=0x60,0x20,0x82");
  for (const auto& [item, answer] : {std::pair{"image.color=70", k500},
                                     {"image.3ddnr=low", k500},
                                     {"image.blc=a", k500},
                                     {"image.true_daynight=bw", k405},
                                     {"image.true_daynight.af=off", k500}}) {
    const std::string before = camera().ask(pathOf(item));
    EXPECT_EQ(camera().ask(std::string("camera.scene.") + item), pathOf(item) + answer);
    EXPECT_EQ(camera().ask(pathOf(item)), before) << item;
  }
  EXPECT_TRUE(camera().isLogged("code[416] not hundle"));
  EXPECT_EQ(camera().ask("camera.scene(1).status=goto"), std::string("camera.scene(1).status") + k500);
  EXPECT_EQ(camera().ask("camera.scene.status"), "camera.scene.status=0&200 OK");
  camera().tell("dsp clear");

  // The DSP has the value by the time the detection daemon fails.
  camera().tell("detection down");
  EXPECT_EQ(camera().ask("camera.scene.image.brightness=autoH"), std::string("camera.scene.image.brightness") + k500);
  EXPECT_EQ(camera().ask("camera.scene.image.brightness"), "camera.scene.image.brightness=autoH&200 OK");
  camera().clearJournal();
  EXPECT_EQ(camera().ask("camera.status=restore"), std::string("camera.status") + k500);
  const Texts frames = framesIn(camera(), {});
  EXPECT_FALSE(frames.empty()) << "the picture goes back all the same";
  camera().tell("detection up");
}

/** The same nodes on other models. */
TEST(SceneModels, DayAndNightWithoutACutFilter) {
  Camera camera({.without = {"DAY_NIGHT"}});
  ASSERT_TRUE(camera.up());
  set(camera, {"image.senseup_limit=0", "shutter=60", "image.easy_daynight=color", "image.brightness=20"});
  const Texts autoFrames{"0x21:agc=1", "0x30:mode=1", "0xf8:automatic=1", "0x20:daynight=2"};
  expectTaken(camera, {{"image.easy_daynight=auto", autoFrames, "auto"}});
  expectTaken(camera, {{"image.brightness.highgain=auto", {"0x20:daynight=2"}, "auto"}});
  expectRefused(camera, {{"image.brightness=20", k405},
                         {"image.brightness.easy_daynight=autoM", k451},
                         {"image.true_daynight=bw", k461},
                         {"image.true_daynight.af=off", k461}});
  camera.tell("dsp fail=0x20");
  EXPECT_EQ(camera.ask("camera.scene.image.easy_daynight=auto"),
            std::string("camera.scene.image.easy_daynight") + k405);
}

TEST(SceneModels, SomeModelsShowTheEasySettingAsTheTrueOne) {
  Camera camera({.model = "KT-A30", .without = {"DAY_NIGHT"}});
  ASSERT_TRUE(camera.up());
  set(camera, {"image.brightness=autoM"});
  expectTaken(camera, {{"image.true_daynight=autoH", {"0x20:daynight=2"}, "auto"},
                       {"image.true_daynight=color", {"0x21", "0x30", "0xf8", "0x20:daynight=1"}, "color"}});
  expectAnswers(camera, {{"camera.scene.image.easy_daynight", "camera.scene.image.easy_daynight=color&200 OK"}});
}

}  // namespace
}  // namespace test
