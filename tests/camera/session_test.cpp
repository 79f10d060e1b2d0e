// Live data of the streams, one by one and in the one answer of many lines.

#include <sstream>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

class Sessions : public CameraTest {
 protected:
  void SetUp() override {
    CameraTest::SetUp();
    for (const char* words :
         {"session up", "session clear", "session add jpeg 4000 udp ip=192.168.0.7 port=4000 fps=15 encode=0",
          "session add h264high 900 rtp ip=192.168.0.8 port=5000 fps=30 session=http encode=1",
          "session add aac 64 udp ip=192.168.0.9 port=6000 fps=8 encode=2",
          "session add aac 64 tcp session=http fps=9 encode=x",
          "session receive g711 128 udp ip=192.168.0.5 port=7000 session=talk channel=1"}) {
      camera().tell(words);
    }
  }

  static void expectItems(std::initializer_list<std::pair<const char*, const char*>> items) {
    for (const auto& [path, answer] : items) {
      EXPECT_EQ(camera().ask(std::string("system.session.") + path), std::string("system.session.") + path + answer);
    }
  }

  static std::vector<std::string> listing(Camera& from, LineEnd lineEnd = LineEnd::kPlain) {
    std::istringstream text(from.ask("system.session", UserClass::kUser, lineEnd));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
      lines.push_back(line.substr(0, line.find('\r')));
    }
    return lines;
  }
};

TEST_F(Sessions, EveryItemIsTheDaemonsText) {
  expectItems({
      {"total_bitrate", "=5028k&200 OK"},
      {"sending_count", "=4&200 OK"},
      {"sending_max", "=22&200 OK"},
      {"receiving_count", "=1&200 OK"},
      {"receiving_max", "=1&200 OK"},
      {"sending.bitrate", "=4000k&200 OK"},
      {"sending(2).bitrate", "=900k&200 OK"},
      {"sending(22).bitrate", "=0k&200 OK"},
      {"sending(23).bitrate", k456},
      {"sending(2).to.ip", "=192.168.0.8&200 OK"},
      {"sending(2).to.port", "=5000&200 OK"},
      {"sending(2).to.protocol", "=rtp&200 OK"},
      {"sending(2).to.session", "=http&200 OK"},
      {"sending(2).from.encode", "=h264high&200 OK"},
      {"sending(1).from.framerate", "=15&200 OK"},
      {"sending(3).from.framerate", "=&200 OK"},  // no video
      {"sending(4).from.framerate", "=9&200 OK"},
      {"sending(1).from.framesize", "=1920x1080&200 OK"},
      {"sending(2).from.framesize", "=1280x720&200 OK"},
      {"sending(4).from.framesize", k456},
      {"receiving.bitrate", "=128k&200 OK"},
      {"receiving(1).from.ip", "=192.168.0.5&200 OK"},
      {"receiving(1).from.port", "=7000&200 OK"},
      {"receiving(1).from.protocol", "=udp&200 OK"},
      {"receiving(1).from.session", "=talk&200 OK"},
      {"receiving(1).to.decode", "=g711&200 OK"},
      {"receiving(2).bitrate", k456},
  });
  EXPECT_EQ(camera().ask("system.session=1"), "system.session&458 Parameter Is Read Only");
}

TEST_F(Sessions, TheListingHasEverySlot) {
  const std::vector<std::string> lines = listing(camera());
  ASSERT_EQ(lines.size(), 6U + 22 * 6 + 2 * 2 + 7);
  const std::vector<std::string> beginning = {
      "system.session=&200 OK",
      "system.session.total_bitrate=5028k&200 OK",
      "system.session.sending_count=4&200 OK",
      "system.session.sending_max=22&200 OK",
      "system.session.receiving_count=1&200 OK",
      "system.session.receiving_max=1&200 OK",
      "system.session.sending(1).bitrate=4000k&200 OK",
      "system.session.sending(1).to.ip=192.168.0.7&200 OK",
      "system.session.sending(1).to.port=4000&200 OK",
      "system.session.sending(1).to.protocol=udp&200 OK",
      "system.session.sending(1).to.session=rtsp&200 OK",
      "system.session.sending(1).from.encode=jpeg&200 OK",
      "system.session.sending(1).from.framerate=15&200 OK",
      "system.session.sending(1).from.framesize=1920x1080&200 OK",
      "system.session.sending(2).bitrate=900k&200 OK",
  };
  EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 15), beginning);
  const std::vector<std::string> end = {
      "system.session.sending(22).from.encode=-&200 OK",        "system.session.receiving(1).bitrate=128k&200 OK",
      "system.session.receiving(1).from.ip=192.168.0.5&200 OK", "system.session.receiving(1).from.port=7000&200 OK",
      "system.session.receiving(1).from.protocol=udp&200 OK",   "system.session.receiving(1).from.session=talk&200 OK",
      "system.session.receiving(1).to.decode=g711&200 OK",      "system.session.receiving(1).to.channel=1&200 OK",
  };
  EXPECT_EQ(std::vector<std::string>(lines.end() - 8, lines.end()), end);
}

TEST_F(Sessions, TheListingHasTheCallersLineEnds) {
  const std::vector<std::string> lines = listing(camera(), LineEnd::kHtml);
  ASSERT_EQ(lines.size(), 6U + 22 * 6 + 2 * 2 + 7);
  for (size_t i = 0; i + 1 < lines.size(); ++i) {
    EXPECT_TRUE(lines[i].ends_with("&200 OK<BR>")) << lines[i];
  }
}

TEST_F(Sessions, TheListingHasItsLinesWithoutTheDaemon) {
  camera().tell("session down");
  const std::vector<std::string> lines = listing(camera());
  ASSERT_EQ(lines.size(), 6U + 22 * 6 + 7);
  EXPECT_EQ(lines[1], "system.session.total_bitrate=&200 OK");
  EXPECT_EQ(lines.back(), "system.session.receiving(1).to.channel=&200 OK");
}

TEST_F(Sessions, OneModelListsNoCountsOfReceiving) {
  Camera other({.model = "KT-B500"});
  ASSERT_TRUE(other.up());
  const std::vector<std::string> lines = listing(other);
  ASSERT_EQ(lines.size(), 4U + 22 * 6 + 7);
  EXPECT_EQ(lines[3], "system.session.sending_max=22&200 OK");
  EXPECT_EQ(lines[4], "system.session.sending(1).bitrate=0k&200 OK");
  EXPECT_EQ(lines[136], "system.session.receiving(1).bitrate=0k&200 OK");
}

}  // namespace
}  // namespace test
