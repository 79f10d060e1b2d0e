// What the camera is, what it logged, and its restart and factory reset.

#include <regex>
#include <thread>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

class Identity : public CameraTest {};

TEST_F(Identity, TheGuidIsMadeOnceAndKept) {
  const std::regex form("system\\.guid=[0-9a-f-]{36}&200 OK");
  const std::string first = camera().ask("system.guid");
  EXPECT_TRUE(std::regex_match(first, form)) << first;
  EXPECT_EQ(camera().ask("system.guid"), first);
  camera().write("sysinfo/uuid", "");
  const std::string second = camera().ask("system.guid");
  EXPECT_TRUE(std::regex_match(second, form)) << second;
  EXPECT_NE(second, first);
}

TEST_F(Identity, TextsAndClocks) {
  expectAnswers(camera(), {{"system.hardware.cpu.clock", shows("594")},
                           {"system.hardware.ddr.clock", shows("400")},
                           {"system._00c0de_ozm_mac", shows("00-C0-DE-11-11-11")},
                           {"system._00c0de_ozm_mac=00-11-22-33-44-55", "&202 Accepted(system.status=restart)"},
                           {"system._00c0de_ozm_mac", shows("00-C0-DE-11-11-11")}});
  const Texts children = camera().journal("child");
  ASSERT_FALSE(children.empty());
  EXPECT_NE(children.back().find("00-11-22-33-44-55"), std::string::npos) << children.back();
  const std::string model = camera().read("flash/model");
  for (const auto& [content, shown] : {std::pair<std::string, std::string>{"KT-X 1\n", "KT-X"},
                                       {" \tA\nB", "A"},
                                       {"", ""},
                                       {std::string(100, 'x'), std::string(31, 'x')},
                                       {model, "KT-A10"}}) {
    camera().write("flash/model", content);
    expectAnswers(camera(), {{"system.model", shows(shown)}});
  }
  std::filesystem::remove(camera().path("flash/model"));
  expectEach(camera(), "", {"system.model"}, k500);
  camera().write("flash/model", model);
}

TEST_F(Identity, UtilizationIsANumber) {
  camera().ask("system.hardware.cpu.utilization");
  const std::string answer = camera().ask("system.hardware.cpu.utilization");
  double percent = -1;
  ASSERT_EQ(std::sscanf(answer.c_str(), "system.hardware.cpu.utilization=%lf&200 OK", &percent), 1) << answer;
  EXPECT_GE(percent, 0);
  EXPECT_LE(percent, 100.0 * std::thread::hardware_concurrency() * 1.5);
}

TEST_F(Identity, LogLevel) {
  expectAnswers(camera(), {{"system.loglevel", shows("LOG_INFO")},
                           {"system.loglevel=LOG_DEBUG", kOk},
                           {"system.loglevel", shows("LOG_DEBUG")}});
  EXPECT_TRUE(camera().isLogged("RecvMessage[msg(0:1:system.loglevel)]"));
  expectAnswers(camera(), {{"system.loglevel=foo", kOk}, {"system.loglevel", shows("LOG_INFO")}});
  camera().ask("system.software.revision");
  expectAnswers(camera(), {{"system.loglevel=LOG_NOTICE", kOk}});
  ASSERT_TRUE(camera().isLogged("logmask(5):"));  // all earlier lines have arrived, too
  EXPECT_EQ(camera().log().find("RecvMessage[msg(0:1:system.software.revision)]"), std::string::npos);
}

TEST_F(Identity, LogShowsUptimeAndTheLastEvents) {
  // Detect lines of the event manager count, the last 80 of both files; others do not.
  ASSERT_EQ(camera().exec({"/bin/sh", "-c",
                           "for i in $(seq 90); do echo evman Detect old $i; done > /var/log/messages.0; "
                           "echo other Detect >> /var/log/messages.0; echo evman nothing >> /var/log/messages.0"}),
            0);
  const std::string plain = camera().ask("system.log");
  EXPECT_TRUE(std::regex_search(plain, std::regex("^system\\.log=&200 OK\r\nsystem alive time: [0-9.]+sec\r\n")))
      << plain;
  EXPECT_EQ(plain.find("old 10\r\n"), std::string::npos);
  EXPECT_NE(plain.find("old 11\r\n"), std::string::npos);
  EXPECT_TRUE(plain.ends_with("evman Detect old 90")) << plain;
  const std::string html = camera().ask("system.log", UserClass::kAdmin, LineEnd::kHtml);
  EXPECT_EQ(html.find("system.log=&200 OK<BR>\r\nsystem alive time: "), 0U);
  EXPECT_TRUE(html.ends_with("evman Detect old 90"));

  camera().exec({"/bin/sh", "-c", "rm /var/log/messages.0"});
  EXPECT_TRUE(std::regex_match(camera().ask("system.log"),
                               std::regex("system\\.log=&200 OK\r\nsystem alive time: [0-9.]+sec")));
}

bool answersAgain(Camera& camera, const std::string& request, const std::string& answer) {
  return eventually([&] { return camera.ask(request) == answer; });
}

TEST_F(Identity, RestartComesBehindTheAnswer) {
  EXPECT_EQ(camera().ask("system.status=restart&ui.encode(1).cbr_mode(jpeg)=vbr&system.status"),
            "system.status&200 OK\r\nui.encode(1).cbr_mode(jpeg)&200 OK\r\nsystem.status&405 Method Not Allowed");
  EXPECT_TRUE(answersAgain(camera(), "ui.encode(1).cbr_mode(jpeg)&system.loglevel",
                           "ui.encode(1).cbr_mode(jpeg)=vbr&200 OK\r\nsystem.loglevel=LOG_INFO&200 OK"));
}

TEST_F(Identity, InitializeBringsBackTheFactoryState) {
  expectAnswers(camera(), {{"ui.encode(1).cbr_mode(jpeg)=vbr", kOk}, {"system.status=initialize", kOk}});
  EXPECT_TRUE(answersAgain(camera(), "ui.encode(1).cbr_mode(jpeg)", "ui.encode(1).cbr_mode(jpeg)=afs&200 OK"));
  EXPECT_EQ(camera().read("flash/sysconfig/ui.conf"), camera().read("factory/sysconfig/ui.conf"));
}

}  // namespace
}  // namespace test
