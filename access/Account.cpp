#include "access/Account.h"

#include <array>
#include <utility>

namespace tmx {

std::optional<Account> accountOf(std::string_view name) {
  constexpr std::array<std::pair<std::string_view, UserClass>, 3> kClasses{
      {{"admin", UserClass::kAdmin}, {"operator", UserClass::kOperator}, {"user", UserClass::kUser}}};
  for (const auto& [text, user] : kClasses) {
    if (!name.starts_with(text)) continue;
    const std::string_view number = name.substr(text.size());
    if (number.empty() || number == "1" || number == "2" || number == "3") return Account{std::string(name), user};
  }
  return std::nullopt;
}

const char* className(UserClass user) {
  switch (user) {
    case UserClass::kAdmin:
      return "administrator";
    case UserClass::kOperator:
      return "operator";
    default:
      return "user";
  }
}

}  // namespace tmx
