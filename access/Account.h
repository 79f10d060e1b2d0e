#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/Client.h"

namespace tmx {

/** Who has logged in. */
struct Account {
  std::string name;
  UserClass user = UserClass::kUser;
};

/** The account of a login's name: "admin", "operator" or "user" with nothing, 1, 2 or 3 behind it, and no other. */
[[nodiscard]] std::optional<Account> accountOf(std::string_view name);

/** "administrator", "operator" or "user". */
[[nodiscard]] const char* className(UserClass user);

}  // namespace tmx
