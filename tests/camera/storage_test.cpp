// The memory card: its states through the daemon that owns it, its size, its errors and its test.

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kFile = "flash/sysconfig/sdcard.conf";

class StorageTest : public CameraTest {
 protected:
  void SetUp() override {
    for (const char* words : {"sdrec up", "sdrec card=on init=on recording=off", "recorder up"})
      camera().tell(words);
    CameraTest::SetUp();
  }

  static void expect(const std::string& item, const std::string& answer) {
    const std::string path = "storage.disk(1)." + item.substr(0, item.find('='));
    EXPECT_EQ(camera().ask("storage.disk(1)." + item), path + answer) << item;
  }
};

TEST_F(StorageTest, TheStateIsTheCardsAndTheSettings) {
  struct Case {
    const char* card;
    const char* on;
    const char* off;
  };
  const Case cases[] = {{"card=empty", "=empty", "=off_empty"},
                        {"card=read_only", "=read_only", "=off_read_only"},
                        {"card=on", "=on", "=off"}};
  for (const Case& c : cases) {
    camera().tell(std::string("sdrec ") + c.card);
    expect("status=on", kOk);
    expect("status", c.on + std::string(kOk));
    expect("status=off", kOk);
    expect("status", c.off + std::string(kOk));
  }
  EXPECT_EQ(camera().toldRecorder(), (Texts{"disk.status on", "disk.status off", "disk.status on", "disk.status off",
                                            "disk.status on", "disk.status off"}));
  EXPECT_EQ(camera().row(kFile, "SDCARD_STATUS"), "off");
  expect("status=empty", k451);
  camera().tell("recorder refuse 412");
  expect("status=on", k412);
  EXPECT_EQ(camera().row(kFile, "SDCARD_STATUS"), "off");
  camera().tell("recorder up");
  expect("status=on", kOk);
  expect("erecmode=on", kOk);
  expect("erecmode", "=on&200 OK");
  expect("erecmode=x", k451);
  EXPECT_EQ(camera().row(kFile, "SDCARD_ERECMODE"), "on");
}

TEST_F(StorageTest, ACommandIsAnsweredAtOnceAndItsStateIsRead) {
  camera().tell("sdrec run=60000");
  expect("initialize", "=on&200 OK");
  expect("initialize=start", kOk);
  expect("initialize", "=not_initialized&200 OK");
  camera().tell("sdrec init=off");
  expect("initialize", "=off&200 OK");
  expect("initialize=on", k451);
  expect("mount=on", kOk);
  expect("mount=off", kOk);
  expect("mount=start", k451);
  expect("mount", "&405 Method Not Allowed");
  Texts commands;
  for (const std::string& line : camera().journal("sdrec"))
    commands.push_back(Camera::field(line, "command") + " " + Camera::field(line, "raw"));
  EXPECT_EQ(commands, (Texts{"1026 02040000000000000000", "517 05020000000000000000", "1026 02040000000000000000",
                             "1026 02040000000000000000", "518 06020000000000000000", "519 07020000000000000000"}));
  camera().tell("sdrec card=read_only");
  expect("initialize=start", k500);
  camera().tell("sdrec card=empty");
  expect("mount=on", k500);
}

TEST_F(StorageTest, SizesErrorsAndRecording) {
  expect("size", "=1886M&200 OK");
  expect("errcode", "=0&200 OK");
  expect("rec", "=off&200 OK");
  const auto device = [](const std::string& commands) {
    ASSERT_EQ(camera().exec({"/bin/sh", "-c", "cd /sys/block/mmcblk0 && " + commands}), 0);
  };
  device("echo 268435456 > size");
  expect("size", "=131072M&200 OK");
  device("echo 4096 > queue/logical_block_size");
  expect("size", "=1048576M&200 OK");
  device("echo 0 > queue/logical_block_size");
  expect("size", "=131072M&200 OK");
  device("echo 3862528 > size; echo 512 > queue/logical_block_size");
  camera().tell("sdrec write_error=on recording=on");
  expect("errcode", "=1&200 OK");
  expect("rec", "=on&200 OK");
  camera().tell("sdrec space_error=on");
  expect("errcode", "=1|2&200 OK");
  camera().tell("sdrec write_error=off");
  expect("errcode", "=2&200 OK");
  camera().tell("sdrec card=empty");
  expect("size", "=0M&200 OK");
  expectAnswers(camera(), {{"storage.disk(2).size", "storage.disk(2).size&456 Header Field Not Valid for Resource"},
                           {"storage.disk(x).size", "storage.disk(x).size&451 Parameter Not Understood"},
                           {"storage.disk.size", "storage.disk.size&461 Command Not Found"}});
}

TEST_F(StorageTest, TheTestsVerdict) {
  for (const auto& [card, answer] : {std::pair("on", "=1886M,ok"),
                                     {"read_only", "=1886M,read_only"},
                                     {"broken", "=1886M,ng"},
                                     {"empty", "=0M,ng"},
                                     {"on", "=1886M,ok"}}) {
    camera().tell(std::string("sdrec card=") + card);
    expect("check", answer + std::string(kOk));
  }
  EXPECT_EQ(camera().journalFields("child", "command"), Texts(5, "SdTestPrg -outfile /tmp/check.data"));
  // A result and a pid that an earlier test left behind.
  for (const auto& [output, verdict] : {std::pair("going on\n", "ng"),
                                        {"killed\n", "ng"},
                                        {"Process complete : Failure\nProcess complete : Success\n", "ng"}}) {
    camera().write("run/sdtest", output);
    camera().write("tmp/check.data", "Process complete : Success\n");
    camera().exec({"/bin/sh", "-c", "echo 1 > /var/run/SdTestPrg.pid"});
    expect("check", std::string("=1886M,") + verdict + kOk);
  }
  EXPECT_NE(camera().exec({"/bin/ls", "/var/run/SdTestPrg.pid"}), 0);
}

TEST(Storage, AModelWithoutASlot) {
  Camera camera({.without = {"SDCARD"}});
  ASSERT_TRUE(camera.up());
  for (const char* path : {"storage.disk(1).status", "storage.disk(x).status"})
    EXPECT_EQ(camera.ask(path), std::string(path) + k461);
}

}  // namespace
}  // namespace test
