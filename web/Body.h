#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "access/Body.h"

namespace console {

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

/** {"items": [{"path", "value"?}, …]}. Throws tmx::BadBody, as the others do. */
[[nodiscard]] std::vector<tmx::Item> parseItems(std::string_view body);

/** {"items": [writes], "commit": "PATH=WORD", "confirm"?: true}. */
[[nodiscard]] Application parseApplication(std::string_view body);

/** {"id", "paths"}. */
[[nodiscard]] View parseView(std::string_view body);

}  // namespace console
