// The settings of a camera as tmxctl takes them out and puts them back: in an order in which all are taken, and without
// a trace where nothing changes.

#include <algorithm>
#include <sstream>

#include "tests/camera/Camera.h"
#include "tests/camera/PowerCut.h"

namespace test {
namespace {

Texts linesOf(const std::string& text) {
  Texts lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  return lines;
}

class RoundTrip : public CameraTest {
 protected:
  static std::string dump() {
    EXPECT_EQ(camera().ctl("dump > dump"), 0);
    return camera().read("dump");
  }

  /** Loads the lines and commits them, with a restart of the camera at the end. */
  static void load(const std::string& lines) {
    camera().write("load", lines);
    EXPECT_TRUE(camera().restartsBehind(
        [&] { EXPECT_EQ(camera().ctl("load --commit load > answers 2> summary"), 0) << camera().read("answers"); }));
    const Texts all = linesOf(lines);
    const std::string count =
        std::to_string(std::ranges::count_if(all, [](const std::string& line) { return !line.starts_with('#'); }));
    EXPECT_TRUE(camera().read("summary").starts_with(count + " lines: " + count + " accepted, 0 refused; "))
        << camera().read("summary");
  }

  static Texts errors() {
    Texts lines = linesOf(camera().log());
    std::erase_if(lines, [](const std::string& line) { return line.find("<err>") == std::string::npos; });
    return lines;
  }
};

TEST_F(RoundTrip, AFreshCameraTakesItsSettingsBackUnchanged) {
  const std::string settings = dump();
  const auto before = filesOf(camera());
  load(settings);
  EXPECT_EQ(filesOf(camera()), before);
  ASSERT_TRUE(camera().reboot());
  EXPECT_EQ(dump(), settings);
  EXPECT_EQ(errors(), Texts()) << "in the log of the first start or behind it";
}

// Each stands in the way of another one, or of its way back, unless it comes at its time.
constexpr const char* kOthers =
    "system.timezone=Japan\n"                                           // restarts the camera ...
    "network.interface(1).mtu=1400\n"                                   // ... as this does
    "network.http(configuration).port=8080\n"                           // restarts the web server
    "camera.scene.image.blc.area=0F0F0F0F0F0F0F0F0F0F0F0F0F0F0F0F0F\n"  // lost when the shape of the picture changes
    "camera.scene.image.blc=manual\n"
    "camera.scene.image.senseup_limit=0\n"
    "camera.scene.image.brightness=10\n"  // with a fixed shutter alone
    "camera.scene.shutter=100\n"
    "camera.adjust_service.alc.err_high=90\n"  // below the other limit as it was
    "camera.adjust_service.alc.err_low=50\n"
    "network.destination(1).host=225.9.9.9\n"
    "application.object(2).framerate=10\n"  // up to the encoder's
    "application.object(3).postrec=0\n"
    "application.event(4).trigger=pin2=break\n"
    "encode(1).framerate=10\n"
    "encode(1).framesize=640x480\n"
    "encode(2).framesize=320x240\n"
    "encode(3).framesize=320x240\n";

TEST_F(RoundTrip, OtherSettingsComeAndGo) {
  const std::string settings = dump();
  const auto before = filesOf(camera());
  load(kOthers);
  const Texts changed = linesOf(dump());
  for (const std::string& line : linesOf(kOthers))
    EXPECT_EQ(std::ranges::count(changed, line), 1) << line;
  load(settings);
  EXPECT_EQ(dump(), settings);
  EXPECT_EQ(filesOf(camera()), before);
}

TEST_F(RoundTrip, ARefusedLineKeepsTheCommitsWaiting) {
  const auto before = filesOf(camera());
  camera().write("load", "camera.id=other\nencode(1).framerate=99\nnetwork.dns.ip=10.0.0.1\n");
  EXPECT_EQ(camera().ctl("load --commit load > answers 2> summary"), 1);
  EXPECT_EQ(linesOf(camera().read("answers")).back(), "network.dns.ip&202 Accepted(network.dns.status=restart)");
  EXPECT_TRUE(camera().read("answers").starts_with(
      "encode(1).framerate&457 Invalid Range: 1 to 30, with a fraction or without (frames/s)\n"));
  EXPECT_TRUE(
      camera().read("summary").ends_with(" 'camera.status=save' 'network.dns.status=restart'\n"
                                         "3 lines: 2 accepted, 1 refused; 0 commits, 2 wait\n"))
      << camera().read("summary");
  EXPECT_EQ(filesOf(camera()), before);
}

}  // namespace
}  // namespace test
