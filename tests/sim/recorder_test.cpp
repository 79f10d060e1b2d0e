#include "tests/sim/Neighbours.h"

namespace {

using namespace test;

using Objects = std::vector<std::string>;

/** An event rule of the recorder, rule 2, on and restarted. */
class EventRule : public Neighbours {
 protected:
  void SetUp() override {
    Neighbours::SetUp();
    put(0x212200, "pin1=make");
    put(0x212300, "record(3)&record(10)&siren&record(11)");
    put(0x253100, words({2}));
    put(0x253500, "7.5");
    put(0x212100, words({1}));
  }

  void put(int id, const std::string& value) const {
    ASSERT_EQ(exchange("localrec", packet(1, 0, id, value), 1012).bytes, packet(2, 0, 200, ""));
  }
  void restart() const { (void)exchange("localrec", packet(4, 0, 0, words({2})), 1012); }

  /** The objects that this change of a pin lets record. */
  [[nodiscard]] Objects recorded(const std::string& word) const {
    const std::size_t before = journal("record", "object").size();
    EXPECT_EQ(tell("gpio " + word), "ok");
    const Objects objects = journal("record", "object");
    return {objects.begin() + static_cast<std::ptrdiff_t>(before), objects.end()};
  }
  /** The same for the rule's trigger, whatever the pin was. */
  [[nodiscard]] Objects triggered() const {
    EXPECT_EQ(recorded("pin1=break"), Objects());
    return recorded("pin1=make");
  }
};

TEST_F(EventRule, TakesEffectWithItsRestart) {
  EXPECT_EQ(triggered(), Objects());
  restart();
  EXPECT_EQ(recorded("pin1=make"), Objects()) << "no change";
  EXPECT_EQ(triggered(), (Objects{"3", "10"}));
  EXPECT_EQ(journal("record", "framerate").front(), "7.5");
  EXPECT_EQ(journal("record", "encoder").front(), "2");
  EXPECT_EQ(journal("event", "rule"), Objects{"2"});
  put(0x212300, "record(1)");
  EXPECT_EQ(triggered(), (Objects{"3", "10"}));
  restart();
  EXPECT_EQ(triggered(), Objects{"1"});
  put(0x212100, words({0}));
  EXPECT_EQ(triggered(), Objects()) << "off counts at once";
}

TEST_F(EventRule, FiresWhileItsDayIsOpen) {
  put(0x212300, "record(1)");
  put(0x212421, words({1}));
  put(0x212423, words({36000}));
  put(0x212424, words({43200}));
  constexpr int mask = 1;
  constexpr int unmask = 2;
  struct Case {
    int type;
    std::string now;
    bool fires;
  };
  const Case cases[] = {
      {mask, "monday-095959", true},   {mask, "monday-100000", false},   {mask, "monday-115959", false},
      {mask, "monday-120000", true},   {mask, "tuesday-110000", true},   {unmask, "monday-095959", false},
      {unmask, "monday-110000", true}, {unmask, "monday-120000", false}, {unmask, "sunday-000000", true}};
  for (const Case& c : cases) {
    put(0x212422, words({c.type}));
    restart();
    ASSERT_EQ(tell("recorder now=" + c.now), "ok");
    EXPECT_EQ(triggered(), c.fires ? Objects{"1"} : Objects()) << c.type << " " << c.now;
  }
}

TEST_F(Neighbours, PasswordsStayOutOfJournalAndState) {
  for (const int id : {0x221300, 0x245000}) {
    ASSERT_EQ(exchange("localrec", packet(1, 0, id, "secret%7"), 1012).bytes, packet(2, 0, 200, ""));
    EXPECT_EQ(lastInJournal("text"), "********");
    EXPECT_EQ(exchange("localrec", packet(0, 0, id, ""), 1012).bytes, packet(2, 0, 200, "secret%7"));
  }
  std::ifstream file(journalPath());
  const std::string journal(std::istreambuf_iterator<char>(file), {});
  for (const std::string& trace : {std::string("secret"), std::string("736563726574")})
    EXPECT_EQ(journal.find(trace), std::string::npos) << trace;
  EXPECT_EQ(tell("recorder show").find("secret"), std::string::npos);
}

TEST_F(Neighbours, ACardIsWhatTheSlotShows) {
  const std::string device = m_root + "/sys/block/mmcblk0";
  std::filesystem::create_directories(device);
  const auto is = [this](const std::string& file) { return std::filesystem::exists(m_root + file); };
  struct Case {
    std::string card;
    int state;
    bool mounts, initialises, writeError, spaceError;
    std::string verdict;
  };
  const Case cases[] = {{"empty", 0, false, false, false, false, "Failure"},
                        {"read_only", 1, true, false, false, false, "Protected"},
                        {"broken", 2, false, false, true, false, "Failure"},
                        {"full", 2, true, true, false, true, "Success"},
                        {"on", 2, true, true, false, false, "Success"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.card);
    ASSERT_EQ(tell("sdrec card=" + c.card), "ok");
    EXPECT_EQ(std::filesystem::exists(device), c.card != "empty");
    EXPECT_EQ(is("/tmp/sd_err_mem_write"), c.writeError);
    EXPECT_EQ(is("/tmp/sd_err_mem_space"), c.spaceError);
    std::ifstream test(m_root + "/run/camera/sdtest");
    std::string line;
    std::getline(test, line);
    EXPECT_EQ(line, "Process complete : " + c.verdict);
    EXPECT_EQ(exchange("sdrec", cardRequest(1025), 12).bytes, cardAnswer(c.state, 0));
    EXPECT_EQ(exchange("sdrec", cardRequest(518), 12).bytes, c.mounts ? cardAnswer(0, 0) : cardAnswer(1, 16));
    EXPECT_EQ(exchange("sdrec", cardRequest(517), 12).bytes, c.initialises ? cardAnswer(0, 0) : cardAnswer(1, 16));
    EXPECT_FALSE(c.initialises && is("/tmp/sd_err_mem_space"));
  }
}

}  // namespace
