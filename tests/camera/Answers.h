#pragma once

#include <cstdlib>
#include <sstream>
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

/** The status of the last line of an answer; 0 without one. */
inline int statusOf(const std::string& answer) {
  const size_t sign = answer.rfind('&');
  return sign == std::string::npos ? 0 : std::atoi(answer.c_str() + sign + 1);
}

/** Whether every line of the answer says so. */
inline bool isTaken(const std::string& answer) {
  std::istringstream lines(answer);
  for (std::string line; std::getline(lines, line);) {
    if (statusOf(line) != 200 && statusOf(line) != 202) return false;
  }
  return !answer.empty();
}

/** A read that shows the text. */
inline std::string shows(const std::string& text) { return "=" + text + kOk; }

}  // namespace test
