#include "web/Body.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace console {

using Json = nlohmann::json;

std::vector<tmx::Item> parseItems(std::string_view body) { return tmx::itemsIn(tmx::parseBody(body)); }

Application parseApplication(std::string_view body) {
  const Json json = tmx::parseBody(body);
  Application application{
      .items = tmx::itemsIn(json), .commit = {}, .isConfirmed = json.value("confirm", Json()) == true};
  if (!std::ranges::all_of(application.items, &tmx::Item::isWrite)) throw tmx::BadBody("\"items\" takes writes");
  const std::string& commit = tmx::textIn(json, "commit");
  const std::size_t equals = std::min(commit.find('='), commit.size());
  application.commit =
      tmx::itemOf({{"path", commit.substr(0, equals)}, {"value", commit.substr(std::min(equals + 1, commit.size()))}});
  return application;
}

View parseView(std::string_view body) {
  const Json json = tmx::parseBody(body);
  return {.id = tmx::textIn(json, "id"), .paths = tmx::pathsIn(json)};
}

}  // namespace console
