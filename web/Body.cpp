#include "web/Body.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace console {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kMaxItems = 200;
constexpr std::size_t kMaxPaths = 400;
constexpr int kDeepest = 4;  // of what is nested in a body; nothing below is kept

Json parse(std::string_view body) {
  const auto keep = [](int depth, Json::parse_event_t /*event*/, Json& /*value*/) { return depth <= kDeepest; };
  Json json = Json::parse(body, keep, false);
  if (!json.is_object()) throw BadBody("the body is no JSON object");
  return json;
}

/** The elements of a list that is neither empty nor too long. */
const Json::array_t& listOf(const Json& json, const char* key, std::size_t least, std::size_t most) {
  const auto found = json.find(key);
  if (found == json.end() || !found->is_array()) throw BadBody(std::string("there is no list \"") + key + "\"");
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

tmx::Item itemOf(const Json& json) {
  const std::string& path = pathOf(memberOf(json, "path"));
  tmx::Item item = tmx::Item::read(path);
  if (json.contains("value")) item = tmx::Item::write(path, tmx::escapeValue(textOf(json["value"])));
  if (const char* fault = tmx::faultOf(item)) throw BadBody(path.substr(0, 60) + ": " + fault);
  return item;
}

std::vector<tmx::Item> itemsOf(const Json& json) {
  std::vector<tmx::Item> items;
  for (const Json& item : listOf(json, "items", 1, kMaxItems))
    items.push_back(itemOf(item));
  return items;
}

}  // namespace

std::vector<tmx::Item> parseItems(std::string_view body) { return itemsOf(parse(body)); }

Application parseApplication(std::string_view body) {
  const Json json = parse(body);
  Application application{.items = itemsOf(json), .commit = {}, .isConfirmed = json.value("confirm", Json()) == true};
  if (!std::ranges::all_of(application.items, &tmx::Item::isWrite)) throw BadBody("\"items\" takes writes");
  const std::string& commit = textOf(memberOf(json, "commit"));
  const std::size_t equals = std::min(commit.find('='), commit.size());
  const Json item{{"path", commit.substr(0, equals)}, {"value", commit.substr(std::min(equals + 1, commit.size()))}};
  application.commit = itemOf(item);
  return application;
}

View parseView(std::string_view body) {
  const Json json = parse(body);
  View view{.id = textOf(memberOf(json, "id")), .paths = {}};
  for (const Json& path : listOf(json, "paths", 0, kMaxPaths))
    view.paths.push_back(pathOf(path));
  return view;
}

}  // namespace console
