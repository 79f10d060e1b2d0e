// Pan, tilt, zoom, the return, the patrol and the preset positions: what is refused, what reaches the sequencer and
// what is kept.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <thread>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

/** A request, its answer behind the path, and the texts that the sequencer got meanwhile. */
struct Case {
  std::string request;
  std::string answer;
  Texts sent;
};

class Motion : public CameraTest {
 protected:
  void TearDown() override { camera().tell("ptz up"); }

  static void expect(const std::vector<Case>& cases) {
    for (const Case& item : cases) {
      camera().clearJournal();
      const std::string path = item.request.substr(0, item.request.find('='));
      EXPECT_EQ(camera().ask(item.request), path + item.answer) << item.request;
      EXPECT_EQ(camera().journalFields("ptzseq", "text"), item.sent) << item.request;
    }
  }

  /** Cases from one view of the camera, which is set anew for each. */
  static void expectFrom(const std::string& view, const std::vector<Case>& cases) {
    for (const Case& item : cases) {
      camera().tell("ptz " + view);
      expect({item});
    }
  }

  static std::string position(int number, const std::string& key) {
    return camera().row("flash/sysconfig/position/" + std::to_string(number) + ".conf", key);
  }
  static std::string patrol(const std::string& key) { return camera().row("flash/sysconfig/patrol/0.conf", key); }
};

TEST_F(Motion, SteadyMovesGoToTheSequencer) {
  struct Axis {
    std::string path;
    std::string forward;
    std::string backward;
    std::string noSpeed;  ///< the answer to a speed that is no number
  };
  for (const Axis& axis : {Axis{"camera.motion.pan", "right", "left", k451},
                           {"camera.motion.tilt", "down", "up", k457},
                           {"camera.motion.zoom", "in", "out", k451}}) {
    const std::string& path = axis.path;
    for (const std::string& accepted :
         {path + ".status=start", path + ".status=stop", path + ".mode=" + axis.forward,
          path + ".mode=" + axis.backward, path + ".speed=0", path + ".speed=100", path + ".speed=50"}) {
      expect({{accepted, kOk, {accepted}}});
    }
    expect({{path + ".status", "=stop&200 OK", {path + ".status"}},
            {path + ".mode", "=" + axis.backward + kOk, {path + ".mode"}},
            {path + ".speed", "=50&200 OK", {path + ".speed"}},
            {path + ".status=on", k451, {}},
            {path + ".mode=", "=" + axis.backward + kOk, {path + ".mode"}},
            {path + ".mode=forward", k451, {}},
            {path + ".speed=101", k457, {}},
            {path + ".speed=-1", k457, {}},
            {path + ".speed=fast", axis.noSpeed, {}},
            {path + ".speed=5.0", axis.noSpeed, {}},
            {path + ".speed=4294967396", k457, {}}});
  }
}

TEST_F(Motion, PanAndTiltFromThePresentPlace) {
  const std::string pan = "camera.motion.pan";
  const std::string tilt = "camera.motion.tilt";
  expectFrom("pan=100 tilt=1000", {{pan, "=s100&200 OK", {pan}},
                                   {pan + "=s0", kOk, {pan, pan + "=s0"}},
                                   {pan + "=s1918", kOk, {pan, pan + "=s1918"}},
                                   {pan + "=s1919", k457, {pan}},
                                   {pan + "=+s1818", kOk, {pan, pan + "=s1918"}},
                                   {pan + "=+s1819", k457, {pan}},
                                   {pan + "=+s5000", k457, {pan}},
                                   {pan + "=+s99999999999", k457, {pan}},
                                   {pan + "=-s100", kOk, {pan, pan + "=s0"}},
                                   {pan + "=-s101", k451, {pan}},
                                   {pan + "=-s102", k457, {pan}},
                                   {pan + "=s-1", k451, {pan}},
                                   {pan + "=100", k451, {pan}},
                                   {pan + "=+100", k451, {pan}},
                                   {pan + "=s", k451, {pan}},
                                   {pan + "=s1.5", k451, {pan}},
                                   {pan + "=x5", k451, {pan}},
                                   {tilt, "=s1000&200 OK", {tilt}},
                                   {tilt + "=+s78", kOk, {tilt, tilt + "=s1078"}},
                                   {tilt + "=+s79", k457, {tilt}},
                                   {tilt + "=s1079", k457, {tilt}},
                                   {tilt + "=-s1000", kOk, {tilt, tilt + "=s0"}}});
}

TEST_F(Motion, ZoomInFactorsAndPercentages) {
  const std::string zoom = "camera.motion.zoom";
  const std::string percent = "camera.motion.abszoom";
  const auto to = [&](const std::string& factor) { return Texts{zoom, zoom + "=x" + factor}; };
  expectFrom(
      "zoom=3",
      {{zoom, "=x3.00&200 OK", {zoom}},     {zoom + "=x1", kOk, to("1.00")},     {zoom + "=x8", kOk, to("8.00")},
       {zoom + "=x8.01", k457, {zoom}},     {zoom + "=x0.99", k457, {zoom}},     {zoom + "=x0", kOk, {zoom}},
       {zoom + "=x-2", kOk, {zoom}},        {zoom + "=+x5", kOk, to("8.00")},    {zoom + "=+x5.1", k457, {zoom}},
       {zoom + "=-x2", kOk, to("1.00")},    {zoom + "=-x2.5", k457, {zoom}},     {zoom + "=-x3", kOk, {zoom}},
       {zoom + "=0", kOk, to("1.00")},      {zoom + "=50", kOk, to("4.50")},     {zoom + "=99.99", kOk, to("8.00")},
       {zoom + "=100", k457, {zoom}},       {zoom + "=+10", kOk, to("3.70")},    {zoom + "=-10", kOk, to("2.30")},
       {zoom + "=+99.99", kOk, to("8.00")}, {zoom + "=-99.99", kOk, to("1.00")}, {zoom + "=+100", k457, {zoom}},
       {zoom + "=-100", k457, {zoom}},      {zoom + "=+-1", k457, {zoom}},       {zoom + "=+", k451, {zoom}},
       {zoom + "=x", k451, {zoom}},         {zoom + "=xnan", k451, {zoom}},      {zoom + "=s3", k451, {zoom}},
       {percent, "=28.57&200 OK", {zoom}},  {percent + "=50", kOk, to("4.50")},  {percent + "=+10", kOk, to("3.70")},
       {percent + "=-99", kOk, to("1.00")}, {percent + "=100", k457, {zoom}},    {percent + "=x2", k451, {zoom}},
       {percent + "=+x2", k451, {zoom}}});
  expectFrom("zoom=8", {{percent, "=99.99&200 OK", {zoom}}});
  expectFrom("zoom=1", {{percent, "=0.00&200 OK", {zoom}}});
}

TEST_F(Motion, ClickOnCentre) {
  const std::string click = "camera.motion.clickoncenter";
  const auto at = [&](const std::string& point) { return Texts{click + "=" + point}; };
  expect({{click + "=s0-s0", kOk, at("s0-s0")},
          {click + "=s1918-s1078", kOk, at("s1918-s1078")},
          {click + "=s1919-s0", k451, {}},
          {click + "=s0-s1079", k451, {}},
          {click + "=50-50", kOk, at("s959-s539")},
          {click + "=100-0", kOk, at("s1918-s0")},
          {click + "=33.3-0.1", kOk, at("s638-s1")},
          {click + "=100.1-0", k451, {}},
          {click + "=s5-50", k451, {}},
          {click + "=5-s50", k451, {}},
          {click + "=s5", k451, {}},
          {click + "=s5-", k451, {}},
          {click + "=-s5", k451, {}},
          {click + "=s-5-s5", k451, {}},
          {click + "=a-b", k451, {}},
          {click, k405, {}}});
}

TEST_F(Motion, SettingsWaitForTheSaveOfTheCamera) {
  const std::string hint = "&202 Accepted(camera.status=save)";
  const std::string speed = "camera.motion.position.speed";
  const std::string back = "camera.motion.auto_return";
  expect({{speed + "=50", hint, {speed + "=50"}},
          {speed, "=50&200 OK", {}},
          {speed + "=101", k457, {}},
          {speed + "=x", k451, {}},
          {speed + "=100", kOk, {speed + "=100"}},
          {back + ".status=on", hint, {back + ".status=on"}},
          {back + ".status=start", kOk, {back + ".status=start"}},
          {back + ".status", "=on&200 OK", {}},
          {back + ".status=stop", kOk, {back + ".status=stop"}},
          {back + ".status=off", kOk, {back + ".status=off"}},
          {back + ".status=maybe", k451, {}},
          {back + ".mode=auto_patrol(0)", hint, {back + ".mode=auto_patrol(0)"}},
          {back + ".mode=auto_patrol(1)", k451, {}},
          {back + ".mode", "=auto_patrol(0)&200 OK", {}},
          {back + ".mode=home", kOk, {back + ".mode=home"}},
          {back + ".timeout=61", k457, {}},
          {back + ".timeout=soon", k451, {}},
          {back + ".timeout", "=60&200 OK", {}}});
  for (const char* timeout : {"120", "180", "300", "600", "1200", "1800", "3600"}) {
    expect({{back + ".timeout=" + timeout, hint, {back + ".timeout=" + timeout}}});
  }
  expect({{back + ".timeout=60", kOk, {back + ".timeout=60"}}});
}

TEST_F(Motion, PatrolStepsWaitForTheSaveOfThePatrol) {
  const std::string hint = "&202 Accepted(camera.motion.auto_patrol(0).status=save)";
  const std::string patrolPath = "camera.motion.auto_patrol(0)";
  const std::string step = patrolPath + ".position(19)";
  expect({{step + "=7", hint, {step + "=7"}},
          {step, "=7&200 OK", {}},
          {step + "=20", k457, {}},
          {step + "=-1", k457, {}},
          {step + "=home", k451, {}},
          {step + ".duration=120", hint, {step + ".duration=120"}},
          {step + ".duration=60", hint, {step + ".duration=60"}},
          {step + ".duration=0", kOk, {step + ".duration=0"}},
          {step + ".duration=5", k457, {}},
          {step + ".duration=x", k451, {}},
          {step + ".speed=12.5", hint, {step + ".speed=12.5"}},
          {step + ".speed", "=12.5&200 OK", {}},
          {step + ".speed=100.1", k457, {}},
          {step + ".speed=-0.1", k457, {}},
          {step + ".speed=fast", k451, {}},
          {"camera.motion.auto_patrol.position.duration=45", hint, {patrolPath + ".position(0).duration=45"}},
          {patrolPath + ".position(20)", k456, {}},
          {patrolPath + ".position(-1)", k451, {}},
          {patrolPath + ".position(x).speed", k451, {}},
          {"camera.motion.auto_patrol(1).status", k456, {}},
          {"camera.motion.auto_patrol(x).status", k451, {}}});
  EXPECT_EQ(patrol("PATROL_POSITION_19"), "0");
  expect({{patrolPath + ".status=save", kOk, {}}});
  EXPECT_EQ(patrol("PATROL_POSITION_19"), "7");
  EXPECT_EQ(patrol("PATROL_SPEED_19"), "12.5");
  EXPECT_EQ(patrol("PATROL_DURATION_0"), "45");
  expect({{step + "=7", kOk, {step + "=7"}},
          {patrolPath + ".status=start", kOk, {patrolPath + ".status=start"}},
          {patrolPath + ".status", "=start&200 OK", {patrolPath + ".status"}},
          {patrolPath + ".status=stop", kOk, {patrolPath + ".status=stop"}},
          {patrolPath + ".status=go", k451, {}}});
}

TEST_F(Motion, PositionsAreSavedInitializedAndGoneTo) {
  const std::string three = "camera.position(3).status";
  const Texts saving = {three + "=save", "camera.motion.pan", "camera.motion.tilt", "camera.motion.zoom",
                        three + "=save"};
  expect({{three, "=unregistered&200 OK", {}}, {three + "=goto", kOk, {}}});
  expectFrom("pan=120 tilt=50 zoom=2.5", {{three + "=sa%76e", kOk, saving}});
  expect({{three, "=registered&200 OK", {}},
          {"camera.position(3).pan", "=s120&200 OK", {}},
          {"camera.position(3).tilt", "=s50&200 OK", {}},
          {"camera.position(3).zoom", "=x2.50&200 OK", {}},
          {three + "=goto", kOk, {three + "=goto"}},
          {three + "=forget", k451, {}},
          {"camera.position(3).pan=s5", k458, {}},
          {"camera.position(20).status", k456, {}},
          {"camera.position(x).status", k451, {}}});
  EXPECT_EQ(position(3, "POSITION_STATUS"), "registered");
  EXPECT_EQ(position(3, "POSITION_PAN"), "120");
  EXPECT_EQ(position(3, "POSITION_ZOOM"), "2.50");

  expectFrom("zoom=9", {{three + "=save", kOk, saving}, {"camera.position(3).zoom", "=x8.0&200 OK", {}}});
  expectFrom("zoom=0.5", {{three + "=save", kOk, saving}, {"camera.position(3).zoom", "=x1.0&200 OK", {}}});
  expect({{three + "=initialize", kOk, {three + "=initialize"}}, {three, "=unregistered&200 OK", {}}});
  EXPECT_EQ(position(3, "POSITION_STATUS"), "unregistered");

  const std::string home = "camera.position(0)";
  camera().tell("ptz pan=9 zoom=4");
  camera().ask("camera.position.status=save&camera.position(0).comment=Door");
  expect({{home + ".pan", "=s9&200 OK", {}},
          {home + ".status=initialize", kOk, {home + ".status=initialize"}},
          {home + ".status", "=registered&200 OK", {}},
          {home + ".comment", "=Home&200 OK", {}},
          {home + ".pan", "=s0&200 OK", {}},
          {home + ".zoom", "=x1.0&200 OK", {}}});
  EXPECT_EQ(position(0, "POSITION_ZOOM"), "1.0");
}

TEST_F(Motion, CommentsGoToFlashAtOnce) {
  const std::string comment = "camera.position(5).comment";
  const std::string longest(32, 'c');
  expect({{comment + "=North+gate", kOk, {}}, {comment, "=North gate&200 OK", {}}});
  EXPECT_EQ(position(5, "POSITION_TITLE"), "North gate");
  expect({{comment + "=%22a%25%26%22", kOk, {}},
          {comment, "=%22a%25%26%22&200 OK", {}},
          {comment + "=" + longest + "c", k457, {}},
          {comment + "=" + longest, kOk, {}},
          {comment, "=" + longest + kOk, {}},
          {comment + "=%00", kOk, {}},
          {comment, "=&200 OK", {}}});
  EXPECT_EQ(position(5, "POSITION_TITLE"), "");
}

TEST_F(Motion, WhatCannotBeSavedIsUndone) {
  const std::string eight = "camera.position(8)";
  camera().tell("ptz pan=77");
  camera().ask(eight + ".status=save&" + eight + ".comment=before");
  const std::string file = camera().read("flash/sysconfig/position/8.conf");

  camera().tell("ptz pan=500");
  camera().flash("full");
  for (const std::string request : {".comment=after", ".status=initialize", ".status=save"}) {
    const std::string path = eight + request.substr(0, request.find('='));
    EXPECT_EQ(camera().ask(eight + request), path + k500);
  }
  EXPECT_EQ(camera().ask("camera.motion.auto_patrol(0).status=save"),
            "camera.motion.auto_patrol(0).status&500 Internal Server Error");
  camera().flash("off");
  expect({{eight + ".comment", "=before&200 OK", {}},
          {eight + ".status", "=registered&200 OK", {}},
          {eight + ".pan", "=s77&200 OK", {}},
          {eight + ".comment=before", kOk, {}}});
  EXPECT_EQ(camera().read("flash/sysconfig/position/8.conf"), file);  // the next save finds the old values
}

TEST_F(Motion, AnAnswerThatIsNoNumberMovesNothing) {
  camera().tell("ptz refuse for=read");
  expect({{"camera.motion.pan=+s5", k500, {"camera.motion.pan"}},
          {"camera.motion.zoom=+5", k500, {"camera.motion.zoom"}},
          {"camera.motion.abszoom", k500, {"camera.motion.zoom"}},
          {"camera.motion.pan=s5", kOk, {"camera.motion.pan", "camera.motion.pan=s5"}}});
  EXPECT_EQ(camera().ask("camera.position(9).status=save"), std::string("camera.position(9).status") + k500);
  expect({{"camera.position(9).status", "=unregistered&200 OK", {}}});
}

/** Takes the place of the sequencer for one message, which it answers with the text. */
class OneAnswer {
 public:
  OneAnswer(const std::string& path, const std::string& text) : m_path(path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(m_listener, 1), 0);
    m_thread = std::thread([listener = m_listener, text] {
      const int client = accept(listener, nullptr, nullptr);
      char request[512];
      EXPECT_GT(recv(client, request, sizeof request, 0), 0);
      EXPECT_EQ(send(client, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
      close(client);
    });
  }
  ~OneAnswer() {
    shutdown(m_listener, SHUT_RDWR);  // nobody came: the thread shall not wait for ever
    m_thread.join();
    close(m_listener);
    unlink(m_path.c_str());
  }
  OneAnswer(const OneAnswer&) = delete;
  OneAnswer& operator=(const OneAnswer&) = delete;

 private:
  std::string m_path;
  int m_listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::thread m_thread;
};

TEST_F(Motion, FactorsAreCutAndNotRounded) {
  camera().tell("ptz down");
  struct Read {
    std::string path;
    std::string told;
    std::string answer;
  };
  for (const Read& read : {Read{"camera.motion.zoom", "3.149", "=x3.14&200 OK"},
                           {"camera.motion.zoom", "7.9999999", "=x7.99&200 OK"},
                           {"camera.motion.zoom", "2.5", "=x2.5&200 OK"},
                           {"camera.motion.zoom", "4", "=x4&200 OK"},
                           {"camera.motion.zoom", "4\r\nsystem.guid=4", k500},
                           {"camera.motion.pan.mode", "left\n", k500},
                           {"camera.motion.abszoom", "1.0005", "=0.01&200 OK"},
                           {"camera.motion.pan", std::string("12\0999", 6), "=s12&200 OK"}}) {
    const OneAnswer sequencer(camera().path("tmp/ptzseq"), read.told);
    EXPECT_EQ(camera().ask(read.path), read.path + read.answer) << read.told;
  }
}

/** Encoder settings that were stored before the start. */
struct Channels {
  std::string first;   ///< frame size of the first channel, which is on
  std::string third;   ///< frame size of the third channel
  std::string type;    ///< codec of the third channel
  std::string zoom;    ///< the answer to a zoom
  std::string centre;  ///< where the middle of the picture is
};

TEST(MotionAndEncoder, PictureSizesDecideAboutZoomAndCentre) {
  Camera camera;
  ASSERT_TRUE(camera.up());
  for (const Channels& channels : {Channels{"1920x1080", "320x240", "jpeg", k451, "s959-s539"},
                                   {"1920x1080", "vga", "mpeg4", k451, "s959-s539"},
                                   {"1280x960", "vga", "jpeg", kOk, "s639-s479"}}) {
    camera.setRow("flash/sysconfig/encode/encode0.conf", "FRAME_SIZE", channels.first);
    camera.setRow("flash/sysconfig/encode/encode2.conf", "FRAME_SIZE", channels.third);
    camera.setRow("flash/sysconfig/encode/encode2.conf", "ENCTYPE_CH", channels.type);
    ASSERT_TRUE(camera.reboot());
    for (const std::string path : {"camera.motion.zoom", "camera.motion.abszoom"}) {
      camera.clearJournal();
      EXPECT_EQ(camera.ask(path + "=50"), path + channels.zoom);
      EXPECT_EQ(camera.journal("ptzseq").empty(), channels.zoom != kOk);
    }
    camera.clearJournal();
    camera.ask("camera.motion.clickoncenter=50-50");
    EXPECT_EQ(camera.journalFields("ptzseq", "text"), Texts{"camera.motion.clickoncenter=" + channels.centre});
  }
}

}  // namespace
}  // namespace test
