// The start of the camera root: what reaches the encoders, the DSP and the neighbours, in which order, and with which
// values.

#include <algorithm>

#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kCameraFile = "flash/sysconfig/camera.conf";

/**
 * The journal as a list of stations: DSP addresses that were set, else who was reached. Repetitions count once. The pin
 * daemon is left out: its messages have no answer, so nothing says when it writes its line.
 */
Texts stations(const Camera& camera) {
  Texts list;
  for (const std::string& line : camera.journal()) {
    const std::string address = Camera::field(line, "addr");
    std::string station = address.empty() ? Camera::field(line, "who") : address;
    if (station == "0x18" || station == "0x19" || station == "0x1a") continue;      // the probe of the board
    if (station == "gpio" || station == "session" || station == "child") continue;  // the network's services
    if (list.empty() || list.back() != station) list.push_back(station);
  }
  return list;
}

/** The stations from the first frame of the service values on. */
Texts picture(const Camera& camera) {
  const Texts list = stations(camera);
  return {std::find(list.begin(), list.end(), "0x38"), list.end()};
}

TEST(CameraBoot, EncodersThenPictureThenNeighbours) {
  struct Model {
    Texts without;
    Texts told;  ///< the pin daemon
    std::string combination;
    std::string noBackFocus;
  };
  for (const Model& model :
       {Model{{}, {"init_done", "mic_power", "halfduplex", "mic_gain"}, "1", "0"},
        {{"ALARM_IO", "DAY_NIGHT", "BACK_FOCUS_MODEL"}, {"mic_power", "halfduplex", "mic_gain"}, "0", "1"}}) {
    Camera camera({.without = model.without});
    ASSERT_TRUE(camera.up());
    const Texts list = stations(camera);
    const Texts begin{"recorder", "0xf2", "encoder", "0xf2", "encoder", "0xf1", "recorder", "0x38"};
    ASSERT_GT(list.size(), begin.size());
    EXPECT_EQ(Texts(list.begin(), list.begin() + static_cast<long>(begin.size())), begin);

    Texts expected{"0x38", "0x39",    "0x58",      "0x59", "0x5a", "0x78", "0x51",   "0x52", "0x70", "0x30",
                   "0x21", "0x20",    "0x39",      "0x40", "0xf3", "0xd1", "0xd0",   "0xd2", "0x31", "0x42",
                   "0x60", "library", "detection", "0x84", "0x82", "0x21", "ptzseq", "0xf0"};
    Texts actual = picture(camera);
    actual.resize(std::min(actual.size(), expected.size()));
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(camera.journalFields("gpio", "what"), model.told);
    for (const std::string& line : camera.journal("dsp")) {
      if (Camera::field(line, "addr") != "0xf3") continue;
      EXPECT_EQ(Camera::field(line, "combination"), model.combination);
      EXPECT_EQ(Camera::field(line, "no_back_focus"), model.noBackFocus);
    }
  }
}

TEST(CameraBoot, StoredValuesAreReplayed) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  for (const auto& [key, value] : {std::pair{"SCENE_FILE_NAME", "3"},
                                   {"SHUTTER", "auto100"},
                                   {"BLC", "c"},
                                   {"BRIGHTNESS", "autoH"},
                                   {"SENSEUP_LIMIT", "2"},
                                   {"RETURN_STATUS", "on"},
                                   {"POSITION_SPEED", "40"},
                                   {"AUTO_EXPOSURE_REFERENCE", "48"},
                                   {"DETECT_LEVEL", "70"}}) {
    camera.setRow(kCameraFile, key, value);
  }
  camera.setRow("flash/sysconfig/scene/3.conf", "SHUTTER", "auto250");
  camera.setRow("flash/sysconfig/patrol/0.conf", "PATROL_DURATION_19", "45");
  const std::string before = camera.read(kCameraFile);
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());
  EXPECT_EQ(camera.read(kCameraFile), before);

  // The current scene's shutter is set behind the load, before the sequencer is told.
  const Texts list = stations(camera);
  const auto sequencer = std::find(list.begin(), list.end(), "ptzseq");
  ASSERT_NE(sequencer, list.end());
  EXPECT_EQ(*(sequencer - 1), "0x21");
  EXPECT_EQ(*(sequencer + 1), "0xf0");
  EXPECT_EQ(std::count(list.begin(), list.end(), "0xf0"), 1);

  EXPECT_EQ(
      camera.toldDetection(),
      (Texts{"motion.area " + std::string(34, '0'), "motion.level 70", "motion.status off", "tamper.level 0",
             "tamper.temporal 5", "tamper.status off", "tamper.aspect 16:9", "tamper.agc_mode autoH",
             "tamper.blc_type c", "tamper.senseup 2", "tamper.reference 48", "audio1.status off", "audio1.level 50",
             "audio1.temporal 1000", "audio2.status off", "audio2.level 50", "audio2.temporal 1000"}));

  const std::string motion = "camera.motion.";
  const std::string step = motion + "auto_patrol(0).position(";
  const Texts sequence = camera.journalFields("ptzseq", "text");
  ASSERT_EQ(sequence.size(), 9U + 3 * 20 + 2);
  EXPECT_EQ(Texts(sequence.begin(), sequence.begin() + 12),
            (Texts{motion + "position.speed=40", motion + "auto_return.status=on", motion + "auto_return.status=start",
                   motion + "auto_return.mode=home", motion + "auto_return.timeout=60", motion + "tilt.mode=down",
                   motion + "tilt.speed=50", motion + "pan.mode=right", motion + "pan.speed=50", step + "0)=0",
                   step + "0).duration=0", step + "0).speed=100.0"}));
  EXPECT_EQ(Texts(sequence.end() - 4, sequence.end()), (Texts{step + "19).duration=45", step + "19).speed=100.0",
                                                              motion + "zoom.mode=in", motion + "zoom.speed=50"}));
}

TEST(CameraBoot, TheSceneLastSelectedIsTheOneInForce) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.setRow(kCameraFile, "SCENE_FILE_NAME", "3");
  ASSERT_TRUE(camera.reboot());
  const std::string last = camera.read("flash/sysconfig/scene/7.conf");
  expectAnswers(camera,
                {{"camera.scene.image.color=66", "camera.scene.image.color&202 Accepted(camera.scene.status=save)"},
                 {"camera.scene.status=save", "camera.scene.status&200 OK"}});
  EXPECT_EQ(camera.row("flash/sysconfig/scene/3.conf", "COLOR"), "66");
  EXPECT_EQ(camera.read("flash/sysconfig/scene/7.conf"), last);
}

}  // namespace
}  // namespace test
