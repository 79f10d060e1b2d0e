#pragma once

#include <algorithm>
#include <string>

namespace mqtt {

/** The topic of a parameter's value: the path's dots become levels. */
[[nodiscard]] inline std::string valueTopic(const std::string& guid, std::string path) {
  std::ranges::replace(path, '.', '/');
  return "tmx/1/" + guid + "/value/" + path;
}

}  // namespace mqtt
