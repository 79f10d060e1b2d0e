// Recording objects: checked against the encoder they record from, told to the recorder, kept in a file each.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

std::string file(int object) {
  return "flash/sysconfig/application/application" + std::to_string(object - 1) + ".conf";
}

class ObjectTest : public CameraTest {
 protected:
  /** Encoder 1 has 15 frames a second, encoder 2 has 5, encoder 3 has one. */
  void SetUp() override {
    camera().ask("encode(1).framerate=15&encode(2).framerate=5&encode(3).framerate=1");
    CameraTest::SetUp();
  }

  static void run(const std::vector<Step>& steps) {
    expectSteps(camera(), "application.object", steps, [] { return camera().toldRecorder(); });
  }

  static std::string row(int object, const char* key) {
    return camera().row(file(object), std::string("APPLICATION_OBJECT_") + key);
  }
};

TEST_F(ObjectTest, SourcesAreEncoders) {
  run({{".source=encode(2)", kOk, {"object(1).source 2"}},
       {"(10).source=encode(3)", kOk, {"object(10).source 3"}},
       {"(1).source=encode(4)", k457},
       {"(1).source=encode(0)", k457},
       {"(1).source=encode()", k457},
       {"(1).source=encode", k457},
       {"(1).source=encode(4294967298)", k457},
       {"(1).source=foo(1)", k451}});
  EXPECT_EQ(row(1, "SOURCE"), "encode(2)");
  EXPECT_EQ(row(2, "SOURCE"), "encode(1)");
  camera().ask("application.object(1).source=encode(1)");
}

TEST_F(ObjectTest, TheRecorderGetsTheRateOfTheLadderAndTheRowKeepsTheText) {
  run({{"(2).framerate=9", kOk, {"object(2).framerate 7.5"}},
       {"(2).framerate", "=9&200 OK"},
       {"(2).framerate=-4", kOk, {"object(2).framerate -5"}},
       {"(2).framerate=29", kOk, {"object(2).framerate 15"}},
       {"(2).framerate=30", k457},
       {"(2).framerate=12.5", k451}});
  EXPECT_EQ(row(2, "FRAMERATE"), "29");
  camera().ask("application.object(2).framerate=15");
}

TEST_F(ObjectTest, ARateAboveTheEncodersIsHealedByItsRead) {
  run({{"(4).framerate=10", kOk, {"object(4).framerate 10"}},
       {"(4).source=encode(2)", kOk, {"object(4).source 2"}},
       {"(4).framerate=6", k457},
       {"(4).framerate=5", kOk, {"object(4).framerate 5"}}});
  camera().ask("application.object(4).source=encode(1)&application.object(4).framerate=10");
  camera().ask("application.object(4).source=encode(2)");
  EXPECT_EQ(row(4, "FRAMERATE"), "10");
  run({{"(4).framerate", "=5&200 OK"}});
  EXPECT_EQ(row(4, "FRAMERATE"), "5");
  // The stored text counts as a number, not what the ladder makes of it.
  camera().ask("application.object(4).source=encode(1)&application.object(4).framerate=29");
  run({{"(4).framerate", "=15&200 OK"}});
  EXPECT_EQ(row(4, "FRAMERATE"), "15");
  // A rate of an encoder that is staged and not committed counts.
  camera().ask("encode(1).framerate=3");
  run({{"(4).framerate", "=3&200 OK"},
       {"(4).framerate=5", k457},
       {"(4).framerate=-30", kOk, {"object(4).framerate -30"}}});
}

TEST_F(ObjectTest, OneOfTheTwoTimesIsNotZero) {
  run({{"(5).prerec=0", kOk, {"object(5).prerec 0"}},
       {"(5).postrec=0", k405},
       {"(5).postrec=00", k405},
       {"(5).postrec=60", kOk, {"object(5).postrec 60"}},
       {"(5).prerec=007", kOk, {"object(5).prerec 7"}},
       {"(5).prerec", "=007&200 OK"},
       {"(5).postrec=0", kOk, {"object(5).postrec 0"}},
       {"(5).prerec=0", k405}});
}

TEST_F(ObjectTest, TheLastThreeShareOneOverwriting) {
  run({{"(7).overwrite.status=off", kOk, {"object(7).overwrite 0"}},
       {"(9).overwrite.status=off", kOk, {"object(9).overwrite 0"}},
       {"(8).overwrite.status", "=off&200 OK"},
       {"(10).overwrite.status", "=off&200 OK"},
       {"(6).overwrite.status", "=on&200 OK"},
       {"(1).overwrite.period", "=&200 OK"},
       {"(1).overwrite.period=1", k501}});
  for (const int object : {7, 8, 9, 10})
    EXPECT_EQ(row(object, "OVERWRITE_STATUS"), "off") << object;
  EXPECT_EQ(row(6, "OVERWRITE_STATUS"), "on");
}

TEST_F(ObjectTest, AFramesizeIsNeverSet) {
  run({{"(1).framesize", k500}, {"(1).framesize=1920x1080", k500}, {"(1).framesize=x", k500}});
  Camera other;
  ASSERT_TRUE(other.up());
  // Of a source that no write can set, the number itself is the table's.
  const struct {
    int object;
    const char* source;
    const char* shown;
  } cases[] = {{1, "none", "1920x1080"}, {2, "encode(0)", "1920x1080"}, {3, "encode(7)", ""}};
  for (const auto& c : cases)
    other.setRow(file(c.object), "APPLICATION_OBJECT_SOURCE", c.source);
  ASSERT_TRUE(other.reboot());
  for (const auto& c : cases) {
    const std::string path = "application.object(" + std::to_string(c.object) + ").framesize";
    expectAnswers(other, path,
                  {{"", "=" + std::string(c.shown) + kOk},
                   {"=vga", k405},
                   {"=vgax", k451},
                   {"=1920x1080", *c.shown == '\0' ? k405 : kOk}});
  }
}

TEST_F(ObjectTest, ARecorderThatRefusesLeavesTheFile) {
  const std::string before = camera().read(file(3));
  expectUnderFaults(camera(), "recorder", {{"down", k500}, {"refuse 412", k412}, {"garbage", k500}},
                    "application.object(3).",
                    {"source=encode(2)", "framerate=3", "prerec=9", "postrec=9", "overwrite.status=off"});
  EXPECT_EQ(camera().read(file(3)), before);
}

TEST(Object, AStartTellsEveryObjectAndWritesNothing) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.setRows(file(2), {"APPLICATION_OBJECT_SOURCE=encode(3)", "APPLICATION_OBJECT_FRAMERATE=4",
                           "APPLICATION_OBJECT_PREREC=0", "APPLICATION_OBJECT_OVERWRITE_STATUS=off"});
  camera.setRow(file(3), "APPLICATION_OBJECT_FRAMERATE", "15");
  const std::string before = camera.read(file(2)) + camera.read(file(1));
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());
  Texts expected;
  for (int object = 1; object <= 10; ++object) {
    const std::string name = "object(" + std::to_string(object) + ").";
    const bool second = object == 2;
    expected.push_back(name + "source " + (second ? "3" : "1"));
    if (object != 3) expected.push_back(name + "framerate " + (second ? "3" : "5"));  // 15 is above the encoder's 5
    expected.push_back(name + "prerec " + (second ? "0" : "5"));
    expected.push_back(name + "postrec 5");
    expected.push_back(name + "overwrite " + (second ? "0" : "1"));
  }
  EXPECT_EQ(camera.toldRecorder({"object("}), expected);
  EXPECT_EQ(camera.read(file(2)) + camera.read(file(1)), before);
}

}  // namespace
}  // namespace test
