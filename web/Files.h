#pragma once

#include <string>
#include <string_view>

#include "web/Response.h"

namespace console {

/**
 * A file of the page, which lies compressed in the folder, with ".gz" behind its name; 404 where there is none.
 *
 * @param knownTags what the browser has of it, as in If-None-Match.
 */
[[nodiscard]] Response fileOf(const std::string& folder, std::string_view name, std::string_view knownTags);

}  // namespace console
