// The request path as a client sees it: frames, items, limits, rights, aliases and malformed input.

#include <chrono>
#include <random>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

class Requests : public CameraTest {};

/** A frame with header bytes of our choice. */
std::string frame(uint32_t length, char user, char content, std::string_view text) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>(length >> shift & 0xFF);
  }
  return bytes + user + content + std::string(text);
}

std::string frame(char user, char content, std::string_view text) {
  return frame(static_cast<uint32_t>(text.size() + 2), user, content, text);
}

constexpr const char* kModel = "system.model=KT-A10&200 OK";

TEST_F(Requests, AnswerItemsInTheirOrder) {
  expectAnswers(camera(),
                {
                    {"system.model", kModel},
                    {"system.model=", kModel},
                    {"&&system.model&&system.model&", "system.model=KT-A10&200 OK\r\nsystem.model=KT-A10&200 OK"},
                    {"foo&system.model", "foo&461 Command Not Found\r\nsystem.model=KT-A10&200 OK"},
                    {"=x&system.model", "&461 Command Not Found\r\nsystem.model=KT-A10&200 OK"},
                    {"system.guid=a=b", "system.guid&458 Parameter Is Read Only"},
                });
  EXPECT_EQ(camera().ask("system.model&nothing", UserClass::kAdmin, LineEnd::kHtml),
            "system.model=KT-A10&200 OK<BR>\r\nnothing&461 Command Not Found");
}

TEST_F(Requests, MalformedPathsAreUnknown) {
  for (const char* path : {"system",
                           "system.",
                           ".model",
                           "system..model",
                           "system.model.",
                           "system.model()",
                           "system.model(1",
                           "system.model(1)x",
                           "system()",
                           "system(1)x.model",
                           "system.model.x",
                           "system.password",
                           "system.mode",
                           "system.modell",
                           "camera.scene(1)x.status",
                           "(1)",
                           "onvif",
                           "onvif.",
                           "onvif.onvif.system.model",
                           "&",
                           "%00"}) {
    const std::string answer = camera().ask(path);
    if (std::string_view(path) == "&") {
      EXPECT_EQ(answer, "<closed>");
    } else {
      EXPECT_EQ(answer, std::string(path) + "&461 Command Not Found");
    }
  }
}

TEST_F(Requests, SelectorsAreAcceptedWhereNobodyAsks) {
  expectAnswers(camera(), {{"system(7).model(x)", "system(7).model(x)=KT-A10&200 OK"},
                           {"onvif.system.model", "onvif.system.model=KT-A10&200 OK"},
                           {"onvif.system.model=x", "onvif.system.model&458 Parameter Is Read Only"},
                           {"ui.encode(1).cbr_mode(mpeg4)", "ui.encode(1).cbr_mode(mpeg4)=cbr&200 OK"}});
}

TEST_F(Requests, FifteenItemsRunSixteenDoNot) {
  const auto items = [](int count) {
    std::string text = "ui.encode(2).cbr_mode(jpeg)=vbr";
    for (int i = 1; i < count; ++i) {
      text += "&system.model";
    }
    return text;
  };
  std::string fifteen = "ui.encode(2).cbr_mode(jpeg)&200 OK";
  std::string refused = "ui.encode(2).cbr_mode(jpeg)&405 Method Not Allowed";
  for (int i = 1; i < 15; ++i) {
    fifteen += "\r\nsystem.model=KT-A10&200 OK";
    refused += "\r\nsystem.model&405 Method Not Allowed";
  }
  EXPECT_EQ(camera().ask(items(16)), refused);
  EXPECT_EQ(camera().ask("ui.encode(2).cbr_mode(jpeg)"), "ui.encode(2).cbr_mode(jpeg)=afs&200 OK");
  EXPECT_EQ(camera().ask(items(15)), fifteen);
  EXPECT_EQ(camera().ask("ui.encode(2).cbr_mode(jpeg)"), "ui.encode(2).cbr_mode(jpeg)=vbr&200 OK");
}

TEST_F(Requests, EveryFrameLength) {
  for (uint32_t length : {0U, 1U, 2U, 1027U, 1028U, 4096U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(camera().askRaw(frame(length, 0, 1, std::string(1100, 'a'))), "<closed>") << length;
  }
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
  for (size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(camera().askRaw(whole.substr(0, length)), "<closed>") << length;
  }
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
    for (char& byte : text) {
      byte = static_cast<char>(1 + random() % 255);
    }
    camera().askRaw(frame(static_cast<char>(random() % 5), static_cast<char>(random() % 2), text));
  }
  EXPECT_EQ(camera().ask("system.model"), kModel);
}

TEST_F(Requests, RightsOfTheFiveClasses) {
  struct Case {
    const char* request;
    const char* answers[5];  // administrator, operator, user, ONVIF user, debug user; behind the path
  };
  const Case cases[] = {
      {"system.model=x", {k458, k458, k458, k501, k501}},
      {"system.status", {k405, k405, k405, k501, k501}},
      {"system.status=reset", {k451, k401, k401, k451, k451}},
      {"system.loglevel", {"=LOG_INFO&200 OK", k401, k401, "=LOG_INFO&200 OK", "=LOG_INFO&200 OK"}},
      {"system.loglevel=LOG_INFO", {kOk, k401, k401, kOk, kOk}},
      {"system.hardware.cpu.clock=1", {k458, k458, k458, k501, k501}},
      {"ui.encode.cbr_mode(jpeg)=afs", {kOk, kOk, k401, kOk, kOk}},
      {"onvif.system.daylightsaving=maybe", {k401, k401, k401, nullptr, nullptr}},
  };
  for (const Case& item : cases) {
    for (int user = 0; user < 5; ++user) {
      if (item.answers[user] == nullptr) continue;
      const std::string request = item.request;
      EXPECT_EQ(camera().ask(request, static_cast<UserClass>(user)),
                request.substr(0, request.find('=')) + item.answers[user])
          << request << " as " << user;
    }
  }
}

TEST_F(Requests, NothingIsLeftBehind) {
  const auto descriptors = [this] {
    EXPECT_EQ(camera().exec({"/bin/sh", "-c", "ls /proc/$(cat /var/run/tmxd.pid)/fd | wc -l > /tmp/fds"}), 0);
    return camera().read("tmp/fds");
  };
  camera().ask("system.model&system.guid&system.log");
  const std::string before = descriptors();
  for (int round = 0; round < 50; ++round) {
    camera().ask("system.model&system.guid&system.log&nothing&ui.encode(1).cbr_mode(jpeg)=afs");
  }
  EXPECT_EQ(descriptors(), before);
  EXPECT_NE(camera().exec({"/bin/sh", "-c", "ps -A -o stat | grep -q Z"}), 0);  // no zombie
}

}  // namespace
}  // namespace test
