#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "config/Families.h"

/**
 * The text of a configuration file: one "KEY=value" line per row, the value running from the first "=" to the end of
 * the line. Nothing here touches a file.
 */

/** The longest line that a file may have, without its line end. */
inline constexpr size_t kLongestLine = 1023;

/** The longest line that a row may stand in, with its line end: more is neither taken nor written. */
[[nodiscard]] constexpr size_t longestRow(Family family) { return family == Family::Patrol ? 548 : 549; }

enum class StoreEnd {
  EndOfFile,     ///< all lines were read; a last one without a line end is dropped
  BadFormat,     ///< a line without "=", an empty one too; what stood in front of it was taken
  StreamFailed,  ///< a line longer than kLongestLine, or the file could not be read
};

struct StoreParse {
  StoreEnd end = StoreEnd::StreamFailed;
  int32_t matched = 0;        ///< lines that found their row; a key that stands twice counts twice
  bool hasStrayLine = false;  ///< one of no row, or longer than its row may be
};

/**
 * Assigns the values of the lines to the rows of the tables that have their keys, the first such row each. A line
 * longer than `longest` is logged and left out: what is in memory can always be written, and read back.
 */
[[nodiscard]] StoreParse parseStore(std::string_view bytes, std::span<ConfigTable> tables, size_t longest);

[[nodiscard]] std::string composeLine(const ConfigItem& item);

/** The whole file: the lines of the tables in their order. */
[[nodiscard]] std::string composeStore(std::span<const ConfigTable> tables);

[[nodiscard]] size_t countRows(std::span<const ConfigTable> tables);
