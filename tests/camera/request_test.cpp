// The request path as a client sees it: frames, items, limits, rights, aliases and malformed input.

#include <chrono>
#include <random>
#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

class Requests : public CameraTest {};

/** A frame with header bytes of our choice. */
std::string frame(uint32_t length, char user, char content, std::string_view text) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8)
    bytes += static_cast<char>(length >> shift & 0xFF);
  return bytes + user + content + std::string(text);
}

std::string frame(char user, char content, std::string_view text) {
  return frame(static_cast<uint32_t>(text.size() + 2), user, content, text);
}

constexpr const char* kModel = "system.model=KT-A10&200 OK";

TEST_F(Requests, AnswerItemsInTheirOrder) {
  const std::string model = kModel;
  expectAnswers(camera(), {{"system.model", model},
                           {"system.model=", model},
                           {"&&system.model&&system.model&", model + "\r\n" + model},
                           {"foo&system.model", "foo&461 Command Not Found\r\n" + model},
                           {"system.guid=a=b", k458},
                           // selectors where nobody asks, and aliases
                           {"system(7).model(x)", shows("KT-A10")},
                           {"onvif.system.model", shows("KT-A10")},
                           {"onvif.system.model=x", k458},
                           {"ui.encode(1).cbr_mode(mpeg4)", shows("cbr")}});
  EXPECT_EQ(camera().ask("=x&system.model"), "&461 Command Not Found\r\n" + model);
  EXPECT_EQ(camera().ask("system.model&nothing", UserClass::kAdmin, LineEnd::kHtml),
            model + "<BR>\r\nnothing&461 Command Not Found");
}

TEST_F(Requests, MalformedPathsAreUnknown) {
  std::istringstream paths(
      "system system. .model system..model system.model. system.model() system.model(1 system.model(1)x system() "
      "system(1)x.model system.model.x system.password system.mode system.modell camera.scene(1)x.status (1) onvif "
      "onvif. onvif.onvif.system.model %00");
  for (std::string path; paths >> path;)
    expectAnswers(camera(), {{path, k461}});
  EXPECT_EQ(camera().ask("&"), "<closed>");
}

TEST_F(Requests, FifteenItemsRunSixteenDoNot) {
  std::string request = "ui.encode(2).cbr_mode(jpeg)=vbr";
  std::string taken = "ui.encode(2).cbr_mode(jpeg)&200 OK";
  std::string refused = std::string("ui.encode(2).cbr_mode(jpeg)") + k405;
  for (int i = 1; i < 15; ++i) {
    request += "&system.model";
    taken += std::string("\r\n") + kModel;
    refused += std::string("\r\nsystem.model") + k405;
  }
  EXPECT_EQ(camera().ask(request + "&system.model"), refused);
  expectAnswers(camera(), {{"ui.encode(2).cbr_mode(jpeg)", shows("afs")}});
  EXPECT_EQ(camera().ask(request), taken);
  expectAnswers(camera(), {{"ui.encode(2).cbr_mode(jpeg)", shows("vbr")}});
}

TEST_F(Requests, EveryFrameLength) {
  for (uint32_t length : {0U, 1U, 2U, 1027U, 1028U, 4096U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU})
    EXPECT_EQ(camera().askRaw(frame(length, 0, 1, std::string(1100, 'a'))), "<closed>") << length;
  for (size_t length = 3; length <= 1026; ++length) {
    const std::string path(length - 2, 'a');
    EXPECT_EQ(camera().askRaw(frame(0, 1, path)), path + "&461 Command Not Found") << length;
  }
}

TEST_F(Requests, EveryHeaderByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const auto value = static_cast<char>(byte);
    EXPECT_EQ(camera().askRaw(frame(value, 1, "system.model")), byte <= 4 ? kModel : "<closed>") << byte;
    EXPECT_EQ(camera().askRaw(frame(0, value, "system.model")), byte <= 1 ? kModel : "<closed>") << byte;
  }
}

TEST_F(Requests, TheTextEndsAtItsFirstNul) {
  EXPECT_EQ(camera().askRaw(frame(0, 1, std::string_view("system.model\0.x&foo", 19))), kModel);
}

TEST_F(Requests, CutFramesGetNoAnswer) {
  const std::string whole = frame(0, 1, "system.model");
  for (size_t length = 0; length < whole.size(); ++length)
    EXPECT_EQ(camera().askRaw(whole.substr(0, length)), "<closed>") << length;
  EXPECT_EQ(camera().ask("system.model"), kModel);
}

TEST_F(Requests, AClientThatLeavesBeforeItsAnswerHarmsNothing) {
  const tmx::Client hasty(camera().path("tmp/request"), std::chrono::milliseconds(5));
  for (int round = 0; round < 3; ++round) {
    const tmx::Reply reply = hasty.exchange(UserClass::kAdmin, LineEnd::kPlain, "system.hardware.cpu.utilization");
    EXPECT_EQ(reply.outcome, tmx::Outcome::kTimedOut);
    EXPECT_EQ(camera().ask("system.model"), kModel);
  }
}

TEST_F(Requests, RandomBytesHarmNothing) {
  std::mt19937 random(20);
  for (int round = 0; round < 400; ++round) {
    std::string text(1 + random() % 200, '\0');
    for (char& byte : text)
      byte = static_cast<char>(1 + random() % 255);
    camera().askRaw(frame(static_cast<char>(random() % 5), static_cast<char>(random() % 2), text));
  }
  EXPECT_EQ(camera().ask("system.model"), kModel);
}

TEST_F(Requests, RightsOfTheFiveClasses) {
  const struct {
    const char* request;
    std::vector<std::string> answers;  // administrator, operator, user, ONVIF user, debug user
  } cases[] = {
      {"system.model=x", {k458, k458, k458, k501, k501}},
      {"system.status", {k405, k405, k405, k501, k501}},
      {"system.status=reset", {k451, k401, k401, k451, k451}},
      {"system.loglevel", {shows("LOG_INFO"), k401, k401, shows("LOG_INFO"), shows("LOG_INFO")}},
      {"system.loglevel=LOG_INFO", {kOk, k401, k401, kOk, kOk}},
      {"ui.encode.cbr_mode(jpeg)=afs", {kOk, kOk, k401, kOk, kOk}},
      {"onvif.system.daylightsaving=maybe", {k401, k401, k401}},
  };
  for (const auto& [request, answers] : cases)
    for (size_t user = 0; user < answers.size(); ++user)
      expectAnswers(camera(), {{request, answers[user], static_cast<UserClass>(user)}});
}

TEST_F(Requests, NothingIsLeftBehind) {
  const auto descriptors = [this] {
    EXPECT_EQ(camera().exec({"/bin/sh", "-c", "ls /proc/$(cat /var/run/tmxd.pid)/fd | wc -l > /tmp/fds"}), 0);
    return camera().read("tmp/fds");
  };
  camera().ask("system.model&system.guid&system.log");
  const std::string before = descriptors();
  for (int round = 0; round < 50; ++round)
    camera().ask("system.model&system.guid&system.log&nothing&ui.encode(1).cbr_mode(jpeg)=afs");
  EXPECT_EQ(descriptors(), before);
  EXPECT_NE(camera().exec({"/bin/sh", "-c", "ps -A -o stat | grep -q Z"}), 0);  // no zombie
}

}  // namespace
}  // namespace test
