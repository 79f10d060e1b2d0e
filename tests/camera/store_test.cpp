// The store as its files show it: healing, factory restore, and the version step.

#include "tests/camera/Camera.h"

namespace test {
namespace {

constexpr const char* kUi = "flash/sysconfig/ui.conf";
constexpr const char* kRead = "ui.encode(1).cbr_mode(jpeg)";

std::string written(const std::string& word) { return std::string(kRead) + "=" + word; }
std::string shown(const std::string& word) { return written(word) + "&200 OK"; }

class Store : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(camera.up()) << camera.log(); }

  Camera camera;
};

TEST_F(Store, DamagedFilesHeal) {
  const std::string whole = camera.read(kUi);
  const std::string changed = "UI_ENC3_CBRMODE_MPEG4=vbr\n";
  std::string other = whole;
  other.replace(other.find("UI_ENC3_CBRMODE_MPEG4=cbr\n"), changed.size(), changed);
  struct Case {
    const char* what;
    std::string content;
    std::string healed;
  };
  const Case cases[] = {
      {"empty", "", whole},
      {"one row only", changed, other},
      {"no line end: the last row is lost", "UI_ENC3_CBRMODE_MPEG4=vbr", whole},
      {"unknown key", whole + "UI_ENC9=x\n", whole},
      {"a key twice: the last wins", whole + changed, other},
      {"a line too long to be written", whole + "UI_ENC1_CBRMODE_JPEG=" + std::string(600, 'x') + "\n", whole},
      {"cut in the middle", other.substr(0, other.size() - 12), whole},
      {"any order", changed + whole.substr(0, whole.size() - changed.size()), ""},  // complete: left as it stands
  };
  for (const Case& item : cases) {
    camera.down();
    camera.write(kUi, item.content);
    ASSERT_TRUE(camera.up()) << item.what << camera.log();
    EXPECT_EQ(camera.read(kUi), item.healed.empty() ? item.content : item.healed) << item.what;
  }
}

TEST_F(Store, AValueMayHoldEqualsSigns) {
  camera.down();
  camera.write("flash/sysconfig/serial.conf", "SERIAL_COMMENT=a=b==c\n");
  ASSERT_TRUE(camera.up());
  EXPECT_EQ(camera.row("flash/sysconfig/serial.conf", "SERIAL_COMMENT"), "a=b==c");
}

TEST_F(Store, AMissingFileComesBackFromTheFactory) {
  camera.down();
  std::filesystem::remove(camera.path("flash/sysconfig/serial.conf"));
  std::filesystem::remove(camera.path("flash/sysconfig/event/event9.conf"));
  ASSERT_TRUE(camera.up()) << camera.log();
  for (const char* file : {"sysconfig/serial.conf", "sysconfig/event/event9.conf"}) {
    EXPECT_EQ(camera.read(std::string("flash/") + file), camera.read(std::string("factory/") + file));
    EXPECT_EQ(std::filesystem::status(camera.path(std::string("flash/") + file)).permissions(),
              static_cast<std::filesystem::perms>(0644));
  }
  EXPECT_FALSE(std::filesystem::exists(camera.path("tmp/tmp_factory")));  // no mount is left behind
}

/** Files that cannot be read bring back the factory's partition and restart the camera. */
TEST_F(Store, AnUnreadableFileRestoresTheFactoryPartition) {
  const std::string factory = camera.read(kUi);
  struct Case {
    const char* file;
    std::string content;
    const char* log;
  };
  const Case cases[] = {
      {"flash/sysconfig/network.conf", "HOSTNAME=x\n\nNTP=on\n", "bad format"},
      {"flash/sysconfig/network.conf", "HOSTNAME=x\nnothing\n", "bad format"},
      {"flash/sysconfig/camera.conf", "COMMENT=" + std::string(1016, 'x') + "\n", "failbit cnt="},
      {"sysinfo/kq40_camdsp.conf", "ADJUSTIRIS=1\n\n", "bad format"},
  };
  for (const Case& item : cases) {
    EXPECT_EQ(camera.ask(written("vfs")), std::string(kRead) + "&200 OK");
    camera.down();
    camera.write(item.file, item.content);
    camera.start();
    EXPECT_TRUE(eventually([&] { return camera.read(kUi) == factory; })) << item.file << camera.log();
    EXPECT_TRUE(eventually([&] { return camera.ask(kRead) == shown("afs"); })) << item.file << camera.log();
    EXPECT_TRUE(camera.isLogged(item.log)) << item.file;
    EXPECT_TRUE(camera.isLogged("Config::loadConfig error")) << item.file;
  }
}

/** What lies beside the partition has no factory copy: it is made anew, and the camera comes up with all else. */
TEST_F(Store, AnUnreadableFileOutsideThePartitionIsMadeAnew) {
  const struct {
    const char* file;
    std::string content;  // "-": the file is removed
    const char* row;
    const char* value;
  } cases[] = {
      {"sysinfo/system.conf", "-", "TIMEZONE", "Japan"},
      {"sysinfo/system.conf", "TIMEZONE=UTC\n" + std::string(1100, 'x') + "=1\n", "TIMEZONE", "Japan"},
      {"sysinfo/kq40_autofocus.conf", std::string(2000, '='), "FOCUS_POS", "0"},
  };
  EXPECT_EQ(camera.ask(written("vfs")), std::string(kRead) + "&200 OK");
  for (const auto& item : cases) {
    camera.down();
    if (item.content == "-") {
      std::filesystem::remove(camera.path(item.file));
    } else {
      camera.write(item.file, item.content);
    }
    ASSERT_TRUE(camera.up()) << item.file << camera.log();
    EXPECT_EQ(camera.ask(kRead), shown("vfs")) << item.file;
    EXPECT_EQ(camera.row(item.file, item.row), item.value) << item.file;
    EXPECT_TRUE(camera.isLogged("made anew from the built-in rows")) << item.file;
  }
}

TEST_F(Store, TheVersionStepConvertsOnce) {
  camera.down();
  std::filesystem::remove(camera.path("flash/sysconfig/config_version"));
  const std::pair<const char*, const char*> files[] = {{"flash/sysconfig/scene/0.conf", "-5"},
                                                       {"flash/sysconfig/scene/7.conf", "3"},
                                                       {"flash/sysconfig/camera.conf", "9"}};
  for (const auto& [file, value] : files) {
    camera.write(file, std::string("AUTO_EXPOSURE_REFERENCE=") + value + "\n");
  }
  const auto expectConverted = [this] {
    EXPECT_EQ(camera.read("flash/sysconfig/config_version"), "1.00.003\n");
    EXPECT_EQ(camera.row("flash/sysconfig/scene/0.conf", "AUTO_EXPOSURE_REFERENCE"), "-125");
    EXPECT_EQ(camera.row("flash/sysconfig/scene/7.conf", "AUTO_EXPOSURE_REFERENCE"), "48");
    EXPECT_EQ(camera.row("flash/sysconfig/scene/3.conf", "AUTO_EXPOSURE_REFERENCE"), "0");
    EXPECT_EQ(camera.row("flash/sysconfig/camera.conf", "AUTO_EXPOSURE_REFERENCE"), "80");
  };
  ASSERT_TRUE(camera.up());
  expectConverted();
  ASSERT_TRUE(camera.reboot());
  expectConverted();
}

}  // namespace
}  // namespace test
