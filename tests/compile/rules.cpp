// Rules that cannot be right. Each WRONG must keep this file from compiling (see CMakeLists.txt); without one it
// compiles.

#include "tree/Commit.h"
#include "tree/Node.h"

namespace {

[[maybe_unused]] int32_t act(Request& /*request*/) { return 0; }
[[maybe_unused]] int32_t fetch(const Request& /*request*/, std::string& /*text*/) { return 0; }
[[maybe_unused]] int32_t fetchByValue(Request /*request*/, std::string& /*text*/) { return 0; }
[[maybe_unused]] Cell locate(const Selectors& /*selectors*/, Row row) { return {row}; }
constexpr Hint kSave{.layer = "toy", .command = ".save"};

struct CToy : CApiBase {
#if !defined(WRONG)
  static constexpr Rule rule{.accepts = Words{"on", "off"},
                             .place = {network_row::DNS, locate},
                             .act = act,
                             .fetch = fetch,
                             .keeps = Keeps::Staged,
                             .unchanged = Unchanged::AfterKeeping,
                             .answers = kSave};
#elif WRONG == 1   // a word twice
  static constexpr Rule rule{.accepts = Words{"on", "off", "on"}, .act = act};
#elif WRONG == 2   // a word that is a command too
  static constexpr Rule rule{.accepts = Words{"on", "go"}, .commands = {{ { "go", act } }}, .act = act};
#elif WRONG == 3   // a row that the family does not have
  static constexpr Rule rule{.accepts = Text{}, .place = static_cast<video_row::Row>(99), .keeps = Keeps::WriteThrough};
#elif WRONG == 4   // a refusal that is none
  static constexpr Rule rule{.accepts = Number{.low = 0, .high = 9, .outside = 0}, .act = act};
#elif WRONG == 5   // an inverted range
  static constexpr Rule rule{.accepts = Number{.low = 9, .high = 0}, .act = act};
#elif WRONG == 6   // a value that is accepted and forgotten
  static constexpr Rule rule{.accepts = Words { "on", "off" }};
#elif WRONG == 7   // an action without values
  static constexpr Rule rule{.act = act};
#elif WRONG == 8   // a value without a place
  static constexpr Rule rule{.accepts = Text{}, .act = act, .keeps = Keeps::InMemory};
#elif WRONG == 9   // a value that waits, and nobody says so
  static constexpr Rule rule{.accepts = Text{}, .place = network_row::DNS, .keeps = Keeps::Staged};
#elif WRONG == 10  // a function of another form
  static constexpr Rule rule{.fetch = fetchByValue};
#elif WRONG == 11  // a number in the place of a row
  static constexpr Rule rule{.accepts = Text{}, .place = 5, .keeps = Keeps::WriteThrough};
#elif WRONG == 12  // something else under the name of the rule
  static constexpr Words rule{"on"};
#elif WRONG == 13  // two ways to serve one path
  static constexpr Rule rule{.place = network_row::DNS, .forward = "network.dns.ip"};
#elif WRONG == 15  // a layer that takes nothing
  static constexpr Selector selector{.takes = SelectorNumber{.low = 5, .high = 1}};
#elif WRONG == 16  // a test that does not say what it takes
  static constexpr Rule rule{.accepts = Test{.run = act, .form = {}}, .act = act};
#elif WRONG == 17  // a value that stays in memory, and nobody says so
  static constexpr Rule rule{.accepts = Text{}, .place = network_row::DNS, .keeps = Keeps::InMemory};
#elif WRONG == 18  // a path without brackets that means nothing
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 5}};
#endif
};

#if defined(WRONG) && WRONG == 14  // rows of two families in one list of a family's setting
constexpr Rule networkSetting(network_row::Row row) { return {.place = row}; }
constexpr Rule kWrong = networkSetting(video_row::VIDEO_OUTPUT);
#endif

}  // namespace

const Rule* ruleOfToy() { return ruleOf<CToy>(); }
const Selector* selectorOfToy() { return selectorOf<CToy>(); }
