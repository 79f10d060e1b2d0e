// Recording objects: checked against the encoder they record from, told to the recorder, kept in a file each.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

std::string file(int object) {
  return "flash/sysconfig/application/application" + std::to_string(object - 1) + ".conf";
}

struct Step {
  std::string request;  ///< behind "application.object"
  std::string answer;
  Texts told = {};
};

class ObjectTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().tell("recorder up");
    // Encoder 1 has 15 frames a second, encoder 2 has 5, encoder 3 has one.
    camera().ask("encode(1).framerate=15&encode(2).framerate=5&encode(3).framerate=1");
    CameraTest::SetUp();
  }

  static void run(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
      camera().clearJournal();
      const std::string path = "application.object" + step.request.substr(0, step.request.find('='));
      EXPECT_EQ(camera().ask("application.object" + step.request), path + step.answer) << step.request;
      EXPECT_EQ(camera().toldRecorder(), step.told) << step.request;
    }
  }

  static std::string row(int object, const char* key) {
    return camera().row(file(object), std::string("APPLICATION_OBJECT_") + key);
  }
};

TEST_F(ObjectTest, SourcesAreEncoders) {
  run({{"(1).source", "=encode(1)&200 OK"},
       {"(1).source=encode(3)", kOk, {"object(1).source 3"}},
       {"(1).source", "=encode(3)&200 OK"},
       {".source=encode(2)", kOk, {"object(1).source 2"}},
       {"(10).source=encode(1)", kOk, {"object(10).source 1"}},
       {"(1).source=encode(4)", k457},
       {"(1).source=encode(0)", k457},
       {"(1).source=encode()", k457},
       {"(1).source=encode", k457},
       {"(1).source=encode(4294967298)", k457},
       {"(1).source=foo(1)", k451},
       {"(1).source=Encode(1)", k451},
       {"(11).source=encode(1)", k456},
       {"(x).source=encode(1)", k451}});
  EXPECT_EQ(row(1, "SOURCE"), "encode(2)");
  EXPECT_EQ(row(2, "SOURCE"), "encode(1)");
  camera().ask("application.object(1).source=encode(1)");
}

TEST_F(ObjectTest, TheRecorderGetsTheRateOfTheLadderAndTheRowKeepsTheText) {
  run({{"(2).framerate=9", kOk, {"object(2).framerate 7.5"}},
       {"(2).framerate", "=9&200 OK"},
       {"(2).framerate=7.5", kOk, {"object(2).framerate 7.5"}},
       {"(2).framerate=15", kOk, {"object(2).framerate 15"}},
       {"(2).framerate=-4", kOk, {"object(2).framerate -5"}},
       {"(2).framerate", "=-4&200 OK"},
       {"(2).framerate=29", kOk, {"object(2).framerate 15"}},
       {"(2).framerate=30", k457},
       {"(2).framerate=0", k457},
       {"(2).framerate=-31", k457},
       {"(2).framerate=x", k451},
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
       {"(5).postrec", "=60&200 OK"},
       {"(5).postrec=61", k457},
       {"(5).postrec=4294967297", k457},
       {"(5).postrec=-1", k451},
       {"(5).postrec=5x", k451},
       {"(5).postrec=", "=60&200 OK"},
       {"(5).prerec=007", kOk, {"object(5).prerec 7"}},
       {"(5).prerec", "=007&200 OK"},
       {"(5).prerec=61", k457},
       {"(5).postrec=0", kOk, {"object(5).postrec 0"}},
       {"(5).prerec=0", k405}});
  EXPECT_EQ(row(5, "PREREC"), "007");
  EXPECT_EQ(row(5, "POSTREC"), "0");
}

TEST_F(ObjectTest, TheLastThreeShareOneOverwriting) {
  run({{"(7).overwrite.status=off", kOk, {"object(7).overwrite 0"}},
       {"(9).overwrite.status=off", kOk, {"object(9).overwrite 0"}},
       {"(8).overwrite.status", "=off&200 OK"},
       {"(10).overwrite.status", "=off&200 OK"},
       {"(6).overwrite.status", "=on&200 OK"},
       {"(9).overwrite.status=maybe", k451},
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
  struct Case {
    int object;
    const char* source;
    const char* shown;
  };
  // Of a source that no write can set, the number itself is the table's.
  const Case cases[] = {{1, "none", "1920x1080"}, {2, "encode(0)", "1920x1080"}, {3, "encode(7)", ""}};
  for (const Case& c : cases)
    other.setRow(file(c.object), "APPLICATION_OBJECT_SOURCE", c.source);
  ASSERT_TRUE(other.reboot());
  for (const Case& c : cases) {
    const std::string path = "application.object(" + std::to_string(c.object) + ").framesize";
    EXPECT_EQ(other.ask(path), path + "=" + c.shown + kOk);
    EXPECT_EQ(other.ask(path + "=vga"), path + k405);
    EXPECT_EQ(other.ask(path + "=vgax"), path + k451);
    EXPECT_EQ(other.ask(path + "=1920x1080"), path + (*c.shown == '\0' ? k405 : kOk));
  }
}

TEST_F(ObjectTest, ARecorderThatRefusesLeavesTheFile) {
  const std::string before = camera().read(file(3));
  for (const auto& [fault, answer] :
       {std::pair("recorder down", k500), {"recorder refuse 412", k412}, {"recorder garbage", k500}}) {
    camera().tell("recorder up");
    camera().tell(fault);
    for (const char* write : {"source=encode(2)", "framerate=3", "prerec=9", "postrec=9", "overwrite.status=off"}) {
      const std::string text(write);
      EXPECT_EQ(camera().ask("application.object(3)." + text),
                "application.object(3)." + text.substr(0, text.find('=')) + answer)
          << fault;
    }
  }
  EXPECT_EQ(camera().read(file(3)), before);
}

TEST(Object, AStartTellsEveryObjectAndWritesNothing) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.setRow(file(2), "APPLICATION_OBJECT_SOURCE", "encode(3)");
  camera.setRow(file(2), "APPLICATION_OBJECT_FRAMERATE", "4");
  camera.setRow(file(2), "APPLICATION_OBJECT_PREREC", "0");
  camera.setRow(file(2), "APPLICATION_OBJECT_OVERWRITE_STATUS", "off");
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
  Texts told;
  for (const std::string& line : camera.toldRecorder()) {
    if (line.starts_with("object(")) told.push_back(line);
  }
  EXPECT_EQ(told, expected);
  EXPECT_EQ(camera.read(file(2)) + camera.read(file(1)), before);
}

}  // namespace
}  // namespace test
