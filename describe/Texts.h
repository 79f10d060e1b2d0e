#pragma once

#include <span>
#include <string_view>

namespace describe {

/** What no rule says of a parameter: its unit, and one sentence for people. */
struct Text {
  std::string_view path;
  std::string_view unit;
  std::string_view sentence;
  std::string_view takes{};  ///< what a write takes where the leaf has no rule
};

/** In the order of the paths. */
[[nodiscard]] std::span<const Text> texts();

}  // namespace describe
