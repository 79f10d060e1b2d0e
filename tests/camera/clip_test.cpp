// Alarm clips: files that come by another way, their names in ten files, their play time, and what the library plays.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

using std::string_literals::operator""s;

std::string little(unsigned number, size_t bytes) {
  std::string text;
  for (size_t i = 0; i < bytes; ++i)
    text += static_cast<char>(number >> (8 * i) & 0xff);
  return text;
}

/** A WAV file with so many bytes of samples, of which `carried` follow. */
std::string wav(unsigned size, size_t carried, unsigned rate = 8000) {
  return "RIFF\0\0\0\0WAVELIST\4\0\0\0INFOfmt \x10\0\0\0\1\0\1\0"s + little(rate, 4) + little(16000, 4) +
         "\2\0\x10\0"s + "data" + little(size, 4) + std::string(carried, '\0');
}

std::string clip(int number) { return "flash/usr/audio/alarm_" + std::to_string(number) + ".wav"; }

std::string file(int table) { return "flash/sysconfig/application/application" + std::to_string(table) + ".conf"; }

class ClipTest : public CameraTest {
 protected:
  void SetUp() override {
    camera().tell("dsp clear");
    std::filesystem::create_directories(camera().path("flash/usr/audio"));
    for (int number = 1; number <= 5; ++number)
      std::filesystem::remove(camera().path(clip(number)));
    CameraTest::SetUp();
  }

  static void expect(const std::string& item, const std::string& answer, UserClass user = UserClass::kAdmin) {
    expectAnswers(camera(), "application.audioplay", {{item, answer, user}});
  }
  static std::string name(int table, int number) {
    return camera().row(file(table), "APPLICATION_AUDIO_FILENAME_" + std::to_string(number));
  }

  static Texts played() {
    Texts numbers;
    for (const std::string& line : camera().journal("library")) {
      if (Camera::field(line, "what") == "audio_play") numbers.push_back(Camera::field(line, "value"));
    }
    return numbers;
  }
};

TEST_F(ClipTest, AClipIsThereWhenItsFileIs) {
  expect("(2).status", "=unregistered&200 OK");
  camera().write(clip(2), "anything");
  expect("(2).status", "=registered&200 OK", UserClass::kUser);
  expect("(1).status", "=unregistered&200 OK");
}

TEST_F(ClipTest, TimesAreOfTheSizeThatTheFileStates) {
  struct Case {
    const char* name;
    std::string content;
    const char* time;
  };
  const Case cases[] = {{"a second, in a file below 512 bytes", wav(16000, 10), "1.0"},
                        {"in a longer file", wav(24000, 24000), "1.500000"},
                        {"without padding", wav(16800, 600), "1.50000"},
                        {"another rate", wav(16000, 600, 44100), "0.0"},
                        {"header behind the first 512 bytes", std::string(512, 'x') + wav(16000, 600), "0.0"},
                        {"empty", "", "0.0"}};
  for (const Case& c : cases) {
    camera().write(clip(3), c.content);
    SCOPED_TRACE(c.name);
    expect("(3).time", std::string("=") + c.time + kOk);
  }
  EXPECT_TRUE(camera().isLogged("wrong sampling rate. [44, AC, 00, 00]"));
  EXPECT_TRUE(camera().isLogged("cannot get audio wav size"));
  expect("(4).time", "=0.0&200 OK");
  expect("(4).time", "=0.0&200 OK");  // the lock was given back
}

TEST_F(ClipTest, NamesStandInAllTenFiles) {
  camera().write(clip(1), wav(16000, 0));
  expect("(1).name=door+bell%26%25", kOk);
  expect("(1).name", "=door bell%26%25&200 OK");
  for (int table = 0; table < 10; ++table)
    EXPECT_EQ(name(table, 1), "door bell&%");
  EXPECT_EQ(name(0, 2), "");
  expect("(5).name=" + std::string(126, 'n') + "%2B+", kOk);
  expect("(5).name=" + std::string(129, 'n'), "&414 Request URI Too Long");
  EXPECT_EQ(name(9, 5), std::string(126, 'n') + "+ ");
}

TEST_F(ClipTest, AClipThatIsGoneHasNoName) {
  camera().write(clip(4), wav(16000, 0));
  expect("(4).name=siren", kOk);
  std::filesystem::remove(camera().path(clip(4)));
  expect("(4).name", "=&200 OK");
  EXPECT_EQ(name(0, 4), "siren");
  camera().write(clip(4), wav(16000, 0));
  expect("(4).name", "=&200 OK");
  EXPECT_EQ(name(0, 4), "siren");
}

TEST_F(ClipTest, DeletePlayAndStop) {
  camera().write(clip(2), wav(16000, 0));
  expect("(2).name=horn", kOk);
  expect("(2).status=play", kOk);
  expect("(3).status=play", kOk);  // whether there is one is the library's to know
  expect("(2).status=stop", kOk);
  EXPECT_EQ(played(), (Texts{"2", "3", "0"}));
  expect("(2).status=delete", kOk);
  EXPECT_FALSE(std::filesystem::exists(camera().path(clip(2))));
  for (int table = 0; table < 10; ++table)
    EXPECT_EQ(name(table, 2), "");
}

TEST_F(ClipTest, Failures) {
  camera().write(clip(1), wav(16000, 0));
  expect("(1).name=kept", kOk);
  std::filesystem::remove(camera().path(clip(1)));
  expect("(1).status=delete", k500);
  EXPECT_EQ(name(0, 1), "kept");
  EXPECT_TRUE(camera().isLogged("can not remove audio file [/mnt/flash/usr/audio/alarm_1.wav]"));
  camera().tell("dsp fail=zr_set_audio_play");
  expect("(1).status=play", k500);
  expect("(1).status=stop", k500);
  camera().tell("dsp clear");
  // The first file that cannot be saved ends the naming.
  const std::string third = camera().read(file(3));
  std::filesystem::remove(camera().path(file(3)));
  expect("(1).name=other", k500);
  EXPECT_EQ(name(2, 1), "other");
  EXPECT_EQ(name(4, 1), "kept");
  camera().write(file(3), third);
}

}  // namespace
}  // namespace test
