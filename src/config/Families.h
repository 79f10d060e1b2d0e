#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/Rows.h"

struct ConfigItem {
  int32_t id;            ///< the row's index in its table; look-ups go by position
  std::string_view key;  ///< the name in the file, a literal of the row tables
  std::string value;
};

using ConfigTable = std::vector<ConfigItem>;

struct RowDefault {
  std::string_view key;
  std::string_view value;
};

/**
 * What one direction of access (reading or writing) refuses. Every text ends where the refused number is to follow.
 * The number of indexes that pass may be wider than the tables; an index without a table yields nothing all the same.
 */
struct AccessRule {
  int32_t indexes;       ///< indexes from 0 that pass
  const char* badIndex;  ///< log text of another index; null: refused silently
  const char* badRow;    ///< log text of a row outside the table; null: the generic test of the row alone
};

/** All that distinguishes one family from another. */
struct FamilyInfo {
  Family family;
  const char* path;  ///< "%ld" stands for the index
  int32_t tables;
  std::span<const RowDefault> rows;  ///< of one table; where the tables share a file, of all of them
  AccessRule reading;
  AccessRule writing;
};

[[nodiscard]] const FamilyInfo& familyInfo(Family family);

/** The file of one table. */
[[nodiscard]] std::string familyPath(Family family, int32_t index);

/** The key of a row in its table's file; empty where there is no such row. */
[[nodiscard]] std::string_view rowKey(Row row, int32_t table);

/** All tables of a family with their built-in defaults. */
[[nodiscard]] std::vector<ConfigTable> makeTables(Family family);
