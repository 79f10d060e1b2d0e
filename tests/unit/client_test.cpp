#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <tuple>

#include "cli/Client.h"
#include "cli/Description.h"
#include "cli/Item.h"
#include "cli/Json.h"

namespace tmx {
namespace {

using namespace std::chrono_literals;

TEST(ClientValue, TravelsEscapedAndComesBack) {
  const struct {
    std::string plain;
    std::string wire;
  } cases[] = {{"", "%00"},        {"plain text", "plain text"}, {"a&b", "a%26b"},
               {"100%", "100%25"}, {"\"q\"", "%22q%22"},         {"%26", "%2526"},
               {"%00", "%2500"},   {"a=b+c", "a=b+c"},           {"\xe6\x97\xa5", "\xe6\x97\xa5"}};
  for (const auto& c : cases) {
    EXPECT_EQ(escapeValue(c.plain), c.wire);
    EXPECT_EQ(unescapeValue(c.wire), c.plain);
  }
}

TEST(ClientValue, ForeignEscapesStayAsTheyAre) {
  for (const std::string wire : {"%", "%2", "%41", "%%", "x%0", "a%00b"})
    EXPECT_EQ(unescapeValue(wire), wire);
  EXPECT_EQ(unescapeValue("%%25"), "%%");
}

TEST(ClientFrame, IsLaidOutByteByByte) {
  EXPECT_EQ(requestFrame(UserClass::kOnvif, LineEnd::kPlain, "a=b"), std::string("\x05\0\0\0\x03\x01"
                                                                                 "a=b",
                                                                                 9));
  EXPECT_EQ(requestFrame(UserClass::kAdmin, LineEnd::kHtml, std::string(1024, 'x')).substr(0, 6),
            std::string("\x02\x04\0\0\0\0", 6));
  EXPECT_EQ(frameLength("\x01\x02\x03\xff"), 0xff030201U);
}

std::vector<Item> readsOf(std::initializer_list<const char*> paths) {
  std::vector<Item> items;
  for (const char* path : paths)
    items.push_back(Item::read(path));
  return items;
}

TEST(ClientAnswer, OneLineForEachItem) {
  const struct {
    Item item;
    std::string line;
    int status;
    std::string value;
    std::string text;
    std::string hint;
  } cases[] = {{Item::read("system.model"), "system.model=KT-A10&200 OK", 200, "KT-A10", "OK", ""},
               {Item::read("camera.id"), "camera.id=&200 OK", 200, "", "OK", ""},
               {Item::read("camera.id"), "camera.id=a=b&999 &200 OK", 200, "a=b&999 ", "OK", ""},
               {Item::read("x"), "x&461 Command Not Found", 461, "", "Command Not Found", ""},
               {Item::write("encode(1).type", "jpeg"), "encode(1).type&202 Accepted(encode(1).status=restart)", 202, "",
                "Accepted", "encode(1).status=restart"},
               {Item::write("a", "b"), "a&202 Accepted", 202, "", "Accepted", ""},
               {Item::read("a"), "no status here", 0, "", "", ""},
               {Item::read("a"), "a=b&20 OK", 0, "b&20 OK", "", ""}};
  std::vector<Item> items;
  std::string text;
  for (const auto& c : cases) {
    items.push_back(c.item);
    text += c.line + "\r\n";
  }
  const std::vector<Answer> answers = parseAnswers(items, text);
  ASSERT_EQ(answers.size(), std::size(cases));
  for (std::size_t i = 0; i < answers.size(); ++i) {
    SCOPED_TRACE(cases[i].line);
    const auto& [item, line, status, value, statusText, hint] = cases[i];
    EXPECT_EQ(std::tie(answers[i].path, answers[i].lines, answers[i].status, answers[i].value, answers[i].statusText,
                       answers[i].hint),
              std::tie(item.path, line, status, value, statusText, hint));
    EXPECT_EQ(answers[i].accepted(), status == 200 || status == 202);
  }
}

TEST(ClientAnswer, AnAnswerOfManyLinesStaysWithItsItem) {
  const std::vector<Answer> answers = parseAnswers(readsOf({"a", "log", "log", "log", "z"}),
                                                   "a=1&200 OK\r\n"
                                                   "log=&200 OK\r\nalive\r\n\r\nz is no answer &404 Not Found\r\n"
                                                   "log=one&200 OK\r\ntwo\r\n"
                                                   "log=first\r\nlast&200 OK\r\n"
                                                   "z&461 Command Not Found\r\n");
  ASSERT_EQ(answers.size(), 5U);
  const char* values[] = {"1", "alive\n\nz is no answer &404 Not Found", "one\ntwo", "first\nlast", ""};
  for (std::size_t i = 0; i < answers.size(); ++i) {
    EXPECT_EQ(answers[i].value, values[i]);
    EXPECT_EQ(answers[i].status, i == 4 ? 461 : 200);
  }
}

TEST(ClientAnswer, AnItemWithoutAnAnswerHasNoStatus) {
  const std::vector<Answer> answers = parseAnswers(readsOf({"a", "b"}), "a=1&200 OK\r\n");
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_TRUE(answers[0].accepted());
  EXPECT_FALSE(answers[1].accepted());
  EXPECT_TRUE(parseAnswers({}, "x\r\n").empty());
}

TEST(ClientRequest, IsSplitAtItemsAndAtBytes) {
  const auto sizes = [](const std::vector<Item>& items) {
    std::vector<std::size_t> result;
    for (const auto& request : splitRequests(items)) {
      EXPECT_LE(requestText(request).size(), kMaxText);
      result.push_back(request.size());
    }
    return result;
  };
  const Item half = Item::write("a", std::string(510, 'x'));      // with the "=" 512 bytes
  const Item halfLess = Item::write("a", std::string(509, 'x'));  // two with their "&" fill a frame
  using Sizes = std::vector<std::size_t>;
  EXPECT_EQ(sizes({}), Sizes{});
  EXPECT_EQ(sizes(std::vector<Item>(15, Item::read("a"))), Sizes{15});
  EXPECT_EQ(sizes(std::vector<Item>(31, Item::read("a"))), (Sizes{15, 15, 1}));
  EXPECT_EQ(sizes({half, halfLess}), Sizes{2});
  EXPECT_EQ(sizes({half, half}), (Sizes{1, 1}));
  EXPECT_EQ(sizes({Item::read("a"), Item::read("system.session"), Item::read("system.session.sending_max")}),
            (Sizes{1, 1, 1}));
  EXPECT_EQ(requestText({Item::read("a"), Item::write("b", "c"), Item::read("d")}), "a&b=c&d");
}

/** Answers the first connection with the bytes, or with silence until the client leaves. */
class OneAnswer {
 public:
  OneAnswer(std::string bytes, bool staysOpen)
      : m_path(testing::TempDir() + "client_test." + std::to_string(getpid())) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    m_path.copy(address.sun_path, sizeof address.sun_path - 1);
    unlink(m_path.c_str());
    m_listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(bind(m_listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(m_listener, 1), 0);
    m_thread = std::thread([this, bytes = std::move(bytes), staysOpen] {
      const int fd = accept(m_listener, nullptr, nullptr);
      char request[64];
      const ssize_t got = read(fd, request, sizeof request);
      m_request.assign(request, got > 0 ? static_cast<std::size_t>(got) : 0);
      for (const char c : bytes)
        if (send(fd, &c, 1, MSG_NOSIGNAL) != 1) break;  // the client has heard enough
      while (staysOpen && read(fd, request, sizeof request) > 0) {
      }
      close(fd);
    });
  }
  ~OneAnswer() {
    finish();
    close(m_listener);
    unlink(m_path.c_str());
  }
  const std::string& request() {
    finish();
    return m_request;
  }
  const std::string& path() const { return m_path; }

 private:
  void finish() {
    if (m_thread.joinable()) m_thread.join();
  }

  std::string m_path;
  std::string m_request;
  int m_listener = -1;
  std::thread m_thread;
};

TEST(ClientExchange, TellsWhatBecameOfARequest) {
  const struct {
    std::string name;
    std::string bytes;
    bool staysOpen;
    Outcome outcome;
    std::string text;
  } cases[] = {{"whole answer", std::string("\x05\0\0\0a&b\r\n", 9), false, Outcome::kAnswered, "a&b\r\n"},
               {"more than announced", std::string("\x01\0\0\0abc", 7), false, Outcome::kAnswered, "a"},
               {"closed at once", "", false, Outcome::kNoAnswer, ""},
               {"cut length", std::string("\x05\0", 2), false, Outcome::kNoAnswer, ""},
               {"cut text", std::string("\x05\0\0\0a&b", 7), false, Outcome::kNoAnswer, ""},
               {"length of nothing", std::string("\0\0\0\0", 4), true, Outcome::kNoAnswer, ""},
               {"length of garbage", "HTTP", true, Outcome::kNoAnswer, ""},
               {"silent", "", true, Outcome::kTimedOut, ""},
               {"silent behind the length", std::string("\x05\0\0\0a", 5), true, Outcome::kTimedOut, ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    OneAnswer server(c.bytes, c.staysOpen);
    const Reply reply = Client(server.path(), 200ms).exchange(UserClass::kUser, LineEnd::kPlain, "a=b");
    EXPECT_EQ(reply.outcome, c.outcome);
    if (c.outcome == Outcome::kAnswered) {
      EXPECT_EQ(reply.text, c.text);
    }
    EXPECT_EQ(server.request(), std::string("\x05\0\0\0\x02\x01"
                                            "a=b",
                                            9));
  }
}

TEST(ClientExchange, WithoutAServerThereIsNoConnection) {
  for (const std::string& path : {testing::TempDir() + "nobody.here", std::string(200, 'x')}) {
    const Reply reply = Client(path, 200ms).exchange(UserClass::kAdmin, LineEnd::kPlain, "a");
    EXPECT_EQ(reply.outcome, Outcome::kNoConnection);
    EXPECT_FALSE(reply.text.empty());
  }
}

/** Three parameters as the description of a build has them, with every kind of selector. */
constexpr const char* kDocument =
    R"({"version": 1, "shortNames": {"periph": "peripheral"}, "hiddenRows": [], "parameters": [
  {"path": "peripheral.serial.baud", "summary": "Speed.", "unit": "bit/s", "setting": true,
   "rights": {"administrator": "RW", "operator": "R-", "user": "R-"},
   "selectors": [{"layer": "peripheral.serial", "text": "1 to 2", "values": ["1", "2"], "needs": "feature SERIAL"}],
   "conditions": [{"of": "writes", "text": "while it rests"}],
   "takes": {"kind": "list", "text": "1200, 2400, + or -", "numbers": [1200, 2400], "steps": true}},
  {"path": "peripheral.serial.baud.status", "summary": "State.", "commands": [{"word": "save"}, {"word": "load"}],
   "rights": {"administrator": "-W", "operator": "-W", "user": "--"},
   "selectors": [{"layer": "peripheral.serial", "text": "1 to 2", "values": ["1", "2"]},
                 {"layer": "peripheral.serial.baud", "text": "any", "values": [""]}]},
  {"path": "system.disk", "summary": "Disk.", "rights": {"administrator": "--", "operator": "--", "user": "--"},
   "selectors": [{"layer": "system.disk", "text": "1", "values": ["1"], "refusedWithout": 461}]}]})";

TEST(ClientDescription, FindsNodesByPathsWithSelectorsAndShortNames) {
  const Description description = Description::parse(kDocument);
  const auto paths = [&](const char* path) {
    std::vector<std::string> paths;
    for (const Node& node : description.below(path))
      paths.push_back(std::to_string(node.depth) + node.path + (node.parameter == nullptr ? "" : "!"));
    return paths;
  };
  using Texts = std::vector<std::string>;
  EXPECT_EQ(paths(""), (Texts{"0peripheral", "1peripheral.serial", "2peripheral.serial.baud!",
                              "3peripheral.serial.baud.status!", "0system", "1system.disk!"}));
  EXPECT_EQ(paths("periph.serial(2).baud"), (Texts{"2peripheral.serial.baud!", "3peripheral.serial.baud.status!"}));
  EXPECT_EQ(paths("system.dis"), Texts());
  EXPECT_EQ(description.find("peripheral.serial"), nullptr);
  const Parameter* status = description.find("periph.serial(1).baud(x).status");
  ASSERT_NE(status, nullptr);
  EXPECT_EQ(expandSelectors(*status), (Texts{"peripheral.serial(1).baud.status", "peripheral.serial(2).baud.status"}));
  for (const char* text : {"", "{}", "[1]", R"({"version": 2})"})
    EXPECT_THROW(static_cast<void>(Description::parse(text)), nlohmann::json::exception) << text;
}

TEST(ClientDescription, SaysInWordsWhoMayAndWhatIsTaken) {
  const Description description = Description::parse(kDocument);
  const Parameter& baud = *description.find("peripheral.serial.baud");
  const Parameter& status = *description.find("peripheral.serial.baud.status");
  const Parameter& disk = *description.find("system.disk");
  EXPECT_EQ(rightsInWords(baud), "readable by all, writable by administrators only");
  EXPECT_EQ(rightsInWords(status), "readable by nobody, writable by administrators and operators");
  EXPECT_TRUE(mayWrite(baud, UserClass::kOnvif) && mayRead(baud, UserClass::kUser));
  EXPECT_FALSE(mayWrite(baud, UserClass::kOperator) || mayRead(disk, UserClass::kDebug));
  const std::vector<std::tuple<const Parameter*, int, std::string>> reasons = {
      {&baud, 401, "readable by all, writable by administrators only"},
      {&baud, 457, "1200, 2400, + or - (bit/s)"},
      {&baud, 412, "only while it rests"},
      {&baud, 456, "peripheral.serial(1 to 2)"},
      {&baud, 461, "only with feature SERIAL"},
      {&baud, 500, ""},
      {&status, 451, "does: save, load"},
      {&disk, 461, "only as system.disk(1)"},
      {&disk, 451, ""}};
  for (const auto& [parameter, code, text] : reasons)
    EXPECT_EQ(reason(*parameter, code), text) << code;
}

TEST(ClientJson, EveryByteGivesValidText) {
  EXPECT_EQ(jsonString("a\"\\\n\x01"), R"("a\"\\\u000a\u0001")");
  EXPECT_EQ(jsonString("\xe6\x97\xa5"), "\"\xe6\x97\xa5\"");
  EXPECT_EQ(jsonString("\xff\xe6\x97"), R"("\u00ff\u00e6\u0097")");
  EXPECT_EQ(jsonString("\xed\xa0\x80\xc0\x80"), R"("\u00ed\u00a0\u0080\u00c0\u0080")");
  EXPECT_EQ(jsonString("\x7f"), "\"\x7f\"");
}

}  // namespace
}  // namespace tmx
