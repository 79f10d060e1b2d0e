// What the camera is called, its lamps, the searches for defects, the iris, counters, and raw access to the DSP.

#include <fstream>
#include <tuple>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

const std::string k202 = "&202 Accepted(camera.status=save)";

std::string pathOf(const std::string& request) { return request.substr(0, request.find('=')); }

/** A request, what stands behind its path in the answer, and what reached `who` meanwhile (`key` of its lines). */
struct Case {
  std::string request;
  std::string answer;
  Texts told = {};
};

class Sensor : public CameraTest {
 protected:
  void TearDown() override {
    for (const char* words : {"dsp clear", "defect up", "gpio up", "recorder up"})
      camera().tell(words);
  }
  static void expect(std::string_view who, std::string_view key, const std::vector<Case>& cases) {
    for (const Case& item : cases) {
      camera().clearJournal();
      EXPECT_EQ(camera().ask(item.request), pathOf(item.request) + item.answer) << item.request;
      if (who == "gpio") camera().tell("gpio show");
      EXPECT_EQ(camera().journalFields(who, key), item.told) << item.request;
    }
  }
};

TEST_F(Sensor, NameAndLamps) {
  const std::string forty(40, 'x');
  const std::string hint = k202;
  expect("library", "value",
         {{"camera.id=Gate 2", hint, {"Gate 2"}},
          {"camera.comment", "=Gate 2&200 OK"},
          {"camera.comment=%22a%25b%26%22+c", hint, {"\"a%b&\" c"}},
          {"camera.id", "=%22a%25b%26%22 c&200 OK"},
          {"camera.id=" + forty, hint, {forty}},
          {"camera.id=" + forty + "x", k451},
          {"camera.id=%41" + forty.substr(1), hint, {"A" + forty.substr(1)}},
          {"camera.id=two%0Alines", k451},
          {"camera.id", "=A" + forty.substr(1) + kOk},
          {"camera.id=%00", hint, {""}},
          {"camera.id", "=&200 OK"}});
  camera().tell("dsp fail=zr_set_camera_id");
  expect("library", "value", {{"camera.id=new", k500, {"new"}}, {"camera.id", "=&200 OK"}});

  expect("recorder", "arg",
         {{"camera.stealth=on", hint, {"0"}},
          {"camera.stealth=on", hint, {"0"}},
          {"camera.stealth=off", hint, {"1"}},
          {"camera.stealth=0", k451},
          {"camera.identify=on", hint, {"2"}},
          {"camera.identify=off", hint, {"3"}},
          {"camera.identify=ON", k451}});
}

TEST_F(Sensor, StaticDefects) {
  const std::string root = "camera.defect_detect.static.";
  camera().tell("defect run=60000000 static_count=7 static_error=3");
  expect("defect", "what",
         {{root + "adjust", k412},
          {root + "adjust_detail", k412},
          {root + "adjust=start", k412},
          {root + "status=off", kOk},
          {root + "status=maybe", k451},
          {root + "status=on", k202},
          {root + "status=on", kOk},
          {root + "adjust", "=completed&200 OK", {"static_status"}},
          {root + "adjust_detail", "=completed(7)&200 OK", {"static_status"}},
          {root + "adjust=pause", kOk, {"static_status"}},
          {root + "adjust=start", kOk, {"static_start"}},
          {root + "adjust=start", kOk, {"static_start"}},
          {root + "adjust", "=adjusting&200 OK", {"static_status"}},
          {root + "adjust_detail", "=adjusting&200 OK", {"static_status"}},
          {root + "adjust=pause", kOk, {"static_status", "static_stop"}}});
  camera().tell("defect static=error");
  expect("defect", "what",
         {{root + "adjust", "=error&200 OK", {"static_status"}},
          {root + "adjust_detail", "=error(3)&200 OK", {"static_status"}}});
  camera().tell("defect garbage");
  EXPECT_EQ(camera().ask(root + "adjust"), root + "adjust=error&200 OK");
  EXPECT_EQ(camera().ask(root + "adjust=start"), root + "adjust" + k500);
  camera().tell("defect refuse for=static_stop");
  camera().tell("defect static=adjusting");
  EXPECT_EQ(camera().ask(root + "adjust=stop"), root + "adjust" + k500);
  for (const char* word : {"off", "on"}) {
    EXPECT_EQ(camera().ask(root + "status=" + word), root + "status" + k202);
    EXPECT_EQ(camera().ask("camera.status=save"), std::string("camera.status") + kOk);
    EXPECT_EQ(camera().ask(root + "status"), root + "status=" + word + kOk);
    EXPECT_EQ(camera().row("flash/sysconfig/camera.conf", "DEFECT_DETECT"), word);
  }
  camera().setRow("flash/sysconfig/camera.conf", "DEFECT_DETECT", "auto");
  ASSERT_TRUE(camera().reboot());
  expect(
      "defect", "what",
      {{root + "adjust", "=error&200 OK"}, {root + "adjust_detail", "=error&200 OK"}, {root + "adjust=start", k412}});
  EXPECT_EQ(camera().ask("camera.defect_detect.dynamic.status=on"),
            "camera.defect_detect.dynamic.status" + std::string(k461));
}

TEST_F(Sensor, FixedPattern) {
  const std::string path = "camera.fpn.adjust";
  camera().tell("defect run=60000000 fpn_count=300");
  expect("defect", "what",
         {{"camera.fpn.num", "=300&200 OK", {"fpn_count"}},
          {path, "=completed&200 OK", {"fpn_status"}},
          {path + "_detail", "=completed(255)&200 OK", {"fpn_status"}},
          {path + "=stop", kOk, {"fpn_status"}},
          {path + "=pause", k451},
          {path + "=start", kOk, {"fpn_status", "fpn_start"}},
          {path + "=start", kOk, {"fpn_status"}},
          {path + "_detail", "=adjusting&200 OK", {"fpn_status"}},
          {path + "=stop", kOk, {"fpn_status", "fpn_stop"}}});
  camera().tell("defect refuse for=fpn_start");
  EXPECT_EQ(camera().ask(path + "=start"), path + k500);
}

TEST_F(Sensor, IrisAndWhiteBalanceArea) {
  const std::string area = "camera.image.white_balance.area";
  expect("dsp", "raw",
         {{"camera.iris=100", kOk, {"300200000000000000000000"}},
          {"camera.iris=0", kOk, {"300000000000000000000000"}},
          {"camera.iris=auto", kOk, {"300100000000000000000000"}},
          {"camera.iris=50", k457},
          {"camera.iris.lenstype=lens3", k457},
          {"camera.iris.lenstype=lens2", k405},  // the lens is built in
          {area + "=s1-s2-s1918-s1078", k202, {"42010002007e073604000000"}},
          {area, "=1-2-1918-1078&200 OK"},
          {area + "=25-50-50-100", k202, {"42df011b02bf033604000000"}},
          {area, "=479-539-959-1078&200 OK"},
          {area + "=50-50-50-60", k451},
          {area + "=0-0-101-100", k451},
          {area + "=middle", k451}});
  EXPECT_EQ(camera().ask("camera.iris"), "camera.iris" + std::string(k405));
  EXPECT_EQ(camera().ask("camera.iris", UserClass::kDebug), "camera.iris" + std::string(k501));
  camera().tell("dsp fail=0x30,0x42,0x39");
  EXPECT_EQ(camera().ask("camera.iris=0"), "camera.iris" + std::string(k500));
  EXPECT_EQ(camera().ask(area + "=0-0-1-1"), area + k500);
  EXPECT_EQ(camera().ask(area), area + "=479-539-959-1078" + kOk);
  EXPECT_EQ(camera().ask("camera.iris.lenstype=lens1"), "camera.iris.lenstype" + std::string(k500));
}

TEST_F(Sensor, Counters) {
  for (const auto& [path, index, below] : {std::tuple{"camera.image.true_daynight.ir_counter", "0", k457},
                                           {"camera.image.true_daynight.led_counter", "2", k456},
                                           {"camera.focus.run_counter", "1", k457}}) {
    const std::string leaf = path;
    expect("gpio", "a",
           {{leaf + "=4321", kOk, {index}},
            {leaf, "=4321&200 OK", {index}},
            {leaf + "=reset", kOk, {index}},
            {leaf, "=0&200 OK", {index}},
            {leaf + "=-1", below},
            {leaf + "=zero", k451}});
  }
}

TEST_F(Sensor, RegistersAndRawFrames) {
  const std::string root = "camera.internal.";
  expect("dsp", "raw",
         {{root + "deviceid=255", kOk, {"18ff00000000000000000000"}},
          {root + "deviceid=256", k457},
          {root + "deviceid=-1", k457},
          {root + "address=65535", kOk, {"19ffff000000000000000000"}},
          {root + "address=65536", k457},
          {root + "address=0x10", k451},
          {root + "data=4660", kOk, {"1a3412000000000000000000"}},
          {root + "data", "=4660&200 OK", {"1a3412000000000000000000"}},
          {"camera.scp_set=fe02", "=FE0200000000000000000000&200 OK", {"fe0200000000000000000000"}},
          {"camera.scp_get=FE", "=FE0200000000000000000000&200 OK", {"fe0200000000000000000000"}},
          {"camera.scp_get=fe", "=FE0200000000000000000000&200 OK", {"fe0200000000000000000000"}},
          {"camera.scp_set=fe" + std::string(22, '7') + "88",
           "=FE7777777777777777777777&200 OK",
           {"fe7777777777777777777777"}},
          {"camera.scp_set=feg", k500},
          {"camera.scp_get=FEE", k457},
          {"camera.scp_get=F", k457}});
  EXPECT_EQ(camera().ask(root + "deviceid", UserClass::kDebug), root + "deviceid=255&200 OK");
  EXPECT_EQ(camera().ask(root + "address", UserClass::kDebug), root + "address=65535&200 OK");
  EXPECT_EQ(camera().ask("camera.scp_get"), "camera.scp_get" + std::string(k457));
  camera().tell("dsp fail=0x18,0x1a,0xfe");
  for (const std::string request : {"camera.internal.deviceid=1", "camera.internal.data", "camera.internal.data=1",
                                    "camera.scp_set=fe01", "camera.scp_get=fe"})
    EXPECT_EQ(camera().ask(request), pathOf(request) + k500) << request;
}

/** Every readable leaf of the camera has a read side, and every other one a write side that looks at its value. */
TEST_F(Sensor, NoLeafOfTheCameraIsMissing) {
  std::ifstream catalogue(std::string(TMX_TEST_DATA) + "/catalogue.txt");
  size_t leaves = 0;
  for (std::string path, permission, type; std::getline(catalogue, path, '\t') &&
                                           std::getline(catalogue, permission, '\t') &&
                                           std::getline(catalogue, type);) {
    if (!path.starts_with("camera.") || permission.find('R') == std::string::npos) continue;
    ++leaves;
    const size_t detection = path.find("detection.temporal");
    if (detection != std::string::npos) path.insert(path.find(".temporal"), "(tampering)");
    const std::string answer = camera().ask(path);
    EXPECT_EQ(answer.find("501"), std::string::npos) << answer;
  }
  EXPECT_GT(leaves, 150U);
}

}  // namespace
}  // namespace test
