#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/**
 * Cuts a query text at "&" into its items; empty ones do not count. Stores the first `most` of them and returns how
 * many there are. The text is not empty (asserted).
 */
size_t divideItems(std::string_view text, size_t most, std::vector<std::string>* items);

/** The text of a query as a log may show it: the value of every item that sets a password is "*". */
[[nodiscard]] std::string withoutPasswords(std::string_view text);
