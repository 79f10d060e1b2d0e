// What the camera is called, its lamps, the searches for defects, the iris, counters, and raw access to the DSP.

#include <tuple>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

const std::string k202 = "&202 Accepted(camera.status=save)";

class Sensor : public CameraTest {
 protected:
  void TearDown() override {
    for (const char* words : {"dsp clear", "defect up", "gpio up", "recorder up"})
      camera().tell(words);
  }
  /** What reached `who` meanwhile: `key` of its lines. */
  static void expect(std::string_view who, std::string_view key, const std::vector<Step>& cases) {
    const auto told = [=] {
      if (who == "gpio") camera().tell("gpio show");
      return camera().journalFields(who, key);
    };
    expectSteps(camera(), "", cases, told);
  }
};

TEST_F(Sensor, NameAndLamps) {
  const std::string forty(40, 'x');
  expect("library", "value",
         {{"camera.id=Gate 2", k202, {"Gate 2"}},
          {"camera.comment", shows("Gate 2")},
          {"camera.id=%22a%25b%26%22+c", k202, {"\"a%b&\" c"}},
          {"camera.id", shows("%22a%25b%26%22 c")},
          {"camera.id=%41" + forty.substr(1), k202, {"A" + forty.substr(1)}},
          {"camera.id=%41" + forty, k451},
          {"camera.id=two%0Alines", k451},
          {"camera.id=%00", k202, {""}}});
  camera().tell("dsp fail=zr_set_camera_id");
  expect("library", "value", {{"camera.id=new", k500, {"new"}}, {"camera.id", shows("")}});
  expect("recorder", "arg",
         {{"camera.stealth=on", k202, {"0"}},
          {"camera.stealth=on", k202, {"0"}},
          {"camera.stealth=off", k202, {"1"}},
          {"camera.identify=on", k202, {"2"}},
          {"camera.identify=off", k202, {"3"}}});
  camera().tell("recorder down");
  expectEach(camera(), "", {"camera.stealth=on", "camera.identify=on"}, k500);
  expectEach(camera(), "", {"camera.stealth", "camera.identify"}, shows("off"));
}

TEST_F(Sensor, StaticDefects) {
  const std::string root = "camera.defect_detect.static.";
  const std::string adjust = root + "adjust";
  const std::string detail = root + "adjust_detail";
  const Texts look{"static_status"};
  camera().tell("defect run=60000000 static_count=7 static_error=3");
  expect("defect", "what",
         {{adjust, k412},
          {detail, k412},
          {adjust + "=start", k412},
          {root + "status=off", kOk},
          {root + "status=on", k202},
          {root + "status=on", kOk},
          {adjust, shows("completed"), look},
          {detail, shows("completed(7)"), look},
          {adjust + "=pause", kOk, look},
          {adjust + "=start", kOk, {"static_start"}},
          {adjust + "=start", kOk, {"static_start"}},
          {adjust, shows("adjusting"), look},
          {detail, shows("adjusting"), look},
          {adjust + "=pause", kOk, {"static_status", "static_stop"}}});
  camera().tell("defect static=error");
  expect("defect", "what", {{adjust, shows("error"), look}, {detail, shows("error(3)"), look}});
  camera().tell("defect garbage");
  expectAnswers(camera(), {{adjust, shows("error")}, {adjust + "=start", k500}});
  camera().tell("defect refuse for=static_stop");
  camera().tell("defect static=adjusting");
  expectAnswers(camera(), {{adjust + "=stop", k500}});
  for (const char* fault : {"down", "short", "early"}) {
    camera().tell(std::string("defect ") + fault);
    expectAnswers(camera(), {{adjust, shows("")}, {detail, shows("error")}});
    expectEach(camera(), "", {adjust + "=start", adjust + "=stop"}, k500);
  }
  for (const char* word : {"off", "on"}) {
    expectAnswers(camera(), {{root + "status=" + word, k202}, {"camera.status=save", kOk}});
    expectRows(camera(), "flash/sysconfig/camera.conf", {"DEFECT_DETECT=" + std::string(word)});
  }
  camera().setRow("flash/sysconfig/camera.conf", "DEFECT_DETECT", "auto");
  ASSERT_TRUE(camera().reboot());
  expect("defect", "what", {{adjust, shows("error")}, {detail, shows("error")}, {adjust + "=start", k412}});
  expectEach(camera(), "", {"camera.defect_detect.dynamic.status=on"}, k461);
}

TEST_F(Sensor, FixedPattern) {
  const std::string path = "camera.fpn.adjust";
  camera().tell("defect run=60000000 fpn_count=300");
  expect("defect", "what",
         {{"camera.fpn.num", shows("300"), {"fpn_count"}},
          {path, shows("completed"), {"fpn_status"}},
          {path + "_detail", shows("completed(255)"), {"fpn_status"}},
          {path + "=stop", kOk, {"fpn_status"}},
          {path + "=start", kOk, {"fpn_status", "fpn_start"}},
          {path + "=start", kOk, {"fpn_status"}},
          {path + "_detail", shows("adjusting"), {"fpn_status"}},
          {path + "=stop", kOk, {"fpn_status", "fpn_stop"}}});
  camera().tell("defect refuse for=fpn_start");
  expectEach(camera(), "", {path + "=start"}, k500);
  camera().tell("defect down");
  expectEach(camera(), "", {"camera.fpn.num", path + "=start", path + "=stop"}, k500);
}

TEST_F(Sensor, IrisAndWhiteBalanceArea) {
  const std::string area = "camera.image.white_balance.area";
  expect("dsp", "raw",
         {{"camera.iris=100", kOk, {"300200000000000000000000"}},
          {"camera.iris=0", kOk, {"300000000000000000000000"}},
          {"camera.iris=auto", kOk, {"300100000000000000000000"}},
          {"camera.iris.lenstype=lens2", k405},  // the lens is built in
          {area + "=s1-s2-s1918-s1078", k202, {"42010002007e073604000000"}},
          {area, shows("1-2-1918-1078")},
          {area + "=25-50-50-100", k202, {"42df011b02bf033604000000"}},
          {area + "=50-50-50-60", k451}});
  camera().tell("dsp fail=0x30,0x42,0x39");
  expectEach(camera(), "", {"camera.iris=0", area + "=0-0-1-1", "camera.iris.lenstype=lens1"}, k500);
  expectAnswers(camera(), {{area, shows("479-539-959-1078")}});
}

TEST_F(Sensor, Counters) {
  for (const auto& [leaf, index, below] :
       {std::tuple<std::string, std::string, const char*>{"camera.image.true_daynight.ir_counter", "0", k457},
        {"camera.image.true_daynight.led_counter", "2", k456},
        {"camera.focus.run_counter", "1", k457}}) {
    expect("gpio", "a",
           {{leaf + "=4321", kOk, {index}},
            {leaf, shows("4321"), {index}},
            {leaf + "=reset", kOk, {index}},
            {leaf, shows("0"), {index}},
            {leaf + "=-1", below}});
    camera().tell("gpio down");
    expectEach(camera(), "", {leaf, leaf + "=1", leaf + "=reset"}, k500);
    camera().tell("gpio up");
    camera().tell("gpio refuse");
    expectEach(camera(), "", {leaf}, k500);  // an answer counts only with its acknowledgement
    camera().tell("gpio up");
  }
}

TEST_F(Sensor, RegistersAndRawFrames) {
  const std::string root = "camera.internal.";
  const Texts sensor{"fe0200000000000000000000"};
  expect("dsp", "raw",
         {{root + "deviceid=255", kOk, {"18ff00000000000000000000"}},
          {root + "address=65535", kOk, {"19ffff000000000000000000"}},
          {root + "data=4660", kOk, {"1a3412000000000000000000"}},
          {root + "data", shows("4660"), {"1a3412000000000000000000"}},
          {"camera.scp_set=fe02", shows("FE0200000000000000000000"), sensor},
          {"camera.scp_get=FE", shows("FE0200000000000000000000"), sensor},
          {"camera.scp_set=fe" + std::string(22, '7') + "88",
           shows("FE7777777777777777777777"),
           {"fe7777777777777777777777"}},
          {"camera.scp_set=feg", k500},
          {"camera.scp_get=FEE", k457}});
  for (const auto& [leaf, shown] : {std::pair{"deviceid", "255"}, {"address", "65535"}})
    expectAnswers(camera(), {{root + leaf, shows(shown), UserClass::kDebug}});
  expectEach(camera(), "", {"camera.scp_get"}, k457);
  camera().tell("dsp fail=0x18,0x1a,0xfe");
  expectEach(camera(), "",
             {root + "deviceid=1", root + "data", root + "data=1", "camera.scp_set=fe01", "camera.scp_get=fe"}, k500);
}

}  // namespace
}  // namespace test
