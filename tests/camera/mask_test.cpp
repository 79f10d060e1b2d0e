// The privacy mask: its pages, its grey, and what is kept of it; and the other settings that wait for the camera's
// save.

#include <array>
#include <cstdio>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

const std::string k202 = "&202 Accepted(camera.status=save)";
constexpr const char* kCameraFile = "flash/sysconfig/camera.conf";
const std::string kStatus = "camera.private_mask.status";
const std::string kArea = "camera.private_mask.area";
const std::string kColor = "camera.private_mask.color";

constexpr size_t kDigits = 510;
constexpr size_t kPages = 32;
constexpr size_t kFrameDigits = 24;

/** The pages of an area: the address, the page, eight bytes, and zeros to the end of the frame. */
Texts pagesOf(const std::string& area) {
  const std::string padded = area + "0000";
  Texts pages;
  for (size_t page = 0; page < kPages; ++page) {
    char head[5];
    std::snprintf(head, sizeof head, "d0%02x", static_cast<unsigned>(page));
    std::string frame = head + padded.substr(page * 16, 16);
    pages.push_back(frame.append(kFrameDigits - frame.size(), '0'));
  }
  return pages;
}

class Mask : public CameraTest {
 protected:
  void SetUp() override {
    camera().ask(kArea + "=" + std::string(kDigits, '1'));
    CameraTest::SetUp();
  }
  void TearDown() override { camera().tell("dsp clear"); }
  static Texts frames() { return camera().journalFields("dsp", "raw"); }
};

/** Every bit has its own place: one digit after the other is set alone. */
TEST_F(Mask, EveryBitReachesItsPageAndByte) {
  for (size_t digit = 0; digit < kDigits; ++digit) {
    std::string area(kDigits, '0');
    area[digit] = "1248"[digit % 4];
    camera().clearJournal();
    EXPECT_EQ(camera().ask(kArea + "=" + area), kArea + k202);
    ASSERT_EQ(frames(), pagesOf(area)) << digit;
  }
}

TEST_F(Mask, AreaAndColour) {
  const std::string loose = "zz" + std::string(kDigits - 3, 'F') + "g";
  const std::string strict = "00" + std::string(kDigits - 3, 'f') + "0";
  expectAnswers(camera(), {{kArea + "=" + std::string(kDigits, '1'), kOk}});  // the area that is in force
  EXPECT_EQ(frames(), Texts());
  expectAnswers(camera(), {{kArea + "=" + loose, k202}, {kArea, shows(loose)}});
  EXPECT_EQ(frames(), pagesOf(strict));

  camera().clearJournal();
  expectSequence(camera(), kColor, "=1234FF 202  =1234FF 200  ? 1234FF  =1234ff 202  =ff 202  =12345g 451");
  expectSequence(camera(), kStatus, "=on 202  =on 202  =off 200");  // as it is stored, and sent all the same
  EXPECT_EQ(frames(), (Texts{"d11212120000000000000000", "d11212120000000000000000", "d10000000000000000000000",
                             "d20100000000000000000000", "d20100000000000000000000", "d20000000000000000000000"}));
}

TEST_F(Mask, AFailureKeepsTheOldMask) {
  camera().ask(kColor + "=808080");
  camera().tell("dsp fail_once=0xd0");
  camera().clearJournal();
  expectAnswers(camera(), {{kArea + "=" + std::string(kDigits, '2'), k500}, {kArea, shows(std::string(kDigits, '1'))}});
  EXPECT_EQ(frames().size(), 1U) << "no page follows one that failed";
  camera().tell("dsp fail=0xd1,0xd2");
  expectEach(camera(), "", {kColor + "=101010", kStatus + "=on"}, k500);
  expectAnswers(camera(), {{kColor, shows("808080")}, {kStatus, shows("off")}});
}

/** What a save of the camera writes, a restore takes back, and a start finds. */
TEST_F(Mask, SavedRestoredAndFoundAgain) {
  const std::string area(kDigits, 'A');
  const std::vector<std::array<std::string, 3>> settings{
      {kArea, area, "PRIVACY_MASK_AREA"},     {kColor, "4080C0", "PRIVACY_MASK_COLOR"},
      {kStatus, "on", "PRIVACY_MASK_STATUS"}, {"camera.stealth", "on", "STEALTH"},
      {"camera.identify", "on", "IDENTIFY"},  {"camera.id", "Gate 1", "COMMENT"},
  };
  const auto set = [](const std::string& path, const std::string& value) {
    EXPECT_EQ(camera().ask(path + "=" + value), path + k202);
  };
  for (const auto& [path, value, key] : settings)
    set(path, value);
  set("camera.image.white_balance.area", "s1-s2-s3-s4");
  EXPECT_EQ(camera().ask("camera.status=save"), std::string("camera.status") + kOk);
  for (const auto& [path, value, key] : settings)
    EXPECT_EQ(camera().row(kCameraFile, key), value);

  camera().ask(kArea + "=" + std::string(kDigits, 'B'));
  camera().ask(kColor + "=000000&" + kStatus + "=off&camera.id=other");
  const auto expectSaved = [&] {
    for (const auto& [path, value, key] : settings)
      expectAnswers(camera(), {{path, shows(value)}});
    expectAnswers(camera(), {{"camera.image.white_balance.area", shows("1-2-3-4")}});
    Texts masks = frames();
    std::erase_if(masks, [](const std::string& frame) { return !frame.starts_with("d"); });
    Texts expected = pagesOf(std::string(kDigits, 'a'));
    expected.insert(expected.begin(), "d14040400000000000000000");
    expected.push_back("d20100000000000000000000");
    EXPECT_EQ(masks, expected);
  };
  camera().clearJournal();
  expectAnswers(camera(), {{"camera.status=restore", kOk}});
  expectSaved();
  camera().clearJournal();
  ASSERT_TRUE(camera().reboot());
  expectSaved();

  // The save of a scene writes the camera's settings too.
  EXPECT_EQ(camera().ask(kStatus + "=off"), kStatus + k202);
  EXPECT_EQ(camera().ask("camera.scene.status=save"), std::string("camera.scene.status") + kOk);
  EXPECT_EQ(camera().row(kCameraFile, "PRIVACY_MASK_STATUS"), "off");
  EXPECT_EQ(camera().ask(kStatus + "=on"), kStatus + k202);
  camera().ask("camera.status=save");

  // The reset of a scene in force loads everything anew, from what is stored of the camera.
  camera().clearJournal();
  EXPECT_EQ(camera().ask("camera.scene(0).status=initialize"), std::string("camera.scene(0).status") + kOk);
  expectSaved();
}

}  // namespace
}  // namespace test
