#include "system/TimeZones.h"

#include <algorithm>

std::string time_zones::filePath(std::string_view name, bool isDaylightSavingOn) {
  const auto* const zone =
      std::find_if(kZones.begin(), kZones.end(), [name](const TimeZone& z) { return z.name == name; });
  if (zone == kZones.end()) return {};
  std::string path = "/usr/share/zoneinfo/";
  path += isDaylightSavingOn ? zone->daylightSaving : kDisable;
  return path.append("_daylightsaving/").append(zone->file);
}
