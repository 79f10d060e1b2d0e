#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "local/FileDescriptor.h"
#include "local/LittleEndian.h"
#include "local/UnixDomain.h"
#include "service/CTmxdUtility.h"
#include "service/DefectDaemon.h"
#include "service/ParamPitcher.h"
#include "service/ParamPitcherDetection.h"
#include "service/Session.h"

namespace {

using Bytes = std::vector<uint8_t>;

/** A neighbouring daemon that takes one message for each reply it has, and remembers the messages. */
class Neighbour {
 public:
  Neighbour() {
    if (mkdtemp(m_directory.data()) == nullptr) abort();
    m_path = m_directory + "/socket";
  }
  ~Neighbour() { std::filesystem::remove_all(m_directory); }
  Neighbour(const Neighbour&) = delete;
  Neighbour& operator=(const Neighbour&) = delete;

  [[nodiscard]] const std::string& path() const { return m_path; }

  /** Runs the client's operation while answering; gives the messages that came. */
  template <typename Operation>
  std::vector<Bytes> answer(const std::vector<Bytes>& replies, Operation operation) {
    FileDescriptor server(UnixDomain::createServSocket(m_path));
    fcntl(server.get(), F_SETFL, 0);  // wait for clients
    std::vector<Bytes> messages;
    std::thread thread([&] {
      for (const Bytes& reply : replies)
        messages.push_back(serve(server.get(), reply));
    });
    operation();
    thread.join();
    unlink(m_path.c_str());
    return messages;
  }

 private:
  static Bytes serve(int server, const Bytes& reply) {
    const FileDescriptor client(UnixDomain::acceptClient(server));
    Bytes message(2000);
    const ssize_t count = read(client.get(), message.data(), message.size());
    message.resize(count > 0 ? static_cast<size_t>(count) : 0);
    EXPECT_EQ(send(client.get(), reply.data(), reply.size(), MSG_NOSIGNAL), static_cast<ssize_t>(reply.size()));
    return message;
  }

  std::string m_directory = "/tmp/tmxXXXXXX";
  std::string m_path;
};

Bytes packet(int32_t command, int32_t argument, int32_t id, int32_t value) {
  Bytes bytes(ParamPacket::kSize);
  size_t offset = 0;
  for (const int32_t word : {command, argument, id, value}) {
    putWord(bytes, offset, static_cast<uint32_t>(word));
    offset += 4;
  }
  return bytes;
}

struct PitcherCase {
  const char* name;
  int32_t (*operation)(const ParamPitcher&);
  Bytes request;
  /** Results for a reply with 2, 3, 5 and any other verdict, all with id 77 and value 88; and for no reply. */
  int32_t success, refused, failure, other, silence;
};

TEST(ParamPitcher, RequestsAndResults) {
  using P = const ParamPitcher&;
  const PitcherCase cases[] = {
      {"getInt", [](P p) { return p.getInt(0x1000); }, packet(0, 0, 0x1000, 0), 88, 77, -500, 77, -500},
      {"putInt", [](P p) { return p.putInt(5, -6); }, packet(1, 0, 5, -6), 200, 77, -500, 77, -500},
      {"putIntArg", [](P p) { return p.putIntArg(5, 6); }, packet(1, 1, 5, 6), 77, 77, -500, 77, -500},
      {"putString", [](P p) { return p.putString(5, "ab"); }, packet(1, 0, 5, 0x6261), 200, 77, -500, 77, -500},
      {"putRestart", [](P p) { return p.putRestart(3); }, packet(4, 0, 0, 3), 200, -405, -500, -500, -500},
      {"getStatus", [](P p) { return p.getStatus(); }, packet(6, 0, 0, 0), 77, 77, -500, 77, -500},
      {"stealth", [](P p) { return p.putLedCommand("stealth", "on"); }, packet(8, 0, 0, 0), 200, 200, 200, 200, -500},
      {"identify", [](P p) { return p.putLedCommand("identify", "off"); }, packet(8, 3, 0, 0), 200, 200, 200, 200,
       -500},
      {"green", [](P p) { return p.putLedCommand("green", "on"); }, packet(8, 4, 0, 0), 200, 200, 200, 200, -500},
      {"orange", [](P p) { return p.putLedCommand("orange", "x"); }, packet(8, 7, 0, 0), 200, 200, 200, 200, -500},
      {"color", [](P p) { return p.putImageMode("color"); }, packet(9, 8, 0, 0), 200, 200, 200, 200, -500},
      {"bw", [](P p) { return p.putImageMode("bw"); }, packet(9, 9, 0, 0), 200, 200, 200, 200, -500},
      {"encoder", [](P p) { return p.putEncoderChange(); }, packet(12, 0, 0, 0), 200, 200, 200, 200, -500},
  };
  Neighbour recorder;
  const ParamPitcher pitcher(recorder.path());
  for (const PitcherCase& c : cases) {
    const struct {
      Bytes reply;
      int32_t result;
    } replies[] = {{packet(2, 0, 77, 88), c.success},
                   {packet(3, 0, 77, 88), c.refused},
                   {packet(5, 0, 77, 88), c.failure},
                   {packet(0, 0, 77, 88), c.other},
                   {{}, c.silence},
                   {Bytes(1011, 2), c.silence}};
    for (const auto& reply : replies) {
      const auto requests =
          recorder.answer({reply.reply}, [&] { EXPECT_EQ(c.operation(pitcher), reply.result) << c.name; });
      EXPECT_EQ(requests.front(), c.request) << c.name;
    }
    EXPECT_EQ(c.operation(pitcher), -500) << c.name << " with nobody there";
  }
}

TEST(ParamPitcher, AnUnknownImageModeSendsNothing) {
  Neighbour recorder;
  const auto requests =
      recorder.answer({}, [&] { EXPECT_EQ(ParamPitcher(recorder.path()).putImageMode("grey"), -500); });
  EXPECT_TRUE(requests.empty());
}

TEST(ParamPitcher, GetString) {
  Bytes text = packet(2, 0, 77, 0);
  text[12] = 'o';
  text[13] = 'k';
  const struct {
    Bytes reply;
    const char* text;
    int32_t result;
  } cases[] = {{text, "ok", 200}, {packet(5, 0, 77, 88), "", -500}, {packet(3, 0, -457, 88), "", -457}, {{}, "", -500}};
  Neighbour recorder;
  for (const auto& c : cases) {
    recorder.answer({c.reply}, [&] {
      int32_t result = 0;
      EXPECT_EQ(ParamPitcher(recorder.path()).getString(1, &result), c.text);
      EXPECT_EQ(result, c.result);
    });
  }
}

TEST(ParamPitcherDetection, PutString) {
  Neighbour detection;
  const ParamPitcherDetection pitcher(detection.path());
  const struct {
    std::string text;
    Bytes reply;
    int32_t result;
  } cases[] = {
      {"on", Bytes(68), 200},
      {std::string(64, 'a'), Bytes(4), 200},  // a short answer counts
      {"on", Bytes(68, 1), -500},
  };
  for (const auto& c : cases) {
    const auto requests = detection.answer({c.reply}, [&] { EXPECT_EQ(pitcher.putString(0x102, c.text), c.result); });
    Bytes request(68);
    putWord(request, 0, 0x102);
    std::copy_n(c.text.begin(), std::min<size_t>(c.text.size(), 63), request.begin() + 4);
    EXPECT_EQ(requests.front(), request);
  }
  EXPECT_EQ(pitcher.putString(1, "on"), -500);
}

Bytes response(const std::string& text) {
  Bytes bytes(4 + text.size());
  putWord(bytes, 0, static_cast<uint32_t>(text.size()));
  std::copy(text.begin(), text.end(), bytes.begin() + 4);
  return bytes;
}

TEST(Session, Requests) {
  Neighbour daemon;
  const Session session(daemon.path());
  const struct {
    std::string (*operation)(const Session&);
    Bytes request;
  } cases[] = {
      {[](const Session& s) { return s.getTotalBitrate(); }, {4, 0, 0, 0, 5, 0, 0, 0}},
      {[](const Session& s) { return s.getSendingBitrate(22); }, {8, 0, 0, 0, 7, 0, 0, 0, 22, 0, 0, 0, 0, 0, 0, 0}},
      {[](const Session& s) { return s.getCodecCount("h264"); },
       {8, 0, 0, 0, 42, 0, 0, 0, 'h', '2', '6', '4', 0, 0, 0, 0}},
      {[](const Session& s) { return s.getCodecCount("mpeg4"); },
       {9, 0, 0, 0, 42, 0, 0, 0, 'm', 'p', 'e', 'g', '4', 0, 0, 0, 0}},
  };
  for (const auto& c : cases) {
    const auto requests = daemon.answer({response("x")}, [&] { EXPECT_EQ(c.operation(session), "x"); });
    EXPECT_EQ(requests.front(), c.request);
  }
}

TEST(Session, Responses) {
  Bytes promising = response("half");
  putWord(promising, 0, 0xffffffff);
  const struct {
    Bytes reply;
    std::string text;
  } cases[] = {
      {response("1500"), "1500"},
      {response(std::string("15\0junk", 7)), "15"},
      {response(std::string(1, '\0')), ""},
      {response(""), ""},
      {response("1\r\nsystem.guid=2&200 OK"), ""},  // would stand as a line of its own in the client's answer
      {response("1\n"), ""},
      {response(std::string(5000, 'a')), std::string(5000, 'a')},  // longer than one step of reading
      {promising, ""},
      {response(std::string(64 * 1024, 'a')), std::string(64 * 1024, 'a')},
      {response(std::string(64 * 1024 + 1, 'a')), ""},  // nobody has that much to say
      {{1, 0}, ""},
      {{}, ""},
  };
  Neighbour daemon;
  for (const auto& c : cases) {
    daemon.answer({c.reply}, [&] { EXPECT_EQ(Session(daemon.path()).getTotalBitrate(), c.text); });
  }
  EXPECT_EQ(Session(daemon.path()).getTotalBitrate(), "");
}

TEST(Session, CountsTheSessionsOfThreeCodecs) {
  Neighbour daemon;
  const auto requests = daemon.answer({response("3"), response("20"), response("100")},
                                      [&] { EXPECT_EQ(Session(daemon.path()).getSessionCount(), "123"); });
  std::string codecs;
  for (const Bytes& request : requests)
    codecs += std::string(request.begin() + 8, request.end() - 4) + " ";
  EXPECT_EQ(codecs, "jpeg h264 mpeg4 ");
  daemon.answer({response("3"), {}, response("nonsense")},
                [&] { EXPECT_EQ(Session(daemon.path()).getSessionCount(), "3"); });
}

TEST(Session, PutsTheActionOfTheBrokenPipeBack) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  struct sigaction before {};
  sigaction(SIGPIPE, &action, &before);
  Neighbour daemon;
  static_cast<void>(Session(daemon.path()).getTotalBitrate());
  daemon.answer({response("1")}, [&] { static_cast<void>(Session(daemon.path()).getTotalBitrate()); });
  struct sigaction after {};
  sigaction(SIGPIPE, &before, &after);
  EXPECT_EQ(after.sa_handler, action.sa_handler);
}

/** Commands, and what is made of the two bytes of each answer. */
TEST(DefectDaemon, RequestsAndResults) {
  using D = const DefectDaemon&;
  const auto number = [](const std::optional<int32_t>& count) { return count ? std::to_string(*count) : "none"; };
  constexpr auto kStatic = DefectDaemon::Search::StaticDefects;
  constexpr auto kPattern = DefectDaemon::Search::FixedPattern;
  const struct {
    DefectDaemon::Search search;
    std::string (*operation)(D);
    std::vector<Bytes> replies;
    std::vector<Bytes> requests;
    std::string result;
  } cases[] = {
      {kStatic, [](D d) { return std::to_string(d.stop()); }, {{1, 0}}, {{0x10}}, "0"},
      {kStatic, [](D d) { return std::to_string(d.start()); }, {{2, 0}}, {{0x11}}, "-1"},
      {kPattern, [](D d) { return std::to_string(d.stop()); }, {{0, 1}}, {{0x12}}, "-1"},
      {kPattern, [](D d) { return std::to_string(d.start()); }, {{1, 9}}, {{0x13}}, "0"},
      {kPattern, [](D d) { return std::to_string(d.start()); }, {{1}}, {{0x13}}, "-1"},
      {kStatic, [](D d) { return std::to_string(d.stopIfAdjusting()); }, {{0x21, 0}, {1, 0}}, {{0x20}, {0x10}}, "0"},
      {kStatic, [](D d) { return std::to_string(d.stopIfAdjusting()); }, {{0x22, 0}}, {{0x20}}, "0"},
      {kPattern, [](D d) { return std::to_string(d.startUnlessAdjusting()); }, {{0x21, 0}}, {{0x21}}, "0"},
      {kPattern,
       [](D d) { return std::to_string(d.startUnlessAdjusting()); },
       {{0x20, 0}, {2, 0}},
       {{0x21}, {0x13}},
       "-1"},
      {kStatic, [](D d) { return d.status(); }, {{0x20, 12}}, {{0x20}}, "completed"},
      {kPattern, [](D d) { return d.status(); }, {{0x21, 12}}, {{0x21}}, "adjusting"},
      {kStatic, [](D d) { return d.status(); }, {{0x22, 12}}, {{0x20}}, "error"},
      {kStatic, [](D d) { return d.status(); }, {{0x23, 12}}, {{0x20}}, "error"},
      {kStatic, [](D d) { return d.statusDetail(); }, {{0x20, 255}}, {{0x20}}, "completed(255)"},
      {kStatic, [](D d) { return d.statusDetail(); }, {{0x21, 12}}, {{0x20}}, "adjusting"},
      {kPattern, [](D d) { return d.statusDetail(); }, {{0x22, 3}}, {{0x21}}, "error(3)"},
      {kPattern, [](D d) { return d.statusDetail(); }, {{0, 3}}, {{0x21}}, "error"},
      {kStatic, [](D d) { return std::to_string(d.count().value_or(-1)); }, {{0x2c, 1}}, {{0x30}}, "300"},
      {kPattern, [](D d) { return std::to_string(d.count().value_or(-1)); }, {{0xff, 0xff}}, {{0x31}}, "65535"},
  };
  Neighbour daemon;
  for (const auto& c : cases) {
    const DefectDaemon client(c.search, daemon.path());
    const auto requests = daemon.answer(c.replies, [&] { EXPECT_EQ(c.operation(client), c.result); });
    EXPECT_EQ(requests, c.requests) << c.result;
  }
  const DefectDaemon alone(kStatic, daemon.path());
  EXPECT_EQ(alone.status() + "," + alone.statusDetail() + "," + number(alone.count()), ",error,none");
  EXPECT_EQ(alone.start() + alone.stopIfAdjusting() + alone.startUnlessAdjusting(), -3);
}

}  // namespace
