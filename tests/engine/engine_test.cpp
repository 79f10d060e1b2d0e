// The rule engine, walked word by word with a toy tree. The process has /mnt and /tmp of its own, so that the store's
// files are real.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "config/Initialising.h"
#include "tests/engine/PrivateFolders.h"
#include "tree/CManBase.h"
#include "tree/Commit.h"

namespace {

constexpr const char* kFile = "/mnt/flash/sysconfig/network.conf";
constexpr const char* kKey = "NTP_HOST=";

/** What the functions of the toy rules saw: their name, and the stored texts at that moment. */
std::vector<std::string> trace;
/** What the toy functions answer, by their name. */
std::map<std::string, int32_t> results;

std::string inFile() {
  std::ifstream file(kFile);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(kKey)) return line.substr(std::string_view(kKey).size());
  }
  return "-";
}

std::string inConfig() { return Config::getInstance()->get(network_row::NTP_HOST); }
std::string inUser() { return CUserConfig::getInstance()->get(network_row::NTP_HOST); }

/** Staging image, committed image, file. */
std::string everywhere() { return inUser() + "," + inConfig() + "," + inFile(); }

int32_t step(const std::string& name) {
  trace.push_back(name + " " + everywhere());
  return results.contains(name) ? results[name] : 0;
}

int32_t mayAccess(const Selectors& /*selectors*/) { return step("access"); }
int32_t mayWrite(const Selectors& /*selectors*/) { return step("write"); }
int32_t test(Request& request) {
  request.value = "<" + request.value + ">";
  return step("test");
}
int32_t tell(const Peer& /*peer*/, Request& request) { return step("tell:" + request.value); }
int32_t act(Request& request) {
  request.detail = results.contains("detail") ? "(why)" : "";
  return step("act:" + request.value);
}
int32_t then(Request& request) { return step("then:" + request.value); }
int32_t run(Request& request) { return step("run:" + request.value); }
int32_t fetch(const Request& /*request*/, std::string& text) {
  text = "live";
  return step("fetch");
}
int32_t ask(const Peer& peer, const Request& request, std::string& text) {
  text = std::to_string(peer.idFor(request.selectors));
  return step("ask");
}
uint32_t addSelector(const Selectors& selectors) { return static_cast<uint32_t>(selectorNumber(selectors, 1, 1)) << 4; }
std::vector<Cell> twoMore(const Selectors& /*selectors*/) { return {{network_row::HOSTNAME}, {system_row::TIMEZONE}}; }
int32_t toEven(int32_t number) { return number / 2 * 2; }

constexpr Hint kSave{.layer = "toy", .command = ".save", .selector = 1};
constexpr Hint kSilentSave{.layer = "toy", .command = ".save", .isTold = false};

/** A rule with everything in it, kept and compared as told. */
constexpr Rule whole(Keeps keeps, Unchanged unchanged, const Hint& answers = {}) {
  return {
      .guard = {.access = {mayAccess}, .write = {{{mayWrite}}}},
      .accepts = Test{test, {"anything"}},
      .place = network_row::NTP_HOST,
      .peer = {.tell = tell},
      .act = act,
      .keeps = keeps,
      .then = then,
      .unchanged = unchanged,
      .answers = answers,
  };
}

constexpr Rule accepting(const Accepts& accepts) { return {.accepts = accepts, .act = act}; }

std::string variable = "at first";

namespace Toy {

struct CToy : CApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 9}, .without = "1"};
};
struct CThrough : CApiBase {
  static constexpr Rule rule = whole(Keeps::WriteThrough, Unchanged::IsWritten);
};
struct CCommitted : CApiBase {
  static constexpr Rule rule = whole(Keeps::ConfigOnly, Unchanged::IsWritten);
};
struct CMemory : CApiBase {
  static constexpr Rule rule = whole(Keeps::InMemory, Unchanged::IsWritten, kSave);
};
struct CConfigMemory : CApiBase {
  static constexpr Rule rule = whole(Keeps::ConfigInMemory, Unchanged::IsWritten, kSilentSave);
};
struct CStaged : CApiBase {
  static constexpr Rule rule = whole(Keeps::Staged, Unchanged::AfterKeeping, kSave);
};
struct CNothing : CApiBase {
  static constexpr Rule rule = whole(Keeps::Nothing, Unchanged::IsWritten, kSave);
};
struct CBefore : CApiBase {
  static constexpr Rule rule = whole(Keeps::WriteThrough, Unchanged::BeforeTest);
};
struct CAfter : CApiBase {
  static constexpr Rule rule = whole(Keeps::WriteThrough, Unchanged::AfterTest);
};
struct CAfterUser : CApiBase {
  static constexpr Rule rule{.accepts = Text{},
                             .place = network_row::NTP_HOST,
                             .act = act,
                             .keeps = Keeps::Staged,
                             .unchanged = Unchanged::AfterTest,
                             .compares = Image::User,
                             .answers = kSave};
};
struct CCommand : CApiBase {
  static constexpr Rule rule{.accepts = Words{"on", "off"},
                             .commands = {{{"go", run, PostAction::Reboot}, {"stay", run}}},
                             .place = network_row::NTP_HOST,
                             .keeps = Keeps::Staged,
                             .unchanged = Unchanged::AfterKeeping,
                             .answers = kSave,
                             .refusals = {{{-7, status::kInvalidRange}}}};
};
struct COnlyCommand : CApiBase {
  static constexpr Rule rule{.commands = {{{"go", run}}}};
};
struct CTold : CApiBase {
  static constexpr Rule rule{.guard = {.write = {{{mayAccess}, {mayWrite}}}},
                             .accepts = Number{.low = 0, .high = 9},
                             .commands = {{{"go"}}},
                             .place = network_row::NTP_HOST,
                             .peer = {.tell = tell},
                             .keeps = Keeps::WriteThrough,
                             .shows = {.number = toEven},
                             .refusals = {{{-7, status::kForbidden}, {kAnyFailure, status::kNotFound}}}};
};
struct CSpread : CApiBase {
  static constexpr Rule rule{
      .accepts = Text{}, .place = {network_row::NTP_HOST, nullptr, twoMore}, .keeps = Keeps::WriteThrough};
};
struct CVolatile : CApiBase {
  static constexpr Rule rule{.accepts = Words{"on", "off"}, .place = &variable, .keeps = Keeps::InMemory};
};
struct CWords : CApiBase {
  static constexpr Rule rule = accepting(Words{Word{"low", 3}, Word{"high", 5}});
};
struct CNumber : CApiBase {
  static constexpr Rule rule = accepting(Number{.low = -3, .high = 12, .steps = true});
};
struct CStrange : CApiBase {
  static constexpr Rule rule = accepting(Number{
      .low = 0, .high = 9, .outside = status::kNotValidForResource, .noNumber = status::kInvalidRange, .snap = toEven});
};
struct COneOf : CApiBase {
  static constexpr Rule rule = accepting(oneOf(1, 3));
};
struct CDecimal : CApiBase {
  static constexpr Rule rule = accepting(Decimal{.low = 0, .high = 2.5F});
};
struct CHex : CApiBase {
  static constexpr Rule rule = accepting(Hex{.digits = 4});
};
struct CText : CApiBase {
  static constexpr Rule rule = accepting(Text{.most = 4,
                                              .least = 2,
                                              .wrongLength = status::kUriTooLong,
                                              .escapes = Escapes::DecodedPlus,
                                              .forbidden = "\\:",
                                              .canBeEmpty = true,
                                              .emptyAs = "none"});
};
struct CPlain : CApiBase {
  static constexpr Rule rule = accepting(Text{.escapes = Escapes::Decoded});
};
struct CKept : CApiBase {
  static constexpr Rule rule{
      .accepts = Text{.escapes = Escapes::Decoded}, .place = network_row::NTP_HOST, .keeps = Keeps::WriteThrough};
};
struct CShown : CApiBase {
  static constexpr Rule rule{.place = network_row::NTP_HOST,
                             .shows = {.image = Image::User, .prefix = "p", .suffix = "k", .escaped = true}};
};
struct CFixed : CApiBase {
  static constexpr Rule rule{.accepts = Words{"here"}, .shows = {.fixed = "here"}};
};
struct CLive : CApiBase {
  static constexpr Rule rule{.guard = {.access = {mayAccess}},
                             .place = network_row::NTP_HOST,
                             .fetch = fetch,
                             .refusals = {{{-3, status::kForbidden}}}};
};
struct CAsked : CApiBase {
  static constexpr Words levels{Word{"break", 0x110}, Word{"make", 0x120}};
  static constexpr Rule rule{.peer = {.ask = ask, .id = 0x100, .ofPath = addSelector}, .shows = {.words = &levels}};
};
struct CForward : CApiBase {
  static constexpr Rule rule{.forward = "nowhere.at.all"};
};
struct CThrows : CApiBase {
  static int32_t act(Request& request) { return request.value.at(1); }
  static int32_t fetch(const Request& request, std::string& text) {
    text = request.value.substr(1);
    return 0;
  }
  static constexpr Rule rule{.accepts = Text{}, .act = act, .fetch = fetch};
};
struct CBare : CApiBase {};

}  // namespace Toy

class CToyMan : public CManBase {
 public:
  void build() override {
    add<Toy::CToy>("toy");
    add<Toy::CThrough>("toy.through", "RWRWR-");
    add<Toy::CCommitted>("toy.committed", "RWRWR-");
    add<Toy::CMemory>("toy.memory", "RWRWR-");
    add<Toy::CConfigMemory>("toy.configmemory", "RWRWR-");
    add<Toy::CStaged>("toy.staged", "RWRWR-");
    add<Toy::CNothing>("toy.nothing", "RWRWR-");
    add<Toy::CBefore>("toy.before", "RWRWR-");
    add<Toy::CAfter>("toy.after", "RWRWR-");
    add<Toy::CAfterUser>("toy.afteruser", "RWRWR-");
    add<Toy::CCommand>("toy.command", "RWRWR-");
    add<Toy::COnlyCommand>("toy.onlycommand", "RWRWR-");
    add<Toy::CTold>("toy.told", "RWRWR-");
    add<Toy::CSpread>("toy.spread", "RWRWR-");
    add<Toy::CVolatile>("toy.volatile", "RWRWR-");
    add<Toy::CWords>("toy.words", "RWRWR-");
    add<Toy::CNumber>("toy.number", "RWRWR-");
    add<Toy::CStrange>("toy.strange", "RWRWR-");
    add<Toy::COneOf>("toy.oneof", "RWRWR-");
    add<Toy::CDecimal>("toy.decimal", "RWRWR-");
    add<Toy::CHex>("toy.hex", "RWRWR-");
    add<Toy::CText>("toy.text", "RWRWR-");
    add<Toy::CPlain>("toy.plain", "RWRWR-");
    add<Toy::CKept>("toy.kept", "RWRWR-");
    add<Toy::CShown>("toy.shown", "RWRWR-");
    add<Toy::CFixed>("toy.fixed", "RWRWR-");
    add<Toy::CLive>("toy.live", "RWRWR-");
    add<Toy::CAsked>("toy.asked", "RWRWR-");
    add<Toy::CForward>("toy.forward", "RWRWR-");
    add<Toy::CThrows>("toy.throws", "RWRWR-");
    add<Toy::CBare>("toy.bare", "RWRWR-");
  }
  int32_t replay(const std::string& path) { return m_replayStored(path); }
};

class Engine : public testing::Test {
 protected:
  static void SetUpTestSuite() { tree.init(); }

  void SetUp() override {
    std::filesystem::create_directories("/mnt/flash/sysconfig");
    std::filesystem::create_directories("/mnt/sysinfo");
    std::ofstream(kFile) << kKey << "old\n";
    std::ofstream("/mnt/sysinfo/system.conf").flush();
    set("old", "old");
    trace.clear();
    results.clear();
  }

  static void set(const std::string& user, const std::string& config) {
    CUserConfig::getInstance()->set(network_row::NTP_HOST, user);
    Config::getInstance()->set(network_row::NTP_HOST, config);
  }

  /** The answer to "root.toy.…" behind the path, "200 OK" as "200"; with what is to follow behind it. */
  static std::string request(const std::string& item) {
    Parameter parameter;
    EXPECT_EQ(parameter.setParameter(user_class::kAdministrator, content_type::kPlain, ("root." + item).c_str()), 0);
    tree.APIsetup(parameter, parameter.getNextLayer());
    std::string text = parameter.getResponse();
    text = text.substr(parameter.getPath().size());
    text.resize(text.find("\r\n"));
    const std::string shown = text.substr(0, text.find('&'));
    const std::string code = text.substr(shown.size() + 1, 3);
    const size_t hint = text.find('(', shown.size());
    const std::string behind = hint == std::string::npos ? "" : text.substr(hint);
    const bool reboots = parameter.getPostAction() == PostAction::Reboot;
    return shown + code + behind + (reboots ? " reboots" : "");
  }

  static inline CToyMan tree;
};

using Trace = std::vector<std::string>;

TEST_F(Engine, AWriteTakesItsStepsInOrder) {
  EXPECT_EQ(request("toy.through=new"), "200");
  EXPECT_EQ(trace, (Trace{"access old,old,old", "write old,old,old", "test old,old,old", "tell:<new> old,old,old",
                          "act:<new> old,old,old", "then:<new> <new>,<new>,<new>"}));
}

TEST_F(Engine, ARefusalEndsTheWriteBeforeTheNextStep) {
  const struct {
    const char* step;
    int32_t result;
    size_t steps;
    const char* answer;
  } kCases[] = {
      {"access", -status::kCommandNotFound, 1, "461"},  {"write", -status::kForbidden, 2, "403"},
      {"test", -status::kInvalidRange, 3, "457"},       {"tell:<new>", -status::kMethodNotAllowed, 4, "405"},
      {"act:<new>", -status::kInternalError, 5, "500"}, {"act:<new>", -8, 5, "500"},
      {"act:<new>", kNothingWaits, 5, "200"},
  };
  for (const auto& test : kCases) {
    SetUp();
    results[test.step] = test.result;
    EXPECT_EQ(request("toy.through=new"), test.answer) << test.step;
    EXPECT_EQ(trace.size(), test.steps) << test.step;
    EXPECT_EQ(everywhere(), "old,old,old") << test.step;
  }
  SetUp();
  results["then:<new>"] = -status::kForbidden;
  EXPECT_EQ(request("toy.through=new"), "403");
  EXPECT_EQ(everywhere(), "<new>,<new>,<new>");
  SetUp();
  results = {{"act:<new>", -status::kPreconditionFailed}, {"detail", 1}};
  EXPECT_EQ(request("toy.through=new"), "412(why)");
}

TEST_F(Engine, AnExceptionFailsItsItem) {
  for (const char* item : {"toy.throws", "toy.throws=a"}) {
    EXPECT_EQ(request(item), "500") << item;
  }
  EXPECT_EQ(request("toy.throws=ab"), "200") << "the next item is served";
}

TEST_F(Engine, EachWayOfKeepingReachesItsImages) {
  const struct {
    const char* node;
    const char* answer;
    const char* kept;
  } kCases[] = {
      {"through", "200", "<new>,<new>,<new>"},        {"committed", "200", "old,<new>,<new>"},
      {"memory", "202(toy.save)", "<new>,<new>,old"}, {"configmemory", "200", "old,<new>,old"},
      {"staged", "202(toy.save)", "<new>,old,old"},   {"nothing", "202(toy.save)", "old,old,old"},
  };
  for (const auto& test : kCases) {
    SetUp();
    EXPECT_EQ(request(std::string("toy.") + test.node + "=new"), test.answer) << test.node;
    EXPECT_EQ(everywhere(), test.kept) << test.node;
  }
}

TEST_F(Engine, AnUnchangedValueEndsTheWriteWhereTheRuleSays) {
  const struct {
    const char* item;
    const char* user;
    const char* config;
    const char* answer;
    size_t steps;
  } kCases[] = {
      {"before=same", "other", "same", "200", 2},   {"before=same", "same", "other", "200", 6},
      {"after=same", "other", "<same>", "200", 3},  {"after=same", "other", "same", "200", 6},
      {"afteruser=a", "a", "b", "200", 0},          {"afteruser=a", "b", "a", "202(toy.save)", 1},
      {"staged=same", "other", "<same>", "200", 6}, {"staged=same", "<same>", "other", "202(toy.save)", 6},
  };
  for (const auto& test : kCases) {
    SetUp();
    set(test.user, test.config);
    EXPECT_EQ(request(std::string("toy.") + test.item), test.answer) << test.item << test.user;
    EXPECT_EQ(trace.size(), test.steps) << test.item << test.user;
  }
}

TEST_F(Engine, AReplayGoesTheWholeWayAndKeepsNothing) {
  set("same", "same");
  const InitialisingGuard initialising;
  EXPECT_EQ(request("toy.before=same"), "200");
  EXPECT_EQ(trace.size(), 6U);
  EXPECT_EQ(everywhere(), "same,same,old");
  trace.clear();
  EXPECT_EQ(tree.replay("root.toy.through"), 0);
  EXPECT_EQ(trace.back(), "then:<same> same,same,old");
}

TEST_F(Engine, AFileThatCannotBeWrittenIs500WithTheValueInMemory) {
  std::filesystem::remove(kFile);
  EXPECT_EQ(request("toy.through=new"), "500");
  EXPECT_EQ(everywhere(), "<new>,<new>,-");
  EXPECT_EQ(trace.back(), "act:<new> old,old,-") << "nothing follows";
  std::ofstream(kFile).flush();
  std::filesystem::remove("/mnt/sysinfo/system.conf");
  EXPECT_EQ(request("toy.spread=x"), "500");
  EXPECT_EQ(everywhere(), "x,x,x");  // the other file was written all the same
}

TEST_F(Engine, TheCellsOfAPlaceHoldTheSameValue) {
  EXPECT_EQ(request("toy.spread=both"), "200");
  for (const Row row : {Row(network_row::NTP_HOST), Row(network_row::HOSTNAME), Row(system_row::TIMEZONE)}) {
    EXPECT_EQ(Config::getInstance()->get(row), "both");
    EXPECT_EQ(CUserConfig::getInstance()->get(row), "both");
  }
}

TEST_F(Engine, AVariableIsAPlaceToo) {
  EXPECT_EQ(request("toy.volatile"), "=at first200");
  EXPECT_EQ(request("toy.volatile=on"), "200");
  EXPECT_EQ(request("toy.volatile"), "=on200");
}

TEST_F(Engine, CommandsActInsteadOfTakingAValue) {
  const struct {
    const char* item;
    int32_t result;
    const char* answer;
    size_t steps;
  } kCases[] = {
      {"command=go", 0, "200 reboots", 1},
      {"command=go", kNothingWaits, "200", 1},
      {"command=go", status::kAccepted, "202(toy.save)", 1},
      {"command=go", -7, "457", 1},
      {"command=stay", 0, "200", 1},
      {"command=leave", 0, "451", 0},
      {"onlycommand=go", 0, "200", 1},
      {"onlycommand=stay", 0, "451", 0},
  };
  for (const auto& test : kCases) {
    SetUp();
    results["run:go"] = test.result;
    EXPECT_EQ(request(std::string("toy.") + test.item), test.answer) << test.item << test.result;
    EXPECT_EQ(trace.size(), test.steps) << test.item;
    EXPECT_EQ(everywhere(), "old,old,old") << test.item;
  }
  EXPECT_EQ(request("toy.command=on"), "202(toy.save)");
  EXPECT_EQ(everywhere(), "on,old,old");
}

TEST_F(Engine, ACommandWithoutAFunctionIsToldToThePeer) {
  EXPECT_EQ(request("toy.told=go"), "200");
  EXPECT_EQ(trace, (Trace{"access old,old,old", "write old,old,old", "tell:go old,old,old"}));
  const struct {
    const char* step;
    int32_t result;
    const char* answer;
    size_t steps;
  } kCases[] = {
      {"access", -status::kPreconditionFailed, "412", 1},
      {"write", -status::kUnauthorized, "401", 2},
      {"tell:go", -7, "403", 3},
      {"tell:go", -8, "404", 3},
      {"tell:go", -status::kInternalError, "404", 3},
  };
  for (const auto& test : kCases) {
    SetUp();
    results[test.step] = test.result;
    EXPECT_EQ(request("toy.told=go"), test.answer) << test.step << test.result;
    EXPECT_EQ(trace.size(), test.steps) << test.step;
  }
  results.clear();
  EXPECT_EQ(request("toy.told=7"), "200");
  EXPECT_EQ(everywhere(), "7,7,7");
  EXPECT_EQ(request("toy.told"), "=6200");
}

TEST_F(Engine, ValuesAreAcceptedAsTheRuleSays) {
  const std::string longest(550 - 1 - std::string_view("NTP_HOST=\n").size(), 'x');
  const struct {
    std::string item;
    const char* answer;
    std::string acted;  ///< the value that the action saw
  } kCases[] = {
      {"words=high", "200", "high"},  {"words=High", "451", ""},
      {"words=5", "451", ""},         {"number=-3", "200", "-3"},
      {"number=012", "200", "012"},   {"number=13", "457", ""},
      {"number=-4", "457", ""},       {"number=4294967297", "457", ""},
      {"number=1x", "451", ""},       {"number=+", "200", "+"},
      {"number=+1", "451", ""},       {"strange=7", "200", "6"},
      {"strange=10", "456", ""},      {"strange=x", "457", ""},
      {"strange=+", "457", ""},       {"oneof=3", "200", "3"},
      {"oneof=2", "457", ""},         {"oneof=x", "451", ""},
      {"decimal=2.5", "200", "2.5"},  {"decimal=2.6", "457", ""},
      {"decimal=-0.1", "457", ""},    {"decimal=1,5", "451", ""},
      {"hex=0aF9", "200", "0aF9"},    {"hex=12345", "457", ""},
      {"hex=12g", "451", ""},         {"hex=-1", "451", ""},
      {"text=a+%62", "200", "a b"},   {"text=a", "414", ""},
      {"text=abcde", "414", ""},      {"text=%61%62%63%64", "200", "abcd"},
      {"text=a:b", "451", ""},        {"text=%00", "200", "none"},
      {"plain=a+b", "200", "a+b"},    {"kept=a%0ab", "451", ""},
      {"plain=a%00b", "451", ""},     {"text=%00b", "451", ""},
      {"kept=" + longest, "200", ""}, {"kept=x" + longest, "457", ""},
  };
  for (const auto& test : kCases) {
    SetUp();
    EXPECT_EQ(request("toy." + test.item), test.answer) << test.item;
    const std::string acted = trace.empty() ? "" : trace.back();
    EXPECT_EQ(acted, test.acted.empty() ? "" : "act:" + test.acted + " old,old,old") << test.item;
  }
  SetUp();
  EXPECT_EQ(request("toy.kept=" + longest), "200");
  EXPECT_EQ(everywhere(), longest + "," + longest + "," + longest);
}

TEST_F(Engine, AReadShowsWhatTheRuleSays) {
  set("a&b", "c");
  EXPECT_EQ(request("toy.shown"), "=pa%26bk200");
  set("", "c");
  EXPECT_EQ(request("toy.shown"), "=p200");  // no unit behind no text
  EXPECT_EQ(request("toy.fixed"), "=here200");
  EXPECT_EQ(request("toy.fixed=here"), "200");
  EXPECT_EQ(request("toy.fixed=there"), "451");
  EXPECT_EQ(request("toy.through"), "=c200");
  EXPECT_EQ(request("toy(1).asked"), "=break200");
  EXPECT_EQ(request("toy(2).asked"), "=make200");
  EXPECT_EQ(request("toy(3).asked"), "500");
  EXPECT_EQ(request("toy(10).asked"), "456");
  EXPECT_EQ(request("toy.onlycommand"), "501");
  EXPECT_EQ(request("toy.asked=make"), "501");
  EXPECT_EQ(request("toy.bare"), "501");
  EXPECT_EQ(request("toy.bare=1"), "501");
  EXPECT_EQ(request("toy.forward"), "500");
}

TEST_F(Engine, ALiveValueGoesBeforeTheStoredOne) {
  const struct {
    int32_t result;
    const char* answer;
  } kCases[] = {
      {0, "=live200"}, {kShowStored, "=old200"}, {-3, "403"}, {-status::kCommandNotFound, "461"}, {-1, "500"}};
  for (const auto& test : kCases) {
    results["fetch"] = test.result;
    EXPECT_EQ(request("toy.live"), test.answer);
  }
  results["access"] = -status::kPreconditionFailed;
  EXPECT_EQ(request("toy.live"), "412");
}

TEST_F(Engine, TheHintNamesTheSelectorAsItWasAsked) {
  EXPECT_EQ(request("toy(02).memory=x"), "202(toy(02).save)");
  EXPECT_EQ(request("toy.memory=x"), "202(toy.save)");

  Hint named = kSave;
  named.byDefault = "1";
  EXPECT_EQ(RuleEngine::hintText(named, {"", "2"}), "(toy(2).save)");
  EXPECT_EQ(RuleEngine::hintText(named, {"", ""}), "(toy(1).save)");
}

TEST_F(Engine, ACommitTakesOverWhatDiffersAndThenApplies) {
  static constexpr Row kRows[] = {network_row::NTP_HOST, network_row::HOSTNAME};
  static constexpr Commit commit{.rows = kRows, .check = act, .apply = run};
  Parameter parameter;
  Request request{parameter, {}, "go"};
  CUserConfig::getInstance()->adopt(*Config::getInstance(), kRows);
  EXPECT_EQ(carryOut(commit, request), kNothingWaits);
  EXPECT_EQ(trace.size(), 0U);

  set("new", "old");
  results["act:go"] = -status::kPreconditionFailed;
  EXPECT_EQ(carryOut(commit, request), -status::kPreconditionFailed);
  EXPECT_EQ(everywhere(), "new,old,old");
  results.clear();
  trace.clear();
  EXPECT_EQ(takeOver<commit>(request), 0);
  EXPECT_EQ(trace, (Trace{"act:go new,old,old", "run:go new,new,new"}));

  trace.clear();
  {
    const InitialisingGuard initialising;
    EXPECT_EQ(carryOut(commit, request), 0);
    EXPECT_EQ(trace.size(), 2U);
  }
  set("newer", "new");
  std::filesystem::remove(kFile);
  EXPECT_EQ(carryOut(commit, request), -status::kInternalError);
}

}  // namespace

int main(int argc, char** argv) {
  if (!hideFileSystem()) {
    std::perror("a private /mnt and /tmp");
    return 1;
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
