// Alarm pins, the format switch and the serial port: what their daemons hear, and what is kept.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kInput = "flash/sysconfig/input_pin.conf";
constexpr const char* kOutput = "flash/sysconfig/output_pin.conf";
constexpr const char* kSerial = "flash/sysconfig/serial.conf";

/** The settings in each request to the serial daemon, and each offset for the driver. */
Texts heardSerial(const Camera& camera) {
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
    camera().tell("gpio up");
    CameraTest::SetUp();
  }

  static Texts heardByRecorder() { return camera().toldRecorder(); }
  static Texts heardBySerial() { return heardSerial(camera()); }
};

TEST_F(PeripheralTest, Pins) {
  camera().tell("gpio pin2=make");
  expectSteps(camera(), "peripheral.",
              {{"input_pin_count", "=1&200 OK"},
               {"output_pin_count", "=1&200 OK"},
               {"input_pin(1).type", "=make&200 OK"},
               {"input_pin(1).pin_count", "=2&200 OK"},
               {"input_pin(1).pin(1).status", "=break&200 OK", {"get input_pin(1).level"}},
               {"input_pin(1).pin(2).status", "=make&200 OK", {"get input_pin(2).level"}},
               {"input_pin(1).pin(1).chatter=200", kOk},
               {"output_pin(1).type", "=make&200 OK"},
               {"output_pin(1).pin_count", "=2&200 OK"},
               {"output_pin(1).status=off", kOk, {"output_pin.status 0"}},
               {"output_pin(1).status=on", kOk, {"output_pin.status 1"}},
               {"output_pin(1).pin(2).status=make", kOk, {"output_pin(2).level 1"}},
               {"output_pin(1).pin(2).status", "=make&200 OK", {"get output_pin(2).level"}},
               {"output_pin(1).pin(1).status", "=break&200 OK", {"get output_pin(1).level"}},
               {"output_pin(1).pin(2).status=break", kOk, {"output_pin(2).level 0"}},
               {"output_pin(1).pin(1).duration=0", kOk, {"output_pin(1).duration 0"}},
               {"output_pin(1).pin(2).duration=100", kOk, {"output_pin(2).duration 100"}},
               {"output_pin(1).pin(2).duration=99", k457}},
              heardByRecorder);
  expectRows(camera(), kOutput,
             {"OUTPUTPIN_PIN1_DURATION=0", "OUTPUTPIN_PIN2_DURATION=100", "OUTPUTPIN_PIN2_STATUS=break"});
}

TEST_F(PeripheralTest, TheInputGroupIsWrittenFromInsideAlone) {
  const std::string group = "peripheral.input_pin(1).status";
  expectSteps(camera(), group, {{"=off", kOk, {"input_pin.status 0"}}}, heardByRecorder, UserClass::kDebug);
  EXPECT_EQ(camera().row(kInput, "INPUTPIN_STATUS"), "off");
  expectSteps(camera(), group, {{"=on", kOk, {"input_pin.status 1"}}}, heardByRecorder, UserClass::kOnvif);
}

TEST_F(PeripheralTest, TheRecordersWordIsTheAnswerOfAWrite) {
  const std::string before = camera().read(kOutput);
  expectUnderFaults(camera(), "recorder",
                    {{"down", k500}, {"refuse 412", k412}, {"refuse 0", k500}, {"refuse 5", k500}},
                    "peripheral.output_pin(1).", {"status=off", "pin(1).status=make", "pin(2).duration=300"});
  EXPECT_EQ(camera().read(kOutput), before);
  expectUnderFaults(camera(), "recorder", {{"down", k500}, {"refuse 412", k500}, {"garbage", k500}},
                    "peripheral.output_pin(1).", {"pin(1).status"});
}

TEST_F(PeripheralTest, TheSwitchIsAskedLive) {
  expectUnderFaults(camera(), "gpio",
                    {{"switch=0", "=pal&200 OK"}, {"switch=2", "=ntsc&200 OK"}, {"refuse", k500}, {"down", k500}},
                    "peripheral.switch(1).", {"status"});
}

TEST_F(PeripheralTest, EachSerialRequestCarriesAllFourSettings) {
  expectSteps(camera(), "peripheral.",
              {{"serial_count", "=1&200 OK"},
               {"serial(1).baud=38400", kOk, {"1: 38400 8 none 1"}},
               {"serial(1).bit=7", kOk, {"1: 38400 7 none 1"}},
               {"serial(1).parity=even", kOk, {"1: 38400 7 even 1"}},
               {"serial(1).stopbit=2", kOk, {"1: 38400 7 even 2"}},
               {"serial(1).baud=001200", kOk, {"1: 1200 7 even 2"}},
               {"serial(1).baud", "=1200&200 OK"},
               {"serial(1).parity=odd", kOk, {"1: 1200 7 odd 2"}},
               {"serial(1).baud=115200", k457},
               {"serial(1).rts_offset=32767", kOk, {"offset 32767"}},
               {"serial(1).rts_offset=32768", k457},
               {"serial(1).comment=door", kOk}},
              heardBySerial);
  expectRows(camera(), kSerial, {"SERIAL_BAUDRATE=1200", "SERIAL_PARITY=odd", "SERIAL_RTS_OFFSET=32767"});
}

TEST_F(PeripheralTest, TheSerialDaemonsCodeIsTheAnswer) {
  const std::string before = camera().read(kSerial);
  expectUnderFaults(camera(), "serial",
                    {{"refuse 412", k412},
                     {"refuse 0", k500},
                     {"refuse 99", k500},
                     {"refuse -412", k500},
                     {"down", k500},
                     {"short", k500},
                     {"early", k500},
                     {"garbage", k500}},
                    "peripheral.serial(1).", {"baud=4800", "parity=none"});
  camera().shell("mv /dev/ttyS1 /dev/ttyS9");
  expectAnswers(camera(), {{"peripheral.serial(1).rts_offset=5", k500}});
  EXPECT_TRUE(camera().isLogged("/dev/ttyS1 open err"));
  camera().shell("ln -s null /dev/ttyS1");  // which no driver of a port stands behind
  expectAnswers(camera(), {{"peripheral.serial(1).rts_offset=5", k500}});
  EXPECT_TRUE(camera().isLogged("ioctl err"));
  camera().shell("mv /dev/ttyS9 /dev/ttyS1");
  EXPECT_EQ(camera().read(kSerial), before);
}

TEST(Peripheral, AStartSendsWhatIsStored) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  camera.setRow(kInput, "INPUTPIN_STATUS", "off");
  camera.setRows(kOutput, {"OUTPUTPIN_STATUS=off", "OUTPUTPIN_PIN2_DURATION=300"});
  camera.setRows(kSerial, {"SERIAL_BAUDRATE=2400", "SERIAL_PARITY=odd", "SERIAL_RTS_OFFSET=9"});
  const std::string before = camera.read(kOutput) + camera.read(kSerial);
  camera.clearJournal();
  ASSERT_TRUE(camera.reboot());
  EXPECT_EQ(camera.toldRecorder({"output_pin", "input_pin"}),
            (Texts{"output_pin.status 0", "output_pin(1).duration 1000", "output_pin(2).duration 300"}));
  const std::string settings = "1: 2400 8 odd 1";
  EXPECT_EQ(heardSerial(camera), (Texts{settings, settings, settings, settings, "offset 9"}));
  EXPECT_EQ(camera.read(kOutput) + camera.read(kSerial), before);
}

TEST(Peripheral, AModelWithoutSerialPort) {
  Camera camera({.without = {"SERIAL_PASS"}});
  ASSERT_TRUE(camera.up());
  expectAnswers(camera, {{"peripheral.serial_count", "=0&200 OK"}});
  EXPECT_EQ(heardSerial(camera), Texts());
}

}  // namespace
}  // namespace test
