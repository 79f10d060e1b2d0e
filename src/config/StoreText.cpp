#include "config/StoreText.h"

#include "config/Rows.h"
#include "request/Log.h"

namespace {

// A file never holds more than this, in bytes; the longest table with every line at its longest stays below it.
constexpr size_t kLongestFile = 140800;
static_assert(static_cast<size_t>(network_row::kCount) * longestRow(Family::Network) <= kLongestFile);

ConfigItem* findRow(std::span<ConfigTable> tables, std::string_view key) {
  for (ConfigTable& table : tables) {
    for (ConfigItem& item : table) {
      if (item.key == key) return &item;
    }
  }
  return nullptr;
}

}  // namespace

StoreParse parseStore(std::string_view bytes, std::span<ConfigTable> tables, size_t longest) {
  StoreParse parse;
  for (;;) {
    const size_t length = bytes.find('\n');
    const bool isLast = length == std::string_view::npos;
    const std::string_view line = bytes.substr(0, length);
    if (line.size() > kLongestLine) return parse;
    if (isLast) {
      parse.end = StoreEnd::EndOfFile;
      return parse;
    }
    const size_t separator = line.find('=');
    if (separator == std::string_view::npos) {
      parse.end = StoreEnd::BadFormat;
      return parse;
    }
    ConfigItem* item = findRow(tables, line.substr(0, separator));
    const bool isTooLong = item != nullptr && length + 1 > longest;
    if (isTooLong)
      TMX_LOG(LOG_WARNING, "Config: %s: a line too long for its row is left out", std::string(item->key).c_str());
    if (item == nullptr || isTooLong) {
      parse.hasStrayLine = true;
    } else {
      item->value = line.substr(separator + 1);
      ++parse.matched;
    }
    bytes.remove_prefix(length + 1);
  }
}

std::string composeLine(const ConfigItem& item) {
  std::string line;
  line.reserve(item.key.size() + item.value.size() + 2);
  return line.append(item.key).append("=").append(item.value).append("\n");
}

std::string composeStore(std::span<const ConfigTable> tables) {
  std::string text;
  for (const ConfigTable& table : tables) {
    for (const ConfigItem& item : table)
      text += composeLine(item);
  }
  return text;
}

size_t countRows(std::span<const ConfigTable> tables) {
  size_t rows = 0;
  for (const ConfigTable& table : tables)
    rows += table.size();
  return rows;
}
