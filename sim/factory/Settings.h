#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace sim {

using Path = std::filesystem::path;

/** Replaces a file and makes its folder; ends the process when that fails. */
void writeFactoryFile(const Path& path, const std::string& text);

/** Writes every configuration file with the values with which the camera leaves the factory. */
void writeSettings(const Path& factory, const Path& sysinfo);

/** Writes the feature file with all features on but the named ones; false when one of them is unknown. */
[[nodiscard]] bool writeFeatures(const Path& factory, const std::vector<std::string>& without);

}  // namespace sim
