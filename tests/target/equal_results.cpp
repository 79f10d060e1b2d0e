// The same requests to this machine's daemon and to the one built for another machine (TMX_DAEMON), each in a camera of
// its own: every answer, every file, and all that the closed library, the neighbours and the child programs got are the
// same, byte by byte. The usual run asks of every parameter a spread of the values, TMX_LONG=1 all of them.

#include <algorithm>
#include <deque>
#include <fstream>
#include <future>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "cli/Description.h"
#include "tests/camera/Camera.h"
#include "tests/camera/Description.h"
#include "tests/camera/PowerCut.h"

namespace test {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kUsual = 8;  // of a list, in the usual run

/** What shows the moment. */
const std::set<std::string> kLive = {"system.hardware.cpu.utilization", "system.date", "system.log"};

/** Numbers at the ends of what 32 bits, 64 bits and a float hold, in every form that a parser may take for a number. */
const Texts& extremes() {
  static const Texts values = {
      // 2^31, 2^32, 2^63, 2^64 and their neighbours
      "2147483647", "2147483648", "-2147483648", "-2147483649", "4294967295", "4294967296", "4294967297", "-4294967295",
      "9223372036854775807", "9223372036854775808", "-9223372036854775809", "18446744073709551615",
      "18446744073709551617",
      // long ones
      std::string(40, '9'), "-" + std::string(40, '9'), std::string(300, '0') + "1", std::string(300, '1') + ".5",
      // with a fraction or an exponent
      "2147483647.5", "4294967296.0", "16777217.0", "0.1", "1.00000006", "-0.0", "1e9", "1e10", "3.4028236e38", "1e-46",
      "-1e400", "nan", "inf",
      // hexadecimal
      "7fffffff", "80000000", "ffffffff", "1ffffffff", "0x7fffffff", "%ff%80%7f", "\x80\xff",
      // dates around the ends of a signed and of an unsigned count of 32 bits, and far away
      "20380119031407", "20380119031408", "20380119115959", "20400229120000", "21060207062815", "21060207062816",
      "99991231235959", "19700101000000", "19011213204551", "00000101000000",
      // the smallest ones, signs and joints
      "0", "-0", "-1", "1", "+1", "--1", "+x2147483648.0", "x4294967297", "1,4294967297", "4294967297,-1",
      "0,0,4294967296,4294967296", "255.255.255.256", "4294967297.0.0.1", "::ffff:ffff:ffff:fffff"};
  return values;
}

/** What comes behind the last value: the commands, and the request that takes over what is staged. */
Texts ordersOf(const Json& parameter) {
  const std::string path = tmx::expandSelectors(parameter).front();
  constexpr const char* kRestart = "the camera";  // that is left for the end
  Texts orders;
  for (const Json& command : parameter.value("commands", Json::array()))
    if (command.value("stops", "") != kRestart) orders.push_back(path + "=" + command["word"].get<std::string>());
  if (parameter.contains("commit") && parameter.value("commitStops", "") != kRestart)
    orders.push_back(parameter["commit"]);
  return orders;
}

/** Its own good and bad values and the extremes, each read behind it, and extreme numbers between its brackets. */
Texts requestsOf(const Json& parameter) {
  const Texts paths = tmx::expandSelectors(parameter);
  Texts values;
  if (parameter.contains("takes")) {
    for (const Drawn& drawn : draw(parameter))
      values.push_back(drawn.value);
  }
  values.insert(values.end(), extremes().begin(), extremes().end());
  Texts requests;
  for (size_t i = 0; i < values.size(); ++i) {
    const std::string& path = paths[i % paths.size()];
    requests.push_back(path + "=" + values[i] + (kLive.contains(path) ? "" : "&" + path));
  }
  const size_t open = paths.front().find('(');
  if (open == std::string::npos) return requests;
  for (const char* number : {"4294967297", "2147483648", "-4294967295", "18446744073709551617", "00000000001"})
    requests.push_back(std::string(paths.front()).replace(open + 1, paths.front().find(')') - open - 1, number));
  return requests;
}

/** A camera, and of each part of it what it has got and nobody has compared yet. */
struct Side {
  Camera camera;
  std::map<std::string, std::deque<std::string>> heard = {};
  std::streamoff read = 0;

  [[nodiscard]] bool isEmulated() const {
    return camera.isOn() && camera.read("sandbox-output").ends_with(", emulated)\n");
  }

  /** What the daemon has said in the log, without the times and the numbers of processes. */
  [[nodiscard]] Texts logged() const {
    Texts lines;
    std::istringstream log(camera.log());
    for (std::string line; std::getline(log, line);)
      if (line.find(" tmxd[") != std::string::npos) lines.push_back(line.substr(line.find("]: ")));
    return lines;
  }

  /** Reads on in the journal, without the time of day; the end of a program is its own affair. */
  void listen() {
    static const std::regex moment("\"t\":[0-9.]+,");
    camera.tell("gpio show");  // behind which all that was sent has been dealt with
    std::ifstream journal(camera.path("journal.jsonl"), std::ios::binary);
    journal.seekg(read);
    for (std::string line; std::getline(journal, line) && !journal.eof(); read = journal.tellg())
      if (!Camera::field(line, "what").ends_with(" ends"))
        heard[Camera::field(line, "who")].push_back(std::regex_replace(line, moment, ""));
  }
};

/** Two cameras that differ in their daemon's machine alone. */
class Pair {
 public:
  bool up() {
    const auto isUp = both([](Side& side) { return side.camera.up(); });
    if (!isUp[0] || !isUp[1]) return false;
    EXPECT_FALSE(m_native.isEmulated());
    EXPECT_TRUE(m_other.isEmulated());
    // What moves by itself would be somewhere else in each.
    for (const Side* side : {&m_native, &m_other}) {
      side->camera.tell("gpio run=3600000");
      side->camera.tell("ptz time=stop");
    }
    return true;
  }

  /** Gives the other what the one has of its own. */
  void makeTwins() {
    both([](Side& side) { return side.camera.ask("system.guid"); });
    for (const char* file : {"flash/lighttpd/server.pem", "sysinfo/uuid"})
      m_other.camera.write(file, m_native.camera.read(file));
  }

  /** Boots both with this number in every row that has one. */
  void bootWith(const std::string& number) {
    static const std::regex row("=-?[0-9.]+\n");
    both([&](Side& side) {
      side.camera.down();
      for (const auto& [path, content] : filesOf(side.camera))
        if (isOfStore(path)) side.camera.write(path, std::regex_replace(content, row, "=" + number + "\n"));
      return 0;
    });
    EXPECT_TRUE(up()) << number;
    compareWorlds(number);
  }

  void tell(const std::string& words) {
    both([&](Side& side) { return side.camera.tell(words); });
  }

  /** Asks both at the same time. */
  void take(const Texts& requests) {
    const auto answers = both([&](Side& side) {
      Texts lines;
      for (const std::string& request : requests)
        lines.push_back(side.camera.ask(request));
      return lines;
    });
    for (size_t i = 0; i < requests.size(); ++i)
      EXPECT_EQ(answers[0][i], answers[1][i]) << requests[i];
    m_sent += requests.size();
    compareWorlds(requests.front());
  }

  /** Restarts both behind the request. */
  void restart(const std::string& request) {
    const auto back = both([&](Side& side) { return side.camera.restartsBehind(request); });
    EXPECT_TRUE(back[0] && back[1]) << request;
    compareWorlds(request);
  }

  /** Behind the last request: nobody has got anything that the other has not, and the logs say the same. */
  void compareRest() {
    EXPECT_TRUE(eventually([this] {
      compareHeard();
      return std::ranges::all_of(m_native.heard, [](const auto& part) { return part.second.empty(); }) &&
             std::ranges::all_of(m_other.heard, [](const auto& part) { return part.second.empty(); });
    })) << testing::PrintToString(m_native.heard)
        << testing::PrintToString(m_other.heard);
    EXPECT_TRUE(eventually([this] { return m_native.logged() == m_other.logged(); }));
    EXPECT_EQ(m_native.logged(), m_other.logged());
  }

  [[nodiscard]] size_t sent() const { return m_sent; }

 private:
  template <class Action>
  std::array<std::invoke_result_t<Action, Side&>, 2> both(Action action) {
    auto native = std::async(std::launch::async, action, std::ref(m_native));
    auto other = action(m_other);
    return {native.get(), other};
  }

  void compareWorlds(const std::string& behind) {
    SCOPED_TRACE("behind " + behind);
    compareHeard();
    auto files = both([](Side& side) { return comparable(filesOf(side.camera)); });
    for (const std::string& path : difference(files[0], files[1]))
      EXPECT_EQ(files[0][path], files[1][path]) << path;
  }

  /** As far as both have come: what a thread or a child program tells comes when it comes. */
  void compareHeard() {
    m_native.listen();
    m_other.listen();
    for (auto& [who, lines] : m_native.heard) {
      std::deque<std::string>& others = m_other.heard[who];
      for (; !lines.empty() && !others.empty(); lines.pop_front(), others.pop_front())
        EXPECT_EQ(lines.front(), others.front());
    }
  }

  Side m_native{Camera({.isNative = true})};
  Side m_other{Camera()};
  size_t m_sent = 0;
};

/** One way to every parameter. */
Texts reads() {
  Texts paths;
  for (const Json& parameter : description()["parameters"])
    if (!kLive.contains(parameter["path"])) paths.push_back(tmx::expandSelectors(parameter).front());
  return paths;
}

class EqualResults : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_cameras.up());
    m_cameras.makeTwins();
  }
  void TearDown() override {
    m_cameras.compareRest();
    std::printf("%zu requests\n", m_cameras.sent());
  }

  Pair m_cameras;
};

TEST_F(EqualResults, OfEveryParameterWithEveryExtremeValue) {
  size_t offset = 0;
  for (const Json& parameter : description()["parameters"]) {
    Texts requests = spread(requestsOf(parameter), kUsual, offset++);
    const Texts orders = ordersOf(parameter);
    requests.insert(requests.end(), orders.begin(), orders.end());
    m_cameras.take(requests);
    ASSERT_FALSE(HasFailure()) << "what follows would differ too";
  }
  m_cameras.restart("system.status=restart");
  m_cameras.take(reads());
}

TEST_F(EqualResults, OfStartsWithExtremeNumbersInTheFiles) {
  for (const std::string& number :
       spread({"4294967297", "2147483648", "-2147483649", "1e10", "0.1", std::string(40, '9')}, 3, 0)) {
    m_cameras.bootWith(number);
    m_cameras.take(reads());
    ASSERT_FALSE(HasFailure()) << number;
  }
}

TEST_F(EqualResults, OfASequencerThatAnswersWithExtremeNumbers) {
  const Texts requests = {"camera.motion.pan",
                          "camera.motion.tilt",
                          "camera.motion.zoom",
                          "camera.motion.pan=+10",
                          "camera.motion.tilt=-10",
                          "camera.motion.zoom=+10",
                          "camera.motion.zoom=-x1.5",
                          "camera.position(3).status=save",
                          "camera.position(3).status=goto",
                          "camera.position(3).pan",
                          "camera.position(3).tilt",
                          "camera.position(3).zoom"};
  for (const char* number : {"2147483648", "-2147483649", "4294967297", "9223372036854775807", "1e30", "0.1"}) {
    m_cameras.tell("ptz pan=" + std::string(number) + " tilt=" + number + " zoom=" + number);
    m_cameras.take(requests);
  }
}

}  // namespace
}  // namespace test
