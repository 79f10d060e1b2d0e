#pragma once

#include <cstdint>
#include <ctime>
#include <string>

#include "dsp/Frame.h"

/** A date and a time of day as clients write them, YYYYMMDDhhmmss in the camera's own zone. */
struct DateTime {
  int32_t year;
  int32_t month;
  int32_t day;
  int32_t hour;
  int32_t minute;
  int32_t second;

  /** 0, -457 for a text of another length than 14, -451 for one that is not all digits. */
  [[nodiscard]] static int32_t parse(const std::string& text, DateTime& time);
  /** 200 or -457, logged. Every fourth year is a leap year here, 2100 among them. */
  [[nodiscard]] int32_t check() const;
  /** The moment; the zone's rules tell whether it is summer time. */
  [[nodiscard]] std::time_t moment() const;
};

/** The frame that sets the DSP's clock, which runs in UTC. */
[[nodiscard]] dsp::Frame clockFrame(std::time_t moment);
