#pragma once

#include <concepts>

#include "tree/CApiBase.h"
#include "tree/Peers.h"
#include "tree/Rule.h"
#include "tree/RuleEngine.h"
#include "tree/Selector.h"

// A node of the tree is a class of its layer, nested and named as its path is, that derives from the base of its root
// or family and may state
//   static constexpr Selector selector   what stands between its brackets (Selector.h),
//   static constexpr Rule rule           its whole rule as a parameter (Rule.h).
// A node with neither is one line. What fits no rule overrides execRead and execWrite.

template <class Node>
constexpr const Rule* ruleOf() {
  if constexpr (requires { Node::rule; }) {
    static_assert(std::same_as<decltype(Node::rule), const Rule>, "a rule is a static constexpr Rule");
    namespace check = rule_check;
    constexpr const Rule& rule = Node::rule;
    static_assert(!check::hasWordTwice(rule), "a word stands twice in the rule");
    static_assert(check::hasSoundRange(rule), "no value can be accepted");
    static_assert(!check::lacksForm(rule), "a test needs the form of what it takes");
    static_assert(check::refusesWithStatus(rule), "a refusal needs a status that refuses");
    static_assert(check::hasRowOfItsFamily(rule), "the family has no such row");
    static_assert(!check::forgetsValue(rule), "the value is accepted and forgotten");
    static_assert(!check::actsOnNothing(rule), "the rule acts on values but accepts none");
    static_assert(!check::keepsWithoutPlace(rule), "the value has no place to be kept in");
    static_assert(!check::lacksHint(rule), "a value that waits needs a hint that says so");
    static_assert(!check::forwardsAndMore(rule), "what is forwarded has no rule of its own");
    return &Node::rule;
  } else {
    return nullptr;
  }
}

template <class Node>
constexpr const Selector* selectorOf() {
  if constexpr (requires { Node::selector; }) {
    static_assert(isSound(Node::selector), "no selector can be accepted");
    static_assert(saysWithout(Node::selector), "a path without brackets needs a meaning");
    return &Node::selector;
  } else {
    return nullptr;
  }
}
