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

/** The longest line that is read. */
inline constexpr size_t kLongestLine = 1023;
/** Where a written line is cut; a cut line loses its line end with the rest. */
inline constexpr size_t kLongestWrittenLine = 549;
/** The patrol's lines are composed one by one, in a buffer that is one shorter. */
inline constexpr size_t kLongestPatrolLine = kLongestWrittenLine - 1;

enum class StoreEnd {
  EndOfFile,     ///< all lines were read; a last one without a line end is dropped
  BadFormat,     ///< a line without "=", an empty one too; what stood in front of it was taken
  StreamFailed,  ///< a line longer than kLongestLine, or the file could not be read
};

struct StoreParse {
  StoreEnd end = StoreEnd::StreamFailed;
  int32_t matched = 0;  ///< lines that found their row; a key that stands twice counts twice
  bool hasUnknownKey = false;
};

/** Assigns the values of the lines to the rows of the tables that have their keys, the first such row each. */
[[nodiscard]] StoreParse parseStore(std::string_view bytes, std::span<ConfigTable> tables);

/** One row as its line, cut at `longest` characters, and its value at the first line end in it. */
[[nodiscard]] std::string composeLine(const ConfigItem& item, size_t longest);

/** The whole file: the lines of the tables in their order. */
[[nodiscard]] std::string composeStore(std::span<const ConfigTable> tables);

[[nodiscard]] size_t countRows(std::span<const ConfigTable> tables);
