#pragma once

#include <string>

namespace test {

// What stands behind the path in an answer.
inline constexpr const char* kOk = "&200 OK";
inline constexpr const char* k401 = "&401 Unauthorized";
inline constexpr const char* k405 = "&405 Method Not Allowed";
inline constexpr const char* k412 = "&412 Precondition Failed";
inline constexpr const char* k451 = "&451 Parameter Not Understood";
inline constexpr const char* k453 = "&453 Not Enough Bandwidth";
inline constexpr const char* k456 = "&456 Header Field Not Valid for Resource";
inline constexpr const char* k457 = "&457 Invalid Range";
inline constexpr const char* k458 = "&458 Parameter Is Read Only";
inline constexpr const char* k461 = "&461 Command Not Found";
inline constexpr const char* k500 = "&500 Internal Server Error";
inline constexpr const char* k501 = "&501 Not Implemented";

/** A read that shows the text. */
inline std::string shows(const std::string& text) { return "=" + text + kOk; }

}  // namespace test
