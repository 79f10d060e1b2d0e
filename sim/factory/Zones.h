#pragma once

#include "sim/factory/Settings.h"

namespace sim {

/** Writes the time zone files of the places that the camera knows, each with its standard time all the year round. */
void writeZones(const Path& folder);

/** Writes the zone in which the camera leaves the factory, that of its first setting. */
void writeFactoryZone(const Path& path);

}  // namespace sim
