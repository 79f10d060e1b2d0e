#include "CardDaemon.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

#include "Bytes.h"

namespace sim {

namespace {

constexpr std::size_t requestBytes = 10;
constexpr std::size_t replyBytes = 12;
constexpr std::uint16_t errorMessage = 16;

enum Command { startInitialise = 517, mount = 518, unmount = 519, cardState = 1025, initialiseState = 1026 };

struct CommandName {
  int number;
  std::string_view name;
};

constexpr auto commandNames = std::to_array<CommandName>({
    {startInitialise, "initialize"},
    {mount, "mount"},
    {unmount, "unmount"},
    {cardState, "card_state"},
    {initialiseState, "initialize_state"},
});

constexpr std::array<std::string_view, 5> cardWords{"empty", "read_only", "on", "full", "broken"};
/** What a query answers for each of them: no card, one that cannot be written, one that can. */
constexpr std::array<std::uint16_t, 5> cardStates{0, 1, 2, 2, 2};
/** What the card's test program finds in each. */
constexpr std::array<std::string_view, 5> testVerdicts{"Failure", "Protected", "Success", "Success", "Failure"};
constexpr std::array<std::string_view, 3> initialisedWords{"off", "not_initialized", "on"};

/** The files that tell the other programs of the camera what the recording does. */
constexpr std::string_view recordingFile = "sdrec_recording";
constexpr std::string_view writeErrorFile = "sd_err_mem_write";
constexpr std::string_view spaceErrorFile = "sd_err_mem_space";

/** The card as the kernel shows it, and where that goes while the card is out. */
constexpr const char* device = "/sys/block/mmcblk0";
constexpr const char* pulledDevice = "/sys/block/.mmcblk0";
/** What the test program writes behind its start. */
constexpr const char* testFile = "/run/camera/sdtest";

std::string reply(std::uint16_t value, std::uint16_t message) {
  std::string bytes(replyBytes, '\0');
  putWord16(bytes, 8, value);
  putWord16(bytes, 10, message);
  return bytes;
}

std::string verdict(bool done) { return reply(done ? 0 : 1, done ? 0 : errorMessage); }

template <typename State, std::size_t count>
bool setWord(State& state, const std::array<std::string_view, count>& words, const std::string& value) {
  const auto* found = std::ranges::find(words, value);
  if (found == words.end()) return false;
  state = static_cast<State>(found - words.begin());
  return true;
}

}  // namespace

CardDaemon::CardDaemon(Loop& loop, const std::string& root)
    : Neighbour(loop, "sdrec", root + "/tmp/sdrec"), m_root(root), m_folder(root + "/tmp/") {
  ::unlink((m_root + testFile).c_str());
}

std::size_t CardDaemon::requestSize(std::string_view bytes) const {
  return bytes.size() < requestBytes ? 0 : requestBytes;
}

std::string CardDaemon::messageName(std::string_view request) const {
  const auto* found = std::ranges::find(commandNames, word16(request, 0), &CommandName::number);
  return found == commandNames.end() ? "unknown" : std::string(found->name);
}

void CardDaemon::describe(std::string_view request, Journal& line) const { line.number("command", word16(request, 0)); }

std::string CardDaemon::readable(std::string_view reply) const {
  return std::to_string(word16(reply, 8)) + " " + std::to_string(word16(reply, 10));
}

std::string CardDaemon::answer(std::string_view request) {
  switch (word16(request, 0)) {
    case startInitialise:
      return verdict(initialise());
    case mount:
    case unmount:
      if (m_card == Card::empty || m_card == Card::broken) return verdict(false);
      m_mounted = word16(request, 0) == mount;
      return verdict(true);
    case cardState:
      return reply(cardStates.at(static_cast<std::size_t>(m_card)), 0);
    case initialiseState:
      return reply(static_cast<std::uint16_t>(m_initialised), 0);
    default:
      return verdict(false);
  }
}

std::string CardDaemon::refusal(std::string_view /*request*/, std::optional<int> number) const {
  return reply(static_cast<std::uint16_t>(number.value_or(1)), errorMessage);
}

/** Only a card that can be written is initialised, which takes a while; it is empty then. */
bool CardDaemon::initialise() {
  if (m_card != Card::on && m_card != Card::full) return false;
  insert(Card::on);
  m_initialised = Initialised::no;
  const unsigned run = ++m_run;
  loop().after(std::chrono::milliseconds(m_runMilliseconds), [this, run] {
    if (run == m_run) m_initialised = Initialised::yes;
  });
  return true;
}

/** A card in the slot or out of it, with what the other programs of the camera see of it. */
void CardDaemon::insert(Card card) {
  m_card = card;
  const bool pulled = card == Card::empty;
  std::rename((m_root + (pulled ? device : pulledDevice)).c_str(), (m_root + (pulled ? pulledDevice : device)).c_str());
  mark(spaceErrorFile, card == Card::full);
  mark(writeErrorFile, card == Card::broken);
  std::ofstream(m_root + testFile) << "Process complete : " << testVerdicts.at(static_cast<std::size_t>(card)) << '\n';
}

void CardDaemon::mark(std::string_view file, bool present) const {
  const std::string path = m_folder + std::string(file);
  if (present) {
    std::ofstream(path).flush();
  } else {
    ::unlink(path.c_str());
  }
}

bool CardDaemon::setMark(std::string_view file, const std::string& value) const {
  bool present = false;
  if (!setSwitch(present, value, "on", "off")) return false;
  mark(file, present);
  return true;
}

bool CardDaemon::isMarked(const std::string& file) const { return ::access((m_folder + file).c_str(), F_OK) == 0; }

bool CardDaemon::set(const std::string& key, const std::string& value) {
  if (key == "run") return setNumber(m_runMilliseconds, value) && m_runMilliseconds >= 0;
  if (key == "recording") return setMark(recordingFile, value);
  if (key == "write_error") return setMark(writeErrorFile, value);
  if (key == "space_error") return setMark(spaceErrorFile, value);
  if (key == "card") {
    Card card{};
    if (!setWord(card, cardWords, value)) return false;
    insert(card);
    return true;
  }
  if (key != "init") return false;
  ++m_run;
  return setWord(m_initialised, initialisedWords, value);
}

void CardDaemon::show(JsonObject& state) const {
  state.text("card", cardWords[static_cast<std::size_t>(m_card)]);
  state.text("init", initialisedWords[static_cast<std::size_t>(m_initialised)]);
  state.text("mounted", m_mounted ? "on" : "off").number("run", m_runMilliseconds);
  const auto marked = [this](std::string_view file) { return isMarked(std::string(file)) ? "on" : "off"; };
  state.text("recording", marked(recordingFile));
  state.text("write_error", marked(writeErrorFile)).text("space_error", marked(spaceErrorFile));
}

}  // namespace sim
