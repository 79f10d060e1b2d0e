#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "sim/programs/Programs.h"

namespace sim {

namespace {

constexpr const char* offsetFile = "/run/camera/clock";

/** The camera's clock is the host's and the number of seconds that has been set. */
std::time_t now() { return std::time(nullptr) + std::atoll(setting("clock", "0").c_str()); }

/** Takes the next two digits of a text that holds nothing but digits. */
int takeTwo(std::string& digits) {
  const int number = std::stoi(digits.substr(0, 2));
  digits.erase(0, 2);
  return number;
}

/**
 * MMDDhhmm, followed by YY or CCYY, or with CCYY in front; then .ss. With twelve digits the place of the year shows in
 * the first four: no month and day make a number as high as a year.
 */
bool parse(std::string text, std::tm& time) {
  time.tm_sec = 0;
  if (const std::size_t dot = text.find('.'); dot != std::string::npos) {
    if (text.size() != dot + 3) return false;
    time.tm_sec = std::atoi(text.c_str() + dot + 1);
    text.erase(dot);
  }
  if (text.find_first_not_of("0123456789") != std::string::npos) return false;
  if (text.size() != 8 && text.size() != 10 && text.size() != 12) return false;
  int year = time.tm_year + 1900;
  if (text.size() == 12) {
    const bool yearFirst = std::stoi(text.substr(0, 4)) >= 1900;
    year = std::stoi(text.substr(yearFirst ? 0 : 8, 4));
    text.erase(yearFirst ? 0 : 8, 4);
  } else if (text.size() == 10) {
    const int ofCentury = std::stoi(text.substr(8));
    year = ofCentury + (ofCentury < 69 ? 2000 : 1900);
  }
  time.tm_year = year - 1900;
  time.tm_mon = takeTwo(text) - 1;
  time.tm_mday = takeTwo(text);
  time.tm_hour = takeTwo(text);
  time.tm_min = takeTwo(text);
  time.tm_isdst = -1;
  return time.tm_mon >= 0 && time.tm_mon < 12 && time.tm_mday >= 1 && time.tm_mday <= 31 && time.tm_hour < 24 &&
         time.tm_min < 60 && time.tm_sec < 62;
}

int print(const char* format) {
  const std::time_t time = now();
  std::array<char, 512> text{};
  std::strftime(text.data(), text.size(), format, std::localtime(&time));
  return std::puts(text.data()) < 0 ? 1 : 0;
}

int set(const Arguments& arguments) {
  noteStart(arguments);
  const std::time_t before = now();
  std::tm time = *std::localtime(&before);
  const std::time_t wanted = parse(arguments.back(), time) ? std::mktime(&time) : -1;
  if (wanted == -1) {
    std::fprintf(stderr, "date: invalid date \"%s\"\n", arguments.back().c_str());
    return 1;
  }
  writeText(offsetFile, std::to_string(wanted - std::time(nullptr)) + "\n");
  return print("%a %b %e %H:%M:%S %Z %Y");
}

}  // namespace

int date(const Arguments& arguments) {
  if (arguments.size() == 1) return print("%a %b %e %H:%M:%S %Z %Y");
  const std::string& word = arguments.back();
  return word.starts_with("+") ? print(word.c_str() + 1) : set(arguments);
}

}  // namespace sim
