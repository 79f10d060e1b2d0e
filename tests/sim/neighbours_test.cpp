#include "tests/sim/Neighbours.h"
#include "sim/neighbours/Lens.h"

namespace {

using namespace test;

struct Step {
  /** What is told first, if anything. */
  std::string told;
  std::string socket;
  std::string request;
  std::string answer;
};

TEST_F(Neighbours, AnswerFromTheirWorld) {
  const std::vector<Step> steps{
      {"", "gpio", words({9, 0, 0, 0}), words({99, 9, 1, 0})},
      {"gpio icr=0", "gpio", words({9, 0, 0, 0}), words({99, 9, 0, 0})},
      {"gpio led_counter=7", "gpio", words({16, 2, 0, 0}), words({99, 16, 7, 0})},
      {"gpio position=1200", "gpio", words({43, 0, 0, 0}), words({99, 43, 1200, 0})},
      {"", "ptzseq", "camera.motion.pan=s100", "OK"},
      {"", "ptzseq", "camera.motion.pan", "100"},
      {"", "ptzseq", "camera.motion.pan=s1919", "ERROR"},
      {"ptz zoom=2.5", "ptzseq", "camera.position(19).status=save", "OK"},
      {"ptz zoom=1", "ptzseq", "camera.position(19).status=goto", "OK"},
      {"", "ptzseq", "camera.motion.zoom", "2.50"},
      {"", "ptzseq", "camera.position(18).status=goto", "ERROR"},
      {"", "ptzseq", "camera.position(20).status=save", "ERROR"},
      {"", "localrec", packet(0, 0, 0x213200, ""), packet(2, 0, 200, "")},
      {"", "localrec", packet(1, 0, 0x213200, "a trigger"), packet(2, 0, 200, "")},
      {"", "localrec", packet(0, 0, 0x213200, ""), packet(2, 0, 200, "a trigger")},
      {"recorder pin2=make", "localrec", packet(0, 0, 0x131421, ""), packet(2, 0, 200, words({1}))},
      {"", "localrec", packet(1, 0, 0x151411, words({1})), packet(2, 0, 200, "")},
      {"gpio out2=make", "localrec", packet(0, 0, 0x151411, ""), packet(2, 0, 200, words({1}))},
      {"recorder status=3", "localrec", packet(6, 0, 0, ""), packet(2, 0, 3, "")},
      {"", "detection_request", detectionPacket(3, "00ff"), detectionPacket(0, "00ff")},
      {"", "session", sessionRequest(6), sessionAnswer("0")},
      {"", "session", sessionRequest(8, 1), sessionAnswer("-")},
      {"session add jpeg 4000 udp encode=1", "session", sessionRequest(5), sessionAnswer("4000")},
      {"session add h264high 2000 tcp ip=10.0.0.9", "session", sessionRequest(5), sessionAnswer("6000")},
      {"", "session", sessionRequest(8, 2), sessionAnswer("10.0.0.9")},
      {"", "session", sessionRequest(15, 1), sessionAnswer("1")},
      {"", "session", sessionRequest(42, "h264"), sessionAnswer("1")},
      {"session remove 1", "session", sessionRequest(42, "jpeg"), sessionAnswer("0")},
      {"", "session", sessionRequest(7, 23), sessionAnswer("0")},
      {"session receive g711 64 udp", "session", sessionRequest(30, 1), sessionAnswer("g711")},
      {"defect static=error static_error=3", "dd_request", "\x20", "\x22\x03"},
      {"defect fpn=completed fpn_count=300", "dd_request", "\x31", "\x2c\x01"},
      {"", "dd_request", "\x21", "\x20\xff"},
      {"", "dd_request", "\x11", "\x01\0"s},
      {"", "serial", serialRequest(1), words({0, 0})},
      {"", "serial", serialRequest(2), words({1, 405})},
      {"sdrec card=read_only", "sdrec", cardRequest(1025), cardAnswer(1, 0)},
      {"", "sdrec", cardRequest(517), cardAnswer(1, 16)},
      {"sdrec card=on init=off", "sdrec", cardRequest(1026), cardAnswer(0, 0)},
      {"", "sdrec", cardRequest(517), cardAnswer(0, 0)},
      {"", "sdrec", cardRequest(1026), cardAnswer(1, 0)},
  };
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const Step& step = steps[i];
    SCOPED_TRACE("step " + std::to_string(i) + " at " + step.socket + " " + step.told);
    EXPECT_EQ(step.told.empty() ? "ok" : tell(step.told), "ok");
    EXPECT_EQ(exchange(step.socket, step.request, step.answer.size()).bytes, step.answer);
  }
  EXPECT_NE(tell("detection show").find(R"("motion.area":"00ff")"), std::string::npos);
}

TEST_F(Neighbours, RefuseWordsThatMeanNothing) {
  for (const std::string line : {"",
                                 "nobody icr=0",
                                 "gpio",
                                 "gpio icr",
                                 "gpio icr=x",
                                 "gpio slow",
                                 "gpio slow -1",
                                 "gpio silent so",
                                 "session add jpeg",
                                 "session remove 1",
                                 "session remove 23",
                                 "sdrec card=gone",
                                 "recorder pin3=make",
                                 "recorder 0xzz=1",
                                 "dsp probe",
                                 "program rtpd",
                                 "program sh slow",
                                 "program rtpd lazy",
                                 "dhcp lease",
                                 "dhcp lease 10.0.0.7 color=red",
                                 "recorder now=noon",
                                 "recorder now=monday-240000",
                                 "recorder now=monday-1200",
                                 "gpio stick=much",
                                 "gpio run=-1",
                                 "gpio follow=1"}) {
    EXPECT_TRUE(tell(line).starts_with("error: ")) << line << " gave " << tell(line);
  }
  EXPECT_EQ(exchange("gpio", words({9, 0, 0, 0}), 16).bytes, words({99, 9, 1, 0}));
}

struct Sample {
  std::string name;
  std::string socket;
  std::string request;
  std::string answer;
  std::string refusal;
  /** Bytes of the answer that stay right even in garbage. */
  std::size_t framing;
};

const std::vector<Sample>& samples() {
  static const std::vector<Sample> all{
      {"gpio", "gpio", words({20, 0, 0, 0}), words({99, 20, 1, 0}), words({0, 20, 0, 0}), 0},
      {"ptz", "ptzseq", "camera.motion.tilt", "0", "ERROR", 0},
      {"recorder", "localrec", packet(4, 0, 0, words({3})), packet(2, 0, 200, ""), packet(3, 0, -405, ""), 0},
      {"detection", "detection_request", detectionPacket(1, "on"), detectionPacket(0, "on"), detectionPacket(1, "on"),
       0},
      {"session", "session", sessionRequest(9, 1), sessionAnswer("-"), sessionAnswer("\0"s), 4},
      {"defect", "dd_request", "\x12", "\x01\0"s, "\x02\0"s, 0},
      {"serial", "serial", serialRequest(1), words({0, 0}), words({1, 405}), 0},
      {"sdrec", "sdrec", cardRequest(518), cardAnswer(0, 0), cardAnswer(1, 16), 0},
  };
  return all;
}

TEST_F(Neighbours, MisbehaveAsTold) {
  for (const Sample& sample : samples()) {
    SCOPED_TRACE(sample.name);
    const auto ask = [&](Milliseconds limit = patience) {
      return exchange(sample.socket, sample.request, sample.answer.size(), limit);
    };
    ASSERT_EQ(tell(sample.name + " silent"), "ok");
    const Received silent = ask(silence);
    EXPECT_EQ(silent.bytes, "");
    EXPECT_FALSE(silent.closed);

    ASSERT_EQ(tell(sample.name + " short"), "ok");
    const Received half = ask();
    EXPECT_EQ(half.bytes, sample.answer.substr(0, sample.answer.size() / 2));
    EXPECT_TRUE(half.closed);

    ASSERT_EQ(tell(sample.name + " garbage"), "ok");
    const std::string garbage = ask().bytes;
    ASSERT_EQ(garbage.size(), sample.answer.size());
    for (std::size_t at = 0; at < garbage.size(); ++at) {
      EXPECT_EQ(garbage[at] == sample.answer[at], at < sample.framing) << "byte " << at;
    }

    ASSERT_EQ(tell(sample.name + " refuse"), "ok");
    EXPECT_EQ(exchange(sample.socket, sample.request, sample.refusal.size()).bytes, sample.refusal);

    ASSERT_EQ(tell(sample.name + " early"), "ok");
    EXPECT_TRUE(ask().closed);

    ASSERT_EQ(tell(sample.name + " leave"), "ok");
    EXPECT_EQ(ask().bytes, sample.answer);
    EXPECT_FALSE(connect(sample.socket).isOpen());
    ASSERT_EQ(tell(sample.name + " up"), "ok");

    ASSERT_EQ(tell(sample.name + " slow 60"), "ok");
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ask().bytes, sample.answer);
    EXPECT_GE(std::chrono::steady_clock::now() - start, Milliseconds(60));

    ASSERT_EQ(tell(sample.name + " drip 1"), "ok");
    start = std::chrono::steady_clock::now();
    EXPECT_EQ(ask().bytes, sample.answer);
    EXPECT_GE(std::chrono::steady_clock::now() - start, Milliseconds(sample.answer.size() - 1));

    const std::size_t much = 1'000'000;
    ASSERT_EQ(tell(sample.name + " endless"), "ok");
    const std::string repeated = exchange(sample.socket, sample.request, much).bytes;
    ASSERT_GE(repeated.size(), much);
    EXPECT_TRUE(repeated.starts_with(sample.answer));
    const std::string again = repeated.substr(sample.answer.size());
    EXPECT_EQ(again, repeated.substr(0, again.size()));
    ASSERT_EQ(tell(sample.name + " huge"), "ok");
    const std::string huge = exchange(sample.socket, sample.request, much).bytes;
    ASSERT_GE(huge.size(), much);
    EXPECT_EQ(huge.find_first_not_of('\xff'), std::string::npos);
    ASSERT_EQ(tell(sample.name + " none"), "ok");

    ASSERT_EQ(tell(sample.name + " down"), "ok");
    EXPECT_FALSE(connect(sample.socket).isOpen());
    ASSERT_EQ(tell(sample.name + " up"), "ok");
    EXPECT_EQ(ask().bytes, sample.answer);
  }
}

TEST_F(Neighbours, AFaultCanConcernOneMessage) {
  ASSERT_EQ(tell("recorder refuse 404 for=restart"), "ok");
  EXPECT_EQ(exchange("localrec", packet(4, 0, 0, words({3})), 1012).bytes, packet(3, 0, -404, ""));
  EXPECT_EQ(exchange("localrec", packet(12, 0, 0, ""), 1012).bytes, packet(2, 0, 200, ""));
  ASSERT_EQ(tell("recorder refuse 5"), "ok");
  EXPECT_EQ(exchange("localrec", packet(12, 0, 0, ""), 1012).bytes, packet(5, 0, 0, ""));
}

TEST_F(Neighbours, ARefusalLeavesTheWorldAlone) {
  ASSERT_EQ(tell("recorder refuse"), "ok");
  EXPECT_EQ(exchange("localrec", packet(1, 0, 0x151411, words({1})), 1012).bytes, packet(3, 0, -405, ""));
  ASSERT_EQ(tell("recorder none"), "ok");
  EXPECT_EQ(exchange("localrec", packet(0, 0, 0x151411, ""), 1012).bytes, packet(2, 0, 200, ""));
}

TEST_F(Neighbours, NoClientHoldsUpAnother) {
  const sim::Descriptor idle = connect("gpio");
  const sim::Descriptor halfway = connect("localrec");
  ASSERT_EQ(::send(halfway.number(), "half", 4, MSG_NOSIGNAL), 4);
  ASSERT_EQ(tell("session slow 3000"), "ok");
  const sim::Descriptor waiting = connect("session");
  const std::string request = sessionRequest(6);
  ASSERT_GT(::send(waiting.number(), request.data(), request.size(), MSG_NOSIGNAL), 0);

  const auto start = std::chrono::steady_clock::now();
  for (const std::string name : {"gpio", "recorder", "defect"}) {
    for (const Sample& sample : samples()) {
      if (sample.name != name) continue;
      EXPECT_EQ(exchange(sample.socket, sample.request, sample.answer.size()).bytes, sample.answer) << name;
    }
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, Milliseconds(2000));
  EXPECT_EQ(receive(waiting, 1, Milliseconds(1)).bytes, "");
}

TEST_F(Neighbours, RequestsMayComeInPiecesAndInRows) {
  const sim::Descriptor socket = connect("gpio");
  const std::string two = words({9, 0, 0, 0}) + words({20, 0, 0, 0});
  for (const char& byte : two)
    ASSERT_EQ(::send(socket.number(), &byte, 1, MSG_NOSIGNAL), 1);
  EXPECT_EQ(receive(socket, 32).bytes, words({99, 9, 1, 0}) + words({99, 20, 1, 0}));
}

TEST_F(Neighbours, OrdersOfTheGpioHaveNoAnswer) {
  for (const int command : {0, 10, 17, 30, 31, 32, 33, 34, 35}) {
    for (const std::string fault : {"none", "refuse", "garbage"}) {
      ASSERT_EQ(tell("gpio " + fault), "ok");
      EXPECT_EQ(exchange("gpio", words({command, 1, 1, 0}), 16, Milliseconds(20)).bytes, "") << command << fault;
    }
  }
}

TEST_F(Neighbours, AFocusRunTakesItsTime) {
  const auto ask = [this](int command) { return exchange("gpio", words({command, 0, 0, 0}), 16).bytes; };
  const auto order = [this](int command, int value) {
    (void)exchange("gpio", words({command, value, 0, 0}), 16, Milliseconds(1));
  };
  ASSERT_EQ(tell("gpio run=60000000 position=1000 sharp=77"), "ok");
  EXPECT_EQ(ask(41), words({99, 41, 1, 0}));
  order(31, 2);
  EXPECT_EQ(ask(41), words({99, 41, 0, 0}));
  EXPECT_EQ(ask(40), words({99, 40, 5, 0}));
  EXPECT_EQ(ask(42), words({99, 42, 0, 0}));
  EXPECT_EQ(ask(43), words({99, 43, 1000, 0})) << "a lens on its way is not there yet";
  order(31, 0);
  EXPECT_EQ(ask(41), words({99, 41, 1, 0}));
  EXPECT_EQ(ask(43), words({99, 43, 1000, 0})) << "a stop leaves it where it is";

  ASSERT_EQ(tell("gpio run=0 stick=lens"), "ok");
  order(30, 100);
  EXPECT_EQ(ask(41), words({99, 41, 0, 0}));
  EXPECT_EQ(ask(45), words({99, 45, 50, 0}));
  EXPECT_EQ(ask(43), words({99, 43, 1050, 0})) << "it sticks half way";
  ASSERT_EQ(tell("gpio stick=off"), "ok");
  EXPECT_EQ(ask(43), words({99, 43, 1100, 0}));
}

/** The next lens is the same one, in the place in which the last was when the power went. */
TEST_F(Neighbours, ALensKeepsItsPlaceWithoutPower) {
  const auto found = [this] {
    sim::Loop loop;
    return sim::Lens(loop, m_root + "/run/camera/lens").position();
  };
  ASSERT_EQ(tell("gpio run=60000000 position=400 icr=0"), "ok");
  EXPECT_EQ(found(), 400);
  (void)exchange("gpio", words({30, 200, 0, 0}), 16, Milliseconds(1));
  EXPECT_EQ(exchange("gpio", words({41, 0, 0, 0}), 16).bytes, words({99, 41, 0, 0}));
  EXPECT_EQ(found(), 500);
  sim::Loop loop;
  EXPECT_EQ(sim::Lens(loop, m_root + "/run/camera/lens").filter(), 0);
}

TEST_F(Neighbours, TheFilterFollowsThePictureWhereItIsToldTo) {
  const auto picture = [this](int mode) { std::ofstream(m_root + "/run/camera/picture") << mode; };
  const auto becomes = [this](int place) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (exchange("gpio", words({9, 0, 0, 0}), 16).bytes != words({99, 9, place, 0})) {
      if (std::chrono::steady_clock::now() > end) return false;
    }
    return true;
  };
  picture(0);
  ASSERT_EQ(tell("gpio run=0 follow=on"), "ok");
  EXPECT_EQ(exchange("gpio", words({9, 0, 0, 0}), 16).bytes, words({99, 9, 1, 0}));
  picture(0);
  EXPECT_TRUE(becomes(0));
  picture(1);
  EXPECT_TRUE(becomes(1));
  EXPECT_EQ(exchange("gpio", words({16, 0, 0, 0}), 16).bytes, words({99, 16, 2, 0})) << "both moves count";
}

TEST_F(Neighbours, ASearchForDefectsFindsThemBitByBit) {
  const auto ask = [this](char command) { return exchange("dd_request", std::string(1, command), 2).bytes; };
  ASSERT_EQ(tell("defect run=60000000 static_count=12"), "ok");
  EXPECT_EQ(ask(0x20), "\x20\x0c");
  EXPECT_EQ(ask(0x11), "\x01\0"s);
  EXPECT_EQ(ask(0x20), "\x21\0"s);
  EXPECT_EQ(ask(0x30), "\0\0"s);
  EXPECT_EQ(ask(0x10), "\x01\0"s);
  EXPECT_EQ(ask(0x20), "\x20\0"s) << "a stop leaves it with what it has found";
  ASSERT_EQ(tell("defect run=1"), "ok");
  EXPECT_EQ(ask(0x11), "\x01\0"s);
  const auto end = std::chrono::steady_clock::now() + patience;
  while (ask(0x20) != "\x20\x0c" && std::chrono::steady_clock::now() < end)
    ;
  EXPECT_EQ(ask(0x30), "\x0c\0"s);
}

TEST_F(Neighbours, TheJournalHasTheMessageBeforeTheAnswer) {
  for (int i = 0; i < 20; ++i) {
    const std::string text = "trigger \"" + std::to_string(i) + "\"\n";
    ASSERT_EQ(exchange("localrec", packet(1, 0, 0x21a200, text), 1012).bytes.size(), 1012u);
    EXPECT_EQ(lastInJournal("who"), "recorder");
    EXPECT_EQ(lastInJournal("what"), "put");
    EXPECT_EQ(lastInJournal("id"), "0x21a200");
    EXPECT_EQ(lastInJournal("name"), "event(10).trigger");
  }
  ASSERT_EQ(tell("gpio silent"), "ok");
  EXPECT_EQ(exchange("gpio", words({30, -5, 0, 0}), 16, silence).bytes, "");
  EXPECT_EQ(lastInJournal("what"), "focus_step");
  EXPECT_EQ(lastInJournal("a"), "-5");
  EXPECT_EQ(lastInJournal("fault"), "silent");
}

TEST_F(Neighbours, WhatIsToldComesBehindTheMessagesBeforeIt) {
  // A connection older than those of the messages is looked at first.
  const sim::Descriptor control = connectControl();
  ASSERT_TRUE(tell(control, "gpio show").starts_with("{"));
  for (int i = 0; i < 200; ++i) {
    const sim::Descriptor first = connect("gpio");
    const sim::Descriptor second = connect("gpio");
    for (const auto& [socket, step] : {std::pair(&first, 1), std::pair(&second, 1000 + i)}) {
      const std::string order = words({30, step, 0, 0});
      ASSERT_EQ(::send(socket->number(), order.data(), order.size(), MSG_NOSIGNAL), 16);
    }
    ASSERT_TRUE(tell(control, "gpio show").starts_with("{"));
    ASSERT_EQ(lastInJournal("a"), std::to_string(1000 + i));
  }
}

TEST_F(Neighbours, OrdersForTheLibraryAreKeptInItsFile) {
  const auto file = [this] {
    std::ifstream stream(m_root + "/run/camera/dsp");
    return std::string(std::istreambuf_iterator<char>(stream), {});
  };
  EXPECT_EQ(tell("dsp probe=30 fail_once=0x21"), "ok");
  EXPECT_EQ(file(), "fail_once=0x21\nprobe=30\n");
  EXPECT_EQ(tell("dsp opwb=never"), "ok");
  EXPECT_EQ(file(), "opwb=never\nprobe=30\n");
  EXPECT_EQ(tell("dsp probe="), "ok");
  EXPECT_EQ(file(), "opwb=never\n");
  EXPECT_EQ(tell("dsp clear"), "ok");
  EXPECT_EQ(file(), "");
}

TEST_F(Neighbours, AProgramsConductIsItsFile) {
  EXPECT_EQ(tell("program rtpd show"), R"({"who":"rtpd","conduct":"normal"})");
  for (const char* conduct : {"hang", "normal"}) {
    EXPECT_EQ(tell("program rtpd "s + conduct), "ok");
    std::string line;
    std::getline(std::ifstream(m_root + "/run/camera/program.rtpd"), line);
    EXPECT_EQ(line, conduct);
  }
}

TEST_F(Neighbours, ALeaseIsKeptForTheNextClient) {
  const auto lease = [this] {
    std::ifstream stream(m_root + "/run/camera/lease");
    return std::string(std::istreambuf_iterator<char>(stream), {});
  };
  EXPECT_EQ(tell("dhcp lease 10.0.0.7 dns= ntp=10.0.0.1"), "ok");
  EXPECT_EQ(lease(), "10.0.0.7 dns= ntp=10.0.0.1 \n");
  EXPECT_EQ(tell("dhcp silent"), "ok");
  EXPECT_EQ(lease(), "silent \n");
  EXPECT_EQ(tell("dhcp usual"), "ok");
  EXPECT_EQ(lease(), "");
}

}  // namespace
