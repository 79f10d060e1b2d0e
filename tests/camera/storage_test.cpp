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
    camera().ask("storage.disk(1).status=on");
    CameraTest::SetUp();
  }

  static void expect(const std::string& item, const std::string& answer) {
    expectAnswers(camera(), "storage.disk(1).", {{item, answer}});
  }
};

TEST_F(StorageTest, TheStateIsTheCardsAndTheSettings) {
  for (const std::string card : {"empty", "read_only", "on"}) {
    camera().tell("sdrec card=" + card);
    expect("status=on", kOk);
    expect("status", "=" + card + kOk);
    expect("status=off", kOk);
    expect("status", (card == "on" ? "=off" : "=off_" + card) + kOk);
  }
  EXPECT_EQ(camera().toldRecorder(), (Texts{"disk.status on", "disk.status off", "disk.status on", "disk.status off",
                                            "disk.status on", "disk.status off"}));
  expectUnderFaults(camera(), "recorder", {{"refuse 412", k412}, {"down", k500}}, "storage.disk(1).", {"status=on"});
  EXPECT_EQ(camera().row(kFile, "SDCARD_STATUS"), "off");
}

TEST_F(StorageTest, ACommandIsAnsweredAtOnceAndItsStateIsRead) {
  camera().tell("sdrec run=60000");
  expect("initialize", "=on&200 OK");
  expect("initialize=start", kOk);
  expect("initialize", "=not_initialized&200 OK");
  camera().tell("sdrec init=off");
  expect("initialize", "=off&200 OK");
  expect("mount=on", kOk);
  expect("mount=off", kOk);
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

TEST_F(StorageTest, ADaemonThatIsAwayIsNoFailure) {
  camera().tell("sdrec card=read_only init=not_initialized");
  for (const auto& [item, answer] : TextPairs{
           {"status", "=empty&200 OK"}, {"initialize", "=off&200 OK"}, {"initialize=start", kOk}, {"mount=on", kOk}})
    expectUnderFaults(camera(), "sdrec", {{"down", answer}, {"short", answer}, {"early", answer}}, "storage.disk(1).",
                      {item});
  expectUnderFaults(camera(), "sdrec", {{"refuse", k500}}, "storage.disk(1).",
                    {"status", "initialize", "initialize=start", "mount=off"});
}

TEST_F(StorageTest, SizesErrorsAndRecording) {
  expect("size", "=1886M&200 OK");
  expect("errcode", "=0&200 OK");
  expect("rec", "=off&200 OK");
  const auto device = [](const std::string& commands) { camera().shell("cd /sys/block/mmcblk0 && " + commands); };
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
  for (const char* output : {"going on\n", "killed\n", "Process complete\nSuccess\n",
                             "Process complete : Failure\nProcess complete : Success\n"}) {
    camera().write("run/sdtest", output);
    camera().write("tmp/check.data", "Process complete : Success\n");
    camera().shell("echo 1 > /var/run/SdTestPrg.pid");
    expect("check", "=1886M,ng&200 OK");
  }
  EXPECT_NE(camera().exec({"/bin/ls", "/var/run/SdTestPrg.pid"}), 0);
}

}  // namespace
}  // namespace test
