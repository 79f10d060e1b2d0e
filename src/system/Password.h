#pragma once

#include <cstdint>
#include <string>

#include "system/CSystemApiBase.h"

namespace System {

/** The web logins (Accounts.h): three classes with four accounts each, of which the first has no number. */
struct CPassword : CSystemApiBase {
  static constexpr size_t kLayer = 2;
  struct CAdmin;
  struct COperator;
  struct CUser;
};

enum class AccountClass { Admin, Operator, User };

[[nodiscard]] int32_t setPassword(AccountClass of, Request& request);
[[nodiscard]] int32_t initializeAccount(AccountClass of, Request& request);
[[nodiscard]] int32_t showAccount(AccountClass of, const Request& request, std::string& text);

inline constexpr Selector kAccounts{.takes = SelectorNumber{.low = 0, .high = 3}, .without = "0"};

/** An account's password, which makes the account. */
template <AccountClass of>
constexpr Rule passwordOf() {
  return {.accepts = Text{.most = 16, .least = 1, .wrongLength = status::kInternalError, .escapes = Escapes::Decoded},
          .act = [](Request& request) { return setPassword(of, request); },
          .keeps = Keeps::ByAct};
}

/** Whether there is such an account; it is deleted by "initialize". */
template <AccountClass of>
constexpr Rule accountOf() {
  return {
      .commands = {{{"initialize", [](Request& request) { return initializeAccount(of, request); }}}},
      .fetch = [](const Request& request, std::string& text) { return showAccount(of, request, text); },
  };
}

struct CPassword::CAdmin : CSystemApiBase {
  static constexpr Selector selector = kAccounts;
  static constexpr Rule rule = passwordOf<AccountClass::Admin>();
  struct CStatus;
};

struct CPassword::CAdmin::CStatus : CSystemApiBase {
  static constexpr Rule rule = accountOf<AccountClass::Admin>();
};

struct CPassword::COperator : CSystemApiBase {
  static constexpr Selector selector = kAccounts;
  static constexpr Rule rule = passwordOf<AccountClass::Operator>();
  struct CStatus;
};

struct CPassword::COperator::CStatus : CSystemApiBase {
  static constexpr Rule rule = accountOf<AccountClass::Operator>();
};

struct CPassword::CUser : CSystemApiBase {
  static constexpr Selector selector = kAccounts;
  static constexpr Rule rule = passwordOf<AccountClass::User>();
  struct CStatus;
};

struct CPassword::CUser::CStatus : CSystemApiBase {
  static constexpr Rule rule = accountOf<AccountClass::User>();
};

}  // namespace System
