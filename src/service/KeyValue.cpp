#include "local/CommonInterface.h"
#include "service/CTmxdUtility.h"

namespace {

constexpr const char* kBlanks = " \t\r";

}  // namespace

std::string CTmxdUtility::keyValue(const std::vector<std::string>& lines, const std::string& key) {
  for (const std::string& line : lines) {
    const size_t position = line.find(key);
    if (position == std::string::npos || line.find('#') < position) continue;
    const size_t first = line.find_first_not_of(kBlanks, position + key.size());
    if (first == std::string::npos) return {};
    return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
  }
  return {};
}

std::string CTmxdUtility::readKeyValue(const std::string& path, const std::string& key) {
  return keyValue(CommonInterface::readLines(path), key);
}
