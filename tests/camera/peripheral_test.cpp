// Alarm pins, the format switch and the serial port: what their daemons hear, and what is kept.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kInput = "flash/sysconfig/input_pin.conf";
constexpr const char* kOutput = "flash/sysconfig/output_pin.conf";
constexpr const char* kSerial = "flash/sysconfig/serial.conf";

/** The settings in each request to the serial daemon, and each offset for the driver. */
Texts heardSerial(Camera& camera) {
  Texts heard;
  for (const std::string& line : camera.journal()) {
    const auto field = [&line](const char* key) { return Camera::field(line, key); };
    if (field("who") == "serial")
      heard.push_back(field("port") + ": " + field("baud") + " " + field("data") + " " + field("parity") + " " +
                      field("stop"));
    if (field("who") == "ttyS1") heard.push_back("offset " + field("value"));
  }
  return heard;
}

class PeripheralTest : public CameraTest {
 protected:
  void SetUp() override {
    for (const char* words : {"recorder up", "serial up", "gpio up"})
      camera().tell(words);
    CameraTest::SetUp();
  }
};

struct Step {
  std::string request;  ///< behind "peripheral."
  std::string answer;
  Texts told = {};
};

void run(Camera& camera, const std::vector<Step>& steps, Texts (*heard)(Camera&), UserClass user = UserClass::kAdmin) {
  for (const Step& step : steps) {
    camera.clearJournal();
    const std::string path = "peripheral." + step.request.substr(0, step.request.find('='));
    EXPECT_EQ(camera.ask("peripheral." + step.request, user), path + step.answer) << step.request;
    EXPECT_EQ(heard(camera), step.told) << step.request;
  }
}

Texts heardRecorder(Camera& camera) { return camera.toldRecorder(); }

TEST_F(PeripheralTest, Pins) {
  camera().tell("gpio pin2=make");
  run(camera(),
      {{"input_pin_count", "=1&200 OK"},
       {"output_pin_count", "=1&200 OK"},
       {"input_pin(1).status", "=on&200 OK"},
       {"input_pin(1).type", "=make&200 OK"},
       {"input_pin(1).pin_count", "=2&200 OK"},
       {"input_pin(1).pin(1).status", "=break&200 OK", {"get input_pin(1).level"}},
       {"input_pin(1).pin(2).status", "=make&200 OK", {"get input_pin(2).level"}},
       {"input_pin(1).pin(1).chatter", "=200&200 OK"},
       {"input_pin(1).pin(1).chatter=200", kOk},
       {"input_pin(1).pin(1).chatter=100", k457},
       {"input_pin(1).pin(1).chatter=x", k451},
       {"input_pin(2).status", k456},
       {"input_pin(1).pin(3).status", k456},
       {"input_pin(1).pin(x).status", k451},
       {"input_pin(1).status=off", "&458 Parameter Is Read Only"},
       {"output_pin(1).type", "=make&200 OK"},
       {"output_pin(1).pin_count", "=2&200 OK"},
       {"output_pin(1).status=off", kOk, {"output_pin.status 0"}},
       {"output_pin(1).status", "=off&200 OK"},
       {"output_pin(1).status=on", kOk, {"output_pin.status 1"}},
       {"output_pin(1).status=make", k451},
       {"output_pin(1).pin(2).status=make", kOk, {"output_pin(2).level 1"}},
       {"output_pin(1).pin(2).status", "=make&200 OK", {"get output_pin(2).level"}},
       {"output_pin(1).pin(1).status", "=break&200 OK", {"get output_pin(1).level"}},
       {"output_pin(1).pin(2).status=break", kOk, {"output_pin(2).level 0"}},
       {"output_pin(1).pin(2).status=on", k451},
       {"output_pin(1).pin(1).duration=0", kOk, {"output_pin(1).duration 0"}},
       {"output_pin(1).pin(2).duration=100", kOk, {"output_pin(2).duration 100"}},
       {"output_pin(1).pin(1).duration=5000", kOk, {"output_pin(1).duration 5000"}},
       {"output_pin(1).pin(1).duration", "=5000&200 OK"},
       {"output_pin(1).pin(2).duration", "=100&200 OK"},
       {"output_pin(1).pin(1).duration=50", k457},
       {"output_pin(1).pin(1).duration=5001", k457},
       {"output_pin(1).pin(1).duration=-1", k457},
       {"output_pin(1).pin(1).duration=x", k451}},
      heardRecorder);
  for (const auto& [key, value] : {std::pair("OUTPUTPIN_STATUS", "on"),
                                   {"OUTPUTPIN_PIN1_DURATION", "5000"},
                                   {"OUTPUTPIN_PIN2_DURATION", "100"},
                                   {"OUTPUTPIN_PIN1_STATUS", "break"},
                                   {"OUTPUTPIN_PIN2_STATUS", "break"}})
    EXPECT_EQ(camera().row(kOutput, key), value) << key;
}

TEST_F(PeripheralTest, TheInputGroupIsWrittenFromInsideAlone) {
  run(camera(), {{"input_pin(1).status=off", kOk, {"input_pin.status 0"}}, {"input_pin(1).status=make", k451}},
      heardRecorder, UserClass::kDebug);
  EXPECT_EQ(camera().row(kInput, "INPUTPIN_STATUS"), "off");
  run(camera(), {{"input_pin(1).status=on", kOk, {"input_pin.status 1"}}}, heardRecorder, UserClass::kOnvif);
}

TEST_F(PeripheralTest, TheRecordersWordIsTheAnswerOfAWrite) {
  const std::string before = camera().read(kOutput);
  for (const auto& [fault, write] : {std::pair("recorder down", k500),
                                     {"recorder refuse 412", k412},
                                     {"recorder refuse 0", k500},
                                     {"recorder refuse 5", k500}}) {
    camera().tell("recorder up");
    camera().tell(fault);
    for (const char* item : {"status=off", "pin(1).status=make", "pin(2).duration=300"}) {
      const std::string text(item);
      EXPECT_EQ(camera().ask("peripheral.output_pin(1)." + text),
                "peripheral.output_pin(1)." + text.substr(0, text.find('=')) + write)
          << fault;
    }
  }
  EXPECT_EQ(camera().read(kOutput), before);
  for (const char* fault : {"recorder down", "recorder refuse 412", "recorder garbage"}) {
    camera().tell("recorder up");
    camera().tell(fault);
    EXPECT_EQ(camera().ask("peripheral.output_pin(1).pin(1).status"),
              std::string("peripheral.output_pin(1).pin(1).status") + k500)
        << fault;
  }
}

TEST_F(PeripheralTest, TheSwitchIsAskedLive) {
  const auto read = [](const char* words) {
    camera().tell("gpio up");
    camera().tell(words);
    return camera().ask("peripheral.switch(1).status").substr(std::string("peripheral.switch(1).status").size());
  };
  EXPECT_EQ(read("gpio switch=0"), "=pal&200 OK");
  EXPECT_EQ(read("gpio switch=2"), "=ntsc&200 OK");
  EXPECT_EQ(read("gpio refuse"), k500);
  EXPECT_EQ(read("gpio down"), k500);
  EXPECT_EQ(camera().ask("peripheral.switch(2).status"), std::string("peripheral.switch(2).status") + k456);
}

TEST_F(PeripheralTest, EachSerialRequestCarriesAllFourSettings) {
  run(camera(),
      {{"serial_count", "=1&200 OK"},
       {"serial(1).baud=38400", kOk, {"1: 38400 8 none 1"}},
       {"serial(1).bit=7", kOk, {"1: 38400 7 none 1"}},
       {"serial(1).parity=even", kOk, {"1: 38400 7 even 1"}},
       {"serial(1).stopbit=2", kOk, {"1: 38400 7 even 2"}},
       {"serial(1).baud=001200", kOk, {"1: 1200 7 even 2"}},
       {"serial(1).baud", "=1200&200 OK"},
       {"serial(1).parity=odd", kOk, {"1: 1200 7 odd 2"}},
       {"serial(1).parity", "=odd&200 OK"},
       {"serial(1).baud=115200", k457},
       {"serial(1).baud=fast", k451},
       {"serial(1).bit=9", k457},
       {"serial(1).bit=x", k451},
       {"serial(1).stopbit=0", k457},
       {"serial(1).stopbit=1.5", k451},
       {"serial(1).parity=mark", k451},
       {"serial(2).baud", k456},
       {"serial(x).baud", k451},
       {"serial(1).rts_offset=32767", kOk, {"offset 32767"}},
       {"serial(1).rts_offset", "=32767&200 OK"},
       {"serial(1).rts_offset=32768", k457},
       {"serial(1).rts_offset=-1", k457},
       {"serial(1).rts_offset=x", k451},
       {"serial(1).comment=door+%25%26%22", kOk},
       {"serial(1).comment", "=door %25%26%22&200 OK"},
       {"serial(1).comment=" + std::string(39, 'c') + "%41", kOk},
       {"serial(1).comment=" + std::string(41, 'c'), k451},
       {"serial(1).comment=a%0Ab", k451},
       {"serial(1).comment=%00", kOk},
       {"serial(1).comment", "=&200 OK"}},
      heardSerial);
  for (const auto& [key, value] : {std::pair("SERIAL_BAUDRATE", "1200"),
                                   {"SERIAL_DATABIT", "7"},
                                   {"SERIAL_PARITY", "odd"},
                                   {"SERIAL_STOPBIT", "2"},
                                   {"SERIAL_RTS_OFFSET", "32767"},
                                   {"SERIAL_COMMENT", ""}})
    EXPECT_EQ(camera().row(kSerial, key), value) << key;
}

TEST_F(PeripheralTest, TheSerialDaemonsCodeIsTheAnswer) {
  const std::string before = camera().read(kSerial);
  for (const auto& [fault, answer] : {std::pair("serial refuse 412", k412),
                                      {"serial refuse 0", k500},
                                      {"serial refuse 99", k500},
                                      {"serial refuse -412", k500},
                                      {"serial down", k500},
                                      {"serial short", k500},
                                      {"serial early", k500},
                                      {"serial garbage", k500}}) {
    camera().tell("serial up");
    camera().tell(fault);
    EXPECT_EQ(camera().ask("peripheral.serial(1).baud=4800"), std::string("peripheral.serial(1).baud") + answer)
        << fault;
    EXPECT_EQ(camera().ask("peripheral.serial(1).parity=none"), std::string("peripheral.serial(1).parity") + answer)
        << fault;
  }
  ASSERT_EQ(camera().exec({"/bin/mv", "/dev/ttyS1", "/dev/ttyS9"}), 0);
  EXPECT_EQ(camera().ask("peripheral.serial(1).rts_offset=5"), std::string("peripheral.serial(1).rts_offset") + k500);
  ASSERT_EQ(camera().exec({"/bin/mv", "/dev/ttyS9", "/dev/ttyS1"}), 0);
  EXPECT_TRUE(camera().isLogged("/dev/ttyS1 open err"));
  EXPECT_EQ(camera().read(kSerial), before);
}

TEST(Peripheral, AStartSendsWhatIsStored) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.setRow(kInput, "INPUTPIN_STATUS", "off");
  camera.setRow(kOutput, "OUTPUTPIN_STATUS", "off");
  camera.setRow(kOutput, "OUTPUTPIN_PIN2_DURATION", "300");
  camera.setRow(kSerial, "SERIAL_BAUDRATE", "2400");
  camera.setRow(kSerial, "SERIAL_PARITY", "odd");
  camera.setRow(kSerial, "SERIAL_RTS_OFFSET", "9");
  const std::string before = camera.read(kOutput) + camera.read(kSerial);
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());
  Texts pins;
  for (const std::string& line : camera.toldRecorder()) {
    if (line.find("_pin") != std::string::npos) pins.push_back(line);
  }
  EXPECT_EQ(pins, (Texts{"output_pin.status 0", "output_pin(1).duration 1000", "output_pin(2).duration 300"}));
  const Texts serial(4, "1: 2400 8 odd 1");
  const Texts heard = heardSerial(camera);
  ASSERT_EQ(heard.size(), 5U);
  EXPECT_EQ(Texts(heard.begin(), heard.begin() + 4), serial);
  EXPECT_EQ(heard.back(), "offset 9");
  EXPECT_EQ(camera.read(kOutput) + camera.read(kSerial), before);
}

TEST(Peripheral, AModelWithoutSerialPort) {
  Camera camera({.without = {"SERIAL_PASS"}});
  ASSERT_TRUE(camera.up());
  expectAnswers(camera, {{"peripheral.serial_count", "peripheral.serial_count=0&200 OK"},
                         {"peripheral.serial(1).baud", "peripheral.serial(1).baud&461 Command Not Found"},
                         {"peripheral.serial(x).baud", "peripheral.serial(x).baud&461 Command Not Found"}});
  EXPECT_EQ(heardSerial(camera), Texts());
}

}  // namespace
}  // namespace test
