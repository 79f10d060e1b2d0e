#pragma once

#include <array>
#include <string>
#include <string_view>

/** A time zone by the name that clients use. */
struct TimeZone {
  std::string_view name;
  std::string_view file;            ///< below the directory of its rule; its sign is the opposite of the name's
  std::string_view daylightSaving;  ///< which of the two directories, when daylight saving is on
};

namespace time_zones {

// With daylight saving off every zone's file comes from the second.
inline constexpr std::string_view kEnable = "enable";
inline constexpr std::string_view kDisable = "disable";

inline constexpr std::array<TimeZone, 55> kZones{{
    {"GMT-12", "Etc/GMT+12", kDisable},
    {"GMT-11", "Etc/GMT+11", kDisable},
    {"GMT-10", "Etc/GMT+10", kDisable},
    {"Hawaii", "US/Hawaii", kDisable},
    {"GMT-9:30", "Etc/GMT+9:30", kDisable},
    {"GMT-9", "Etc/GMT+9", kDisable},
    {"Alaska", "US/Alaska", kEnable},
    {"GMT-8", "Etc/GMT+8", kDisable},
    {"Pacific", "US/Pacific", kEnable},
    {"GMT-7", "Etc/GMT+7", kDisable},
    {"Arizona", "US/Arizona", kDisable},
    {"Mountain", "US/Mountain", kEnable},
    {"GMT-6", "Etc/GMT+6", kDisable},
    {"Central", "US/Central", kEnable},
    {"GMT-5", "Etc/GMT+5", kDisable},
    {"East-Indiana", "US/East-Indiana", kEnable},
    {"Eastern", "US/Eastern", kEnable},
    {"GMT-4", "Etc/GMT+4", kDisable},
    {"Atlantic", "Etc/GMT+4", kDisable},
    {"GMT-3:30", "Etc/GMT+3:30", kDisable},
    {"GMT-3", "Etc/GMT+3", kDisable},
    {"GMT-2", "Etc/GMT+2", kDisable},
    {"GMT-1", "Etc/GMT+1", kDisable},
    {"UTC", "Etc/UTC", kDisable},
    {"London", "Europe/London", kEnable},
    {"GMT+1", "Etc/GMT-1", kDisable},
    {"Berlin", "Europe/Berlin", kEnable},
    {"Rome", "Europe/Rome", kEnable},
    {"Madrid", "Europe/Madrid", kEnable},
    {"Paris", "Europe/Paris", kEnable},
    {"CET", "CET", kEnable},
    {"GMT+2", "Etc/GMT-2", kDisable},
    {"EET", "EET", kEnable},
    {"GMT+3", "Etc/GMT-3", kDisable},
    {"GMT+3:30", "Etc/GMT-3:30", kDisable},
    {"GMT+4", "Etc/GMT-4", kDisable},
    {"GMT+4:30", "Etc/GMT-4:30", kDisable},
    {"GMT+5", "Etc/GMT-5", kDisable},
    {"GMT+5:30", "Etc/GMT-5:30", kDisable},
    {"Calcutta", "Asia/Calcutta", kDisable},
    {"GMT+5:45", "Etc/GMT-5:45", kDisable},
    {"GMT+6", "Etc/GMT-6", kDisable},
    {"GMT+6:30", "Etc/GMT-6:30", kDisable},
    {"GMT+7", "Etc/GMT-7", kDisable},
    {"GMT+8", "Etc/GMT-8", kDisable},
    {"GMT+8:45", "Etc/GMT-8:45", kDisable},
    {"GMT+9", "Etc/GMT-9", kDisable},
    {"Japan", "Japan", kDisable},
    {"GMT+9:30", "Etc/GMT-9:30", kDisable},
    {"GMT+10", "Etc/GMT-10", kDisable},
    {"GMT+10:30", "Etc/GMT-10:30", kDisable},
    {"GMT+11", "Etc/GMT-11", kDisable},
    {"GMT+11:30", "Etc/GMT-11:30", kDisable},
    {"GMT+12", "Etc/GMT-12", kDisable},
    {"GMT+12:45", "Etc/GMT-12:45", kDisable},
}};

/** The path of the zone's file; empty for a name that is no zone. */
[[nodiscard]] std::string filePath(std::string_view name, bool isDaylightSavingOn);

}  // namespace time_zones
