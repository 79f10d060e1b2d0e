#pragma once

#include <nlohmann/json_fwd.hpp>

/** What the tree says of itself, taken from the rules that the daemon runs. */
namespace describe {

/** The document's version: raised when a reader of the one before would misunderstand it. */
inline constexpr int kVersion = 1;

/**
 * {"version", "parameters": […]}, the parameters in the order of the tree; docs/description.schema.json has the fields.
 * Throws std::runtime_error naming every parameter that has no text, and every text that has no parameter.
 */
[[nodiscard]] nlohmann::ordered_json tree();

}  // namespace describe
