#include "access/Body.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tmx {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kMostItems = 200;
constexpr std::size_t kMostPaths = 400;
constexpr int kDeepest = 4;  // of what is nested in a body; nothing below is kept

/** The elements of a list that is neither empty nor too long. */
const Json::array_t& listIn(const Json& object, const char* key, std::size_t least, std::size_t most) {
  const auto found = object.find(key);
  if (found == object.end() || !found->is_array()) throw BadBody(std::string("there is no list \"") + key + "\"");
  const auto& list = found->get_ref<const Json::array_t&>();
  if (list.size() < least || list.size() > most) {
    throw BadBody(std::string("\"") + key + "\" takes " + std::to_string(least) + " to " + std::to_string(most));
  }
  return list;
}

const std::string& textOf(const Json& json) {
  if (!json.is_string()) throw BadBody("a text is missing");
  return json.get_ref<const std::string&>();
}

/** A path alone: neither a value behind it nor anything that would divide a request or its answer. */
const std::string& pathOf(const Json& json) {
  const std::string& path = textOf(json);
  const bool isPlain = std::ranges::all_of(path, [](char c) { return c > ' ' && c != '=' && c != '&' && c != 0x7f; });
  if (path.empty() || !isPlain) throw BadBody("that is no path");
  return path;
}

const Json& memberOf(const Json& json, const char* key) {
  static const Json kNone;
  const auto found = json.is_object() ? json.find(key) : json.end();
  return found == json.end() ? kNone : *found;
}

}  // namespace

Json parseBody(std::string_view text) {
  const auto keep = [](int depth, Json::parse_event_t /*event*/, Json& /*value*/) { return depth <= kDeepest; };
  Json json = Json::parse(text, keep, false);
  if (!json.is_object()) throw BadBody("the body is no JSON object");
  return json;
}

const std::string& textIn(const Json& object, const char* key) { return textOf(memberOf(object, key)); }

Item itemOf(const Json& json) {
  const std::string& path = pathOf(memberOf(json, "path"));
  Item item = Item::read(path);
  if (json.contains("value")) item = Item::write(path, escapeValue(textOf(json["value"])));
  if (const char* fault = faultOf(item)) throw BadBody(path.substr(0, 60) + ": " + fault);
  return item;
}

std::vector<Item> itemsIn(const Json& object) {
  std::vector<Item> items;
  for (const Json& item : listIn(object, "items", 1, kMostItems))
    items.push_back(itemOf(item));
  return items;
}

std::vector<std::string> pathsIn(const Json& object) {
  std::vector<std::string> paths;
  for (const Json& path : listIn(object, "paths", 0, kMostPaths))
    paths.push_back(pathOf(path));
  return paths;
}

}  // namespace tmx
