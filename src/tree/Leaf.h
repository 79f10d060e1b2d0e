#pragma once

#include <string>

#include "tree/ExecArgs.h"
#include "tree/Rule.h"
#include "tree/RuleEngine.h"
#include "tree/Selector.h"

/**
 * A layer whose class says what it is instead of how it works. `Derived` may state
 *   static constexpr Selector selector   what stands between its brackets (Selector.h),
 *   static constexpr Rule rule           its whole rule as a parameter (Rule.h),
 *   int32_t act(Request&)                what a write does besides keeping the value: 0 or 200, kAlreadyInForce, a
 *                                        negated status, or a result that rule.refusals names,
 *   int32_t fetch(const Request&, std::string&)
 *                                        where a read gets its value when that is not the rule's row: 0 or a negated
 *                                        status.
 * `Base` is the abstract base of its root or family. What fits no rule overrides execRead and execWrite.
 */
template <class Derived, class Base>
class Leaf : public Base {
 public:
  using Base::Base;

  int32_t checkAttribute(const std::string& selector, int32_t depth) override {
    if constexpr (requires { Derived::selector; }) {
      static_assert(isSound(Derived::selector));
      return checkSelector(Derived::selector, selector);
    } else {
      return Base::checkAttribute(selector, depth);
    }
  }

  int32_t execRead(ExecArgs* args) override {
    if constexpr (requires(Derived & leaf, const Request& request, std::string& text) { leaf.fetch(request, text); }) {
      return RuleEngine::read(ruleOfDerived(), *args, this, [](void* self, const Request& request, std::string& text) {
        return static_cast<Derived*>(static_cast<Leaf*>(self))->fetch(request, text);
      });
    } else if constexpr (requires { Derived::rule; }) {
      return RuleEngine::read(ruleOfDerived(), *args, this, nullptr);
    } else {
      return Base::execRead(args);
    }
  }

  int32_t execWrite(ExecArgs* args) override {
    if constexpr (requires(Derived & leaf, Request & request) { leaf.act(request); }) {
      return RuleEngine::write(ruleOfDerived(), *args, this, [](void* self, Request& request) {
        return static_cast<Derived*>(static_cast<Leaf*>(self))->act(request);
      });
    } else if constexpr (requires { Derived::rule; }) {
      return RuleEngine::write(ruleOfDerived(), *args, this, nullptr);
    } else {
      return Base::execWrite(args);
    }
  }

 private:
  static const Rule& ruleOfDerived() {
    if constexpr (requires { Derived::rule; }) {
      static_assert(isSound(Derived::rule));
      return Derived::rule;
    } else {
      static constexpr Rule live{};
      return live;
    }
  }
};
