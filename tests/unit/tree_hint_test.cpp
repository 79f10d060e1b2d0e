#include <gtest/gtest.h>

#include "tree/RuleEngine.h"

namespace {

TEST(Hint, NamesTheSelectorThatThePathHas) {
  const Hint plain{.layer = "a.b", .command = ".status=save"};
  const Hint ofPath{.layer = "a.b", .command = ".status=save", .selector = 1};
  const Hint withDefault{.layer = "a.b", .command = ".status=save", .selector = 1, .byDefault = "1"};
  const struct {
    Hint hint;
    const char* selector;
    const char* text;
  } cases[] = {
      {plain, "2", "(a.b.status=save)"},         {ofPath, "2", "(a.b(2).status=save)"},
      {ofPath, "", "(a.b.status=save)"},         {withDefault, "2", "(a.b(2).status=save)"},
      {withDefault, "", "(a.b(1).status=save)"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(RuleEngine::hintText(c.hint, {"", c.selector, ""}), c.text);
}

}  // namespace
