#pragma once

#include <cstdint>
#include <string>

#include "system/CSystemApiBase.h"
#include "tree/Node.h"

namespace System {

/** The time of day in the camera's zone, YYYYMMDDhhmmss: that of the operating system and of the DSP together. */
struct CDate : CSystemApiBase {
  static int32_t checkDate(Request& request);
  static int32_t setClocks(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Test{checkDate, {"YYYYMMDDhhmmss", "20240229120000", "x 20240230120000", status::kInvalidRange}},
      .act = setClocks,
      .fetch = fetch};
};

/** The other daemons read the zone's file only when they start: the client is told to restart the camera. */
struct CTimezone : CSystemApiBase {
  static int32_t checkZone(Request& request);
  static int32_t setZone(Request& request);
  static constexpr Rule rule{
      .accepts = Test{checkZone, {"a name of the table of time zones", "Japan", "x"}},
      .place = system_row::TIMEZONE,
      .act = setZone,
      .keeps = Keeps::WriteThrough,
      .answers = {.layer = "system", .command = ".status=restart", .brings = Brings::IntoForce},
  };
};

}  // namespace System
