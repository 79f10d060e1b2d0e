// Pan, tilt, zoom, the return, the patrol and the preset positions: what is refused, what reaches the sequencer and
// what is kept.

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <sstream>
#include <thread>

#include "tests/camera/Answers.h"
#include "tests/camera/Camera.h"

namespace test {
namespace {

class Motion : public CameraTest {
 protected:
  void TearDown() override { camera().tell("ptz up"); }

  static Texts told() { return camera().journalFields("ptzseq", "text"); }
  static void expect(const std::vector<Step>& cases) { expectSteps(camera(), "", cases, told); }

  /** Requests that the sequencer gets as they are. */
  static void expectForwarded(std::initializer_list<std::string> items, const std::string& answer = kOk) {
    for (const std::string& item : items)
      expect({{item, answer, {item}}});
  }

  /** Triples of words, each from the same view: what is written, the status, and where it moves to ("-": nowhere). */
  static void expectMoves(const std::string& view, const std::string& path, const std::string& moves,
                          const std::string& axis) {
    std::istringstream words(moves);
    for (std::string value, status, target; words >> value >> status >> target;) {
      camera().tell("ptz " + view);
      camera().clearJournal();
      expectSequence(camera(), path, "=" + value + " " + status);
      EXPECT_EQ(told(), target == "-" ? Texts{axis} : (Texts{axis, axis + "=" + target})) << path << "=" << value;
    }
  }

  static std::string file(int position) { return "flash/sysconfig/position/" + std::to_string(position) + ".conf"; }
};

TEST_F(Motion, SteadyMovesGoToTheSequencer) {
  for (const auto& [path, forward, backward] : {std::array<std::string, 3>{"camera.motion.pan", "right", "left"},
                                                {"camera.motion.tilt", "down", "up"},
                                                {"camera.motion.zoom", "in", "out"}}) {
    expectForwarded({path + ".status=start", path + ".status=stop", path + ".speed=0", path + ".speed=100",
                     path + ".speed=50", path + ".mode=" + forward, path + ".mode=" + backward});
    expect({{path + ".status", shows("stop"), {path + ".status"}},
            {path + ".mode", shows(backward), {path + ".mode"}},
            {path + ".speed", shows("50"), {path + ".speed"}},
            {path + ".mode=", shows(backward), {path + ".mode"}},
            {path + ".speed=101", k457}});
  }
}

TEST_F(Motion, PanTiltAndZoomFromThePresentPlace) {
  const std::string pan = "camera.motion.pan";
  const std::string tilt = "camera.motion.tilt";
  const std::string zoom = "camera.motion.zoom";
  const std::string percent = "camera.motion.abszoom";
  expectMoves("pan=100", pan,
              "s0 200 s0  s1918 200 s1918  s1919 457 -  +s1818 200 s1918  +s1819 457 -  +s99999999999 457 -  "
              "-s100 200 s0  -s101 451 -  -s102 457 -  s-1 451 -  100 451 -  +100 451 -  s 451 -  s1.5 451 -",
              pan);
  expectMoves("tilt=1000", tilt, "+s78 200 s1078  +s79 457 -  s1079 457 -  -s1000 200 s0", tilt);
  expectMoves("zoom=3", zoom,
              "x1 200 x1.00  x8 200 x8.00  x8.01 457 -  x0.99 457 -  x0 200 -  x-2 200 -  +x5 200 x8.00  +x5.1 457 -  "
              "-x2 200 x1.00  -x2.5 457 -  -x3 200 -  0 200 x1.00  50 200 x4.50  99.99 200 x8.00  100 457 -  "
              "+10 200 x3.70  -10 200 x2.30  +99.99 200 x8.00  -99.99 200 x1.00  +100 457 -  -100 457 -  +-1 457 -  "
              "+ 451 -  x 451 -  xnan 451 -  s3 451 -",
              zoom);
  expectMoves("zoom=3", percent, "50 200 x4.50  +10 200 x3.70  -99 200 x1.00  100 457 -  x2 451 -  +x2 451 -", zoom);
  for (const auto& [factor, shown] : {std::pair{"8", "99.99"}, {"1", "0.00"}, {"3", "28.57"}}) {
    camera().tell(std::string("ptz pan=100 tilt=1000 zoom=") + factor);
    expect({{percent, shows(shown), {zoom}}});
  }
  expect({{zoom, shows("x3.00"), {zoom}}, {pan, shows("s100"), {pan}}, {tilt, shows("s1000"), {tilt}}});
}

TEST_F(Motion, ClickOnCentre) {
  const std::string click = "camera.motion.clickoncenter";
  for (const auto& [point, sent] : {std::pair{"s0-s0", "s0-s0"},
                                    {"s1918-s1078", "s1918-s1078"},
                                    {"50-50", "s959-s539"},
                                    {"100-0", "s1918-s0"},
                                    {"33.3-0.1", "s638-s1"}})
    expect({{click + "=" + point, kOk, {click + "=" + sent}}});
  for (const char* point : {"s1919-s0", "s0-s1079", "100.1-0", "s5-50", "5-s50", "s5", "s5-", "-s5", "s-5-s5", "a-b"})
    expect({{click + "=" + point, k451}});
}

TEST_F(Motion, SettingsAndPatrolStepsGoToTheSequencerAndWaitForASave) {
  const std::string patrolPath = "camera.motion.auto_patrol(0)";
  const std::string hint = "&202 Accepted(" + patrolPath + ".status=save)";
  const std::string step = patrolPath + ".position(19)";
  const std::string speed = "camera.motion.position.speed";
  const std::string back = "camera.motion.auto_return.";
  expectForwarded({step + "=7", step + ".duration=120", step + ".speed=12.5"}, hint);
  expectForwarded({speed + "=50", back + "status=on", back + "mode=auto_patrol(0)", back + "timeout=600"},
                  "&202 Accepted(camera.status=save)");
  expectForwarded({back + "status=start", back + "status=stop"});
  expect({{step, shows("7")},
          {step + ".speed", shows("12.5")},
          {back + "status", shows("on")},
          {back + "mode=auto_patrol(1)", k451},
          {back + "timeout=61", k457},
          {step + ".duration=5", k457},
          {"camera.motion.auto_patrol.position.duration=45", hint, {patrolPath + ".position(0).duration=45"}}});
  // as it is stored
  expectForwarded({speed + "=100", back + "status=off", back + "mode=home", back + "timeout=60"});
  const std::string file = "flash/sysconfig/patrol/0.conf";
  EXPECT_EQ(camera().row(file, "PATROL_POSITION_19"), "0");
  expect({{patrolPath + ".status=save", kOk}});
  expectRows(camera(), file, {"PATROL_POSITION_19=7", "PATROL_SPEED_19=12.5", "PATROL_DURATION_0=45"});
  expectForwarded({step + "=7", patrolPath + ".status=stop", patrolPath + ".status=start"});
  expect({{patrolPath + ".status", shows("start"), {patrolPath + ".status"}}});
}

TEST_F(Motion, PositionsAreSavedInitializedAndGoneTo) {
  const std::string three = "camera.position(3)";
  const std::string status = three + ".status";
  const Texts saving = {status + "=save", "camera.motion.pan", "camera.motion.tilt", "camera.motion.zoom",
                        status + "=save"};
  expect({{status, shows("unregistered")}, {status + "=goto", kOk}});
  camera().tell("ptz pan=120 tilt=50 zoom=2.5");
  expect({{status + "=sa%76e", kOk, saving},
          {status, shows("registered")},
          {three + ".tilt", shows("s50")},
          {status + "=goto", kOk, {status + "=goto"}}});
  expectRows(camera(), file(3), {"POSITION_STATUS=registered", "POSITION_PAN=120", "POSITION_ZOOM=2.50"});
  for (const auto& [factor, kept] : {std::pair{"9", "x8.0"}, {"0.5", "x1.0"}}) {
    camera().tell(std::string("ptz zoom=") + factor);
    expect({{status + "=save", kOk, saving}, {three + ".zoom", shows(kept)}});
  }
  expect({{status + "=initialize", kOk, {status + "=initialize"}}});
  EXPECT_EQ(camera().row(file(3), "POSITION_STATUS"), "unregistered");

  const std::string home = "camera.position(0)";
  camera().tell("ptz pan=9 zoom=4");
  camera().ask("camera.position.status=save&camera.position(0).comment=Door");
  expect({{home + ".pan", shows("s9")},
          {home + ".status=initialize", kOk, {home + ".status=initialize"}},
          {home + ".status", shows("registered")},
          {home + ".comment", shows("Home")},
          {home + ".pan", shows("s0")}});
  EXPECT_EQ(camera().row(file(0), "POSITION_ZOOM"), "1.0");
}

TEST_F(Motion, WhatCannotBeSavedIsUndone) {
  const std::string eight = "camera.position(8)";
  camera().tell("ptz pan=77");
  camera().ask(eight + ".status=save&" + eight + ".comment=before");
  const std::string before = camera().read(file(8));
  camera().tell("ptz pan=500");
  camera().flash("full");
  expectEach(camera(), "",
             {eight + ".comment=after", eight + ".status=initialize", eight + ".status=save",
              "camera.motion.auto_patrol(0).status=save"},
             k500);
  camera().flash("off");
  expect({{eight + ".comment", shows("before")},
          {eight + ".status", shows("registered")},
          {eight + ".pan", shows("s77")},
          {eight + ".comment=before", kOk}});
  EXPECT_EQ(camera().read(file(8)), before);  // the next save finds the old values
}

TEST_F(Motion, NothingChangesWithoutTheSequencer) {
  camera().tell("ptz down");
  expectEach(
      camera(), "",
      {"camera.motion.pan", "camera.motion.pan=s5", "camera.motion.pan=nonsense", "camera.motion.tilt.speed=5",
       "camera.motion.zoom", "camera.motion.zoom=x2", "camera.motion.abszoom", "camera.motion.clickoncenter=s1-s1",
       "camera.motion.position.speed=1", "camera.motion.auto_return.status=on", "camera.motion.auto_return.mode=home",
       "camera.motion.auto_patrol(0).position(1)=3", "camera.motion.auto_patrol(0).status=start",
       "camera.position(9).status=save", "camera.position(0).status=initialize"},
      k500);
  expect({{"camera.motion.position.speed", shows("100")},
          {"camera.motion.auto_return.status", shows("off")},
          {"camera.motion.auto_patrol(0).position(1)", shows("0")},
          {"camera.position(9).status", shows("unregistered")},
          {"camera.position(0).status=goto", kOk}});
}

TEST_F(Motion, AnAnswerThatIsNoNumberMovesNothing) {
  camera().tell("ptz refuse for=read");
  expect({{"camera.motion.pan=+s5", k500, {"camera.motion.pan"}},
          {"camera.motion.zoom=+5", k500, {"camera.motion.zoom"}},
          {"camera.motion.abszoom", k500, {"camera.motion.zoom"}},
          {"camera.motion.pan=s5", kOk, {"camera.motion.pan", "camera.motion.pan=s5"}}});
  expectAnswers(camera(),
                {{"camera.position(9).status=save", k500}, {"camera.position(9).status", shows("unregistered")}});
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
  for (const auto& [path, told, shown] : {std::array<std::string, 3>{"camera.motion.zoom", "3.149", "x3.14"},
                                          {"camera.motion.zoom", "7.9999999", "x7.99"},
                                          {"camera.motion.zoom", "2.5", "x2.5"},
                                          {"camera.motion.zoom", "4", "x4"},
                                          {"camera.motion.abszoom", "1.0005", "0.01"},
                                          {"camera.motion.pan", std::string("12\0999", 6), "s12"}}) {
    const OneAnswer sequencer(camera().path("tmp/ptzseq"), told);
    EXPECT_EQ(camera().ask(path), path + shows(shown)) << told;
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
