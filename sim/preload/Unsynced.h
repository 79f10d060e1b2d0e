#pragma once

#include <string>

/**
 * The journal of what a power cut takes: each file that was changed since its last sync lies in /run/camera/unsynced as
 * it was then, its path for a name ("%" for "/"), a file that did not exist as a folder. Whoever cuts the power puts
 * them back.
 */
namespace sim::unsynced {

/** Called before a file is changed. */
void remember(const std::string& path);
/** One file was synced. */
void forget(const std::string& path);
/** All were. */
void forget();

}  // namespace sim::unsynced
