#include "request/Items.h"

#include <algorithm>
#include <cassert>

size_t divideItems(std::string_view text, size_t most, std::vector<std::string>* items) {
  const size_t len = text.size();
  assert(len > 0);
  size_t count = 0;
  for (size_t cursor = 0; cursor < len;) {
    const size_t end = std::min(text.find('&', cursor), len);
    if (end > cursor) {
      ++count;
      if (items->size() < most) items->emplace_back(text.substr(cursor, end - cursor));
    }
    cursor = end + 1;
  }
  return count;
}
