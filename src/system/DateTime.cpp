#include "system/DateTime.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "request/Log.h"
#include "request/StatusCode.h"

namespace {

constexpr size_t kDigits = 14;

int32_t daysOf(int32_t month, int32_t year) {
  constexpr std::array<int32_t, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && year % 4 == 0 ? 29 : days[static_cast<size_t>(month - 1)];
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

int32_t DateTime::parse(const std::string& text, DateTime& time) {
  if (text.size() != kDigits) return -status::kInvalidRange;
  if (!std::all_of(text.begin(), text.end(), isDigit)) return -status::kNotUnderstood;
  const auto number = [&text](size_t position, size_t length) { return std::stoi(text.substr(position, length)); };
  time = {number(0, 4), number(4, 2), number(6, 2), number(8, 2), number(10, 2), number(12, 2)};
  return 0;
}

int32_t DateTime::check() const {
  if (month < 1 || month > 12) {
    TMX_LOG(LOG_ERR, "invalid month(%ld)", static_cast<long>(month));
  } else if (day < 1 || day > 31) {
    TMX_LOG(LOG_ERR, "invalid day(%ld)", static_cast<long>(day));
  } else if (day > daysOf(month, year)) {
    TMX_LOG(LOG_ERR, "invalid month(%ld) day(%ld)", static_cast<long>(month), static_cast<long>(day));
  } else if (hour > 23) {
    TMX_LOG(LOG_ERR, "invalid hour(%ld)", static_cast<long>(hour));
  } else if (minute > 59) {
    TMX_LOG(LOG_ERR, "invalid minute(%ld)", static_cast<long>(minute));
  } else if (second > 59) {
    TMX_LOG(LOG_ERR, "invalid second(%ld)", static_cast<long>(second));
  } else {
    return status::kOk;
  }
  return -status::kInvalidRange;
}

std::time_t DateTime::moment() const {
  std::tm time{};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  time.tm_min = minute;
  time.tm_sec = second;
  time.tm_isdst = -1;
  return std::mktime(&time);
}

dsp::Frame clockFrame(std::time_t moment) {
  std::tm utc{};
  gmtime_r(&moment, &utc);
  dsp::Frame frame = dsp::blankFrame(dsp::frame::kClockSecond.address);
  dsp::put(frame, dsp::frame::kClockSecond, utc.tm_sec);
  dsp::put(frame, dsp::frame::kClockMinute, utc.tm_min);
  dsp::put(frame, dsp::frame::kClockHour, utc.tm_hour);
  dsp::put(frame, dsp::frame::kClockDay, utc.tm_mday);
  dsp::put(frame, dsp::frame::kClockMonth, utc.tm_mon + 1);
  dsp::put(frame, dsp::frame::kClockYear, utc.tm_year - 100);
  return frame;
}
