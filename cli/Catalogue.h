#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tmx {

// What the daemon's list does not tell about its parameters, and a dump and its load have to know.

/**
 * The path with every selector that each of its layers takes: "network.destination.host" becomes five paths. A layer
 * that works without a selector, and has one thing behind it only, stays as it is.
 */
[[nodiscard]] std::vector<std::string> expandSelectors(const std::string& path);

/**
 * Whether writing back what was read restores a setting. It does not where a write starts something (a motion, a
 * focus run, a format of the card), sets the clock or a counter, belongs to the one camera (its adjustment), or does
 * not take what a read shows: a fixed word, whether there is an account, an area in another unit.
 */
[[nodiscard]] bool isSetting(std::string_view path);

/** Whether other settings are measured by this one: it has to be loaded, and committed, in front of them. */
[[nodiscard]] bool isMeasure(std::string_view path);

/** What a commit interrupts behind its answer. */
enum class Interrupted { Nothing, WebServer, Camera };
[[nodiscard]] Interrupted interruptedBy(std::string_view commit);

}  // namespace tmx
