#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "config/Rows.h"

/**
 * The rows of the network table in the active image (Config) and in the staging image (CUserConfig), and the way of a
 * staged value into the active image and to flash. While settings are replayed the images and flash stay as they are,
 * and what would have changed is told all the same.
 */
namespace network_rows {

using network_row::Row;
using Rows = std::span<const Row>;

[[nodiscard]] std::string active(Row row);
[[nodiscard]] std::string staged(Row row);
/** Whether the active text is "on". */
[[nodiscard]] bool isOn(Row row);
/** Whether both active texts are "on": the address client is used, and is to bring what the option says. */
[[nodiscard]] bool isLeased(Row dhcpOption);

void stage(Row row, const std::string& text);

/** Whether a staged text waits in one of the rows. */
[[nodiscard]] bool differ(Rows rows);
/** Copies the staged texts that differ to the active image; whether there were any. */
[[nodiscard]] bool takeOver(Rows rows);
/** Stages the active texts, so that nothing waits. */
void rollBack(Rows rows);

/** What a commit can come to; below 0 flash could not be written. */
inline constexpr int32_t kNothingChanged = 1;
/** Takes the rows over and writes the network table to flash when that changed something: 0 then. */
[[nodiscard]] int32_t commit(Rows rows);

}  // namespace network_rows
