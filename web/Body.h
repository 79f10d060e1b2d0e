#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Item.h"

namespace console {

/** A body that cannot be understood; what() says why. */
struct BadBody : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/** What a page looks at. */
struct View {
  std::string id;
  std::vector<std::string> paths;
};

/** {"items": [{"path", "value"?}, …]}; the values in their form on the wire. Throws BadBody. */
[[nodiscard]] std::vector<tmx::Item> parseItems(std::string_view body);

/** {"id", "paths"}. Throws BadBody. */
[[nodiscard]] View parseView(std::string_view body);

}  // namespace console
