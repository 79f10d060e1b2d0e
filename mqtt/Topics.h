#pragma once

#include <algorithm>
#include <string>

namespace mqtt {

/** A camera's topic. */
[[nodiscard]] inline std::string cameraTopic(const std::string& guid, const std::string& end) {
  return "tmx/1/" + guid + "/" + end;
}

/** The topic of a parameter's value: the path's dots become levels. */
[[nodiscard]] inline std::string valueTopic(const std::string& guid, std::string path) {
  std::ranges::replace(path, '.', '/');
  return cameraTopic(guid, "value/" + path);
}

}  // namespace mqtt
