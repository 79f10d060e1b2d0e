#include "web/Account.h"

#include <array>
#include <utility>

namespace console {

std::optional<Account> accountOf(std::string_view name) {
  constexpr std::array<std::pair<std::string_view, tmx::UserClass>, 3> kClasses{
      {{"admin", tmx::UserClass::kAdmin}, {"operator", tmx::UserClass::kOperator}, {"user", tmx::UserClass::kUser}}};
  for (const auto& [text, user] : kClasses) {
    if (!name.starts_with(text)) continue;
    const std::string_view number = name.substr(text.size());
    if (number.empty() || number == "1" || number == "2" || number == "3") return Account{std::string(name), user};
  }
  return std::nullopt;
}

const char* className(tmx::UserClass user) {
  switch (user) {
    case tmx::UserClass::kAdmin:
      return "administrator";
    case tmx::UserClass::kOperator:
      return "operator";
    default:
      return "user";
  }
}

}  // namespace console
