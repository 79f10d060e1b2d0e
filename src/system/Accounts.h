#pragma once

#include <cstdint>
#include <string>

/**
 * The web server's password file and the tool that maintains it. Stateless; results are 0 or -1, and failures are
 * logged, without the password. Writers hold the flash lock, for which they wait without limit.
 */
namespace Accounts {

/** 1 when some line of the password file holds the account's name, 0 when none does, -1 without the file. */
[[nodiscard]] int32_t isAccount(const std::string& account);

/** Gives the account this password of 1 to 16 characters, by which an account is made; a failure changes nothing. */
[[nodiscard]] int32_t setPassword(const std::string& account, const std::string& password);

/** Deletes an account that is there; a failure changes nothing. */
[[nodiscard]] int32_t remove(const std::string& account);

/** At a start: takes a change back that was cut short. */
void recover();

}  // namespace Accounts
