#pragma once

#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Item.h"

namespace tmx {

/** A text from outside that cannot be understood; what() says why. */
struct BadBody : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/** The JSON object of a text; what is nested deeper than any request is left out. Throws BadBody. */
[[nodiscard]] nlohmann::json parseBody(std::string_view text);

/** The text under a key. Throws BadBody where there is none. */
[[nodiscard]] const std::string& textIn(const nlohmann::json& object, const char* key);

/** One item: {"path", "value"?}, its value in its form on the wire. Throws BadBody. */
[[nodiscard]] Item itemOf(const nlohmann::json& json);

/** The items of {"items": [{"path", "value"?}, …]}, 1 to 200. Throws BadBody. */
[[nodiscard]] std::vector<Item> itemsIn(const nlohmann::json& object);

/** The paths of {"paths": [P, …]}, at most 400. Throws BadBody. */
[[nodiscard]] std::vector<std::string> pathsIn(const nlohmann::json& object);

}  // namespace tmx
