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

/** Writes, and the request that takes them over. */
struct Application {
  std::vector<tmx::Item> items;
  tmx::Item commit;
  bool isConfirmed = false;  ///< goes back unless somebody confirms it
};

/** {"items": [{"path", "value"?}, …]}; the values in their form on the wire. Throws BadBody. */
[[nodiscard]] std::vector<tmx::Item> parseItems(std::string_view body);

/** {"items": [writes], "commit": "PATH=WORD", "confirm"?: true}. Throws BadBody. */
[[nodiscard]] Application parseApplication(std::string_view body);

/** {"id", "paths"}. Throws BadBody. */
[[nodiscard]] View parseView(std::string_view body);

}  // namespace console
