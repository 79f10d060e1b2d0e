#pragma once

#include <cstdint>
#include <string>

/**
 * One item from inside the daemon, through the same tree and with the same checks as a client's; reentrant. `response`
 * receives the answer behind the path, without its line end. -1 only when the path has no root; every failure stands in
 * the response. Requests in plain text, as the administrator unless said otherwise.
 */
int32_t execApiCommandInternal(const std::string& query, std::string* response, int8_t userType, int8_t contentType);
