// Any bytes as a configuration file: the tables keep their shape, and what was read survives a rewrite.

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "config/StoreText.h"

namespace {

bool fitAllLines(const std::vector<ConfigTable>& tables) {
  for (const ConfigTable& table : tables) {
    for (const ConfigItem& item : table) {
      if (composeLine(item, kLongestLine).size() > kLongestWrittenLine) return false;
    }
  }
  return true;
}

bool haveSameRows(const std::vector<ConfigTable>& left, const std::vector<ConfigTable>& right, bool withValues) {
  if (left.size() != right.size()) return false;
  for (size_t index = 0; index < left.size(); ++index) {
    if (left[index].size() != right[index].size()) return false;
    for (size_t row = 0; row < left[index].size(); ++row) {
      if (left[index][row].key != right[index][row].key) return false;
      if (withValues && left[index][row].value != right[index][row].value) return false;
    }
  }
  return true;
}

void readAndRewrite(Family family, std::string_view bytes) {
  const std::vector<ConfigTable> defaults = makeTables(family);
  std::vector<ConfigTable> read = defaults;
  const StoreParse parse = parseStore(bytes, read);
  assert(haveSameRows(read, defaults, false));
  assert(parse.matched > 0 || haveSameRows(read, defaults, true));
  if (!fitAllLines(read)) return;

  std::vector<ConfigTable> again = defaults;
  const StoreParse second = parseStore(composeStore(read), again);
  assert(second.end == StoreEnd::EndOfFile && !second.hasUnknownKey);
  assert(static_cast<size_t>(second.matched) == countRows(again));
  assert(haveSameRows(again, read, true));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  readAndRewrite(Family::Network, bytes);
  readAndRewrite(Family::Patrol, bytes);
  return 0;
}
