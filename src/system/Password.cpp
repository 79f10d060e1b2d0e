#include "system/Password.h"

#include <array>

#include "system/Accounts.h"

namespace System {
namespace {

constexpr std::array<const char*, 3> kNames = {"admin", "operator", "user"};

int32_t slotOf(const Request& request) { return selectorNumber(request.selectors, CPassword::kLayer, 0); }

std::string nameOf(AccountClass of, const Request& request) {
  const std::string name = kNames.at(static_cast<size_t>(of));
  const int32_t slot = slotOf(request);
  return slot == 0 ? name : name + std::to_string(slot);
}

}  // namespace

int32_t setPassword(AccountClass of, Request& request) {
  return Accounts::setPassword(nameOf(of, request), request.value);
}

int32_t initializeAccount(AccountClass of, Request& request) {
  const bool isNamedZero = !request.selectors.at(CPassword::kLayer).empty() && slotOf(request) == 0;
  return isNamedZero ? -status::kUnauthorized : Accounts::remove(nameOf(of, request));
}

int32_t showAccount(AccountClass of, const Request& request, std::string& text) {
  const int32_t isThere = Accounts::isAccount(nameOf(of, request));
  text = isThere == 1 ? "registered" : "unregistered";
  return isThere < 0 ? -status::kInternalError : 0;
}

}  // namespace System
