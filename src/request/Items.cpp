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

std::string withoutPasswords(std::string_view text) {
  std::string shown;
  for (size_t cursor = 0; cursor < text.size();) {
    const size_t end = std::min(text.find('&', cursor), text.size());
    const std::string_view item = text.substr(cursor, end + 1 - cursor);
    const size_t equals = item.find('=');
    const bool isSecret = equals != item.npos && item.substr(0, equals).find("password") != item.npos;
    shown += isSecret ? item.substr(0, equals + 1) : item;
    if (isSecret) shown += end < text.size() ? "*&" : "*";
    cursor = end + 1;
  }
  return shown;
}
