#include "mqtt/Discovery.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <string_view>
#include <utility>

#include "cli/Description.h"
#include "cli/Json.h"
#include "mqtt/Topics.h"

namespace mqtt {
namespace {

using tmx::JsonObject;
using tmx::jsonString;
using tmx::Parameter;

/** What a person looks at or changes from day to day; Home Assistant begins with all else switched off. */
constexpr std::array<std::string_view, 17> kEveryDay{"application.event.status",
                                                     "audio.output.volume",
                                                     "camera.detection.status",
                                                     "camera.identify",
                                                     "camera.private_mask.status",
                                                     "camera.scene.image.",
                                                     "camera.scene.status=save",
                                                     "camera.status=save",
                                                     "camera.stealth",
                                                     "encode.bitrate",
                                                     "encode.framerate",
                                                     "encode.framesize",
                                                     "encode.status=save",
                                                     "peripheral.input_pin.pin.status",
                                                     "peripheral.output_pin.pin.status",
                                                     "storage.disk.status",
                                                     "system.session.total_bitrate"};

struct Unit {
  std::string_view ours;
  const char* theirs;
  const char* deviceClass;  ///< a null pointer where theirs has no class
};

constexpr std::array<Unit, 8> kUnits{{{"s", "s", "duration"},
                                      {"ms", "ms", "duration"},
                                      {"µs", "\u03bcs", "duration"},  // another letter
                                      {"bit/s", "bit/s", "data_rate"},
                                      {"kbit/s", "kbit/s", "data_rate"},
                                      {"bytes", "B", "data_size"},
                                      {"kbytes", "kB", "data_size"},
                                      {"MHz", "MHz", "frequency"}}};

/** How the payload becomes a state; a number may carry a "k" that its unit has too. */
constexpr const char* kText = "{{value_json|default('')}}";
constexpr const char* kNumber = "{{value_json|default('')|replace('k','')}}";

/** The path, or a path with "=" and a word. */
bool isOfEveryDay(const std::string& bare) {
  return std::ranges::any_of(
      kEveryDay, [&](std::string_view head) { return head.ends_with('.') ? bare.starts_with(head) : bare == head; });
}

/** Letters, digits and "_", as Home Assistant's names of entities are. */
std::string identifier(std::string text) {
  std::ranges::replace_if(
      text, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return text;
}

/** The summary's first clause, and the selectors: "Frame rate (1)". */
std::string nameOf(const Parameter& parameter, const std::string& path) {
  std::string name = parameter["summary"];
  name.resize(std::min({name.find(';'), name.find(". "), name.size() - (name.ends_with('.') ? 1 : 0)}));
  for (std::size_t at = 0; (at = path.find('(', at)) != std::string::npos; ++at)
    name += " " + path.substr(at, path.find(')', at) + 1 - at);
  return name;
}

/** A request of docs/mqtt.md as a template. @param value what stands for the value, JSON once it is filled in. */
std::string requestTemplate(const std::string& path, const std::string& value) {
  return R"({"id":"{{now().timestamp()}}","answer":"tmx/1/answer/homeassistant","items":[{"path":)" + jsonString(path) +
         R"(,"value":)" + value + "}]}";
}

std::string listOf(const Parameter& values) {
  std::string list;
  for (const Parameter& value : values)
    list += (list.empty() ? "" : ", ") + jsonString(value.is_string() ? value.get<std::string>() : value.dump());
  return "[" + list + "]";
}

bool isRange(const Parameter& takes) { return takes.contains("low"); }

/** The kind of an entity that is written, by what a write takes. */
void addWritable(JsonObject& entity, const Parameter& takes) {
  const std::string kind = takes["kind"];
  const std::string list = kind == "words" ? listOf(takes["words"]) : kind == "list" ? listOf(takes["numbers"]) : "";
  if (list == R"(["on", "off"])" || list == R"(["off", "on"])") {
    entity.text("p", "switch").text("pl_on", "on").text("pl_off", "off");
  } else if (!list.empty()) {
    entity.text("p", "select").member("ops", list);
  } else if (isRange(takes)) {
    entity.text("p", "number").member("min", takes["low"].dump()).member("max", takes["high"].dump());
    if (kind == "decimal") entity.member("step", "0.1");
    entity.text("mode", "box");
  } else {
    entity.text("p", "text");
  }
}

void addUnit(JsonObject& entity, const std::string& unit) {
  const auto* known = std::ranges::find(kUnits, unit, &Unit::ours);
  entity.text("unit_of_meas", known == kUnits.end() ? unit : known->theirs);
  if (known != kUnits.end()) entity.text("dev_cla", known->deviceClass);
}

/** The components of the message, one parameter after the other. */
class Components {
 public:
  Components(const Device& device, const std::function<bool(const std::string&)>& isPublished)
      : m_device(device), m_isPublished(isPublished) {}

  void add(const Parameter& parameter) {
    const bool isWritable = tmx::mayWrite(parameter, m_device.user);
    for (const std::string& path : tmx::expandSelectors(parameter)) {
      if (m_isPublished(path)) addValue(parameter, path, isWritable && parameter.contains("takes"));
      if (!isWritable || !parameter.contains("commands") || path.starts_with("camera.scene(")) continue;
      for (const Parameter& command : parameter["commands"])
        addButton(parameter, path, command["word"]);
    }
  }

  [[nodiscard]] std::string take() { return std::move(m_text); }

 private:
  void addValue(const Parameter& parameter, const std::string& path, bool isWritable) {
    JsonObject entity;
    if (isWritable) {
      addWritable(entity, parameter["takes"]);
      entity.text("cmd_tpl", requestTemplate(path, "{{value|string|tojson}}"));
    } else {
      entity.text("p", "sensor");
    }
    const bool isNumber = parameter.contains("unit") && (!isWritable || isRange(parameter["takes"]));
    if (isNumber) addUnit(entity, parameter["unit"]);
    entity.text("stat_t", valueTopic(m_device.guid, path)).text("val_tpl", isNumber ? kNumber : kText);
    finish(entity, path, nameOf(parameter, path), isOfEveryDay(parameter["path"]));
  }

  void addButton(const Parameter& parameter, const std::string& path, const std::string& word) {
    JsonObject entity;
    entity.text("p", "button").text("cmd_tpl", requestTemplate(path, jsonString(word)));
    const std::string bare = parameter["path"];
    finish(entity, path + "=" + word, path + ": " + word, isOfEveryDay(bare + "=" + word));
  }

  void finish(JsonObject& entity, const std::string& key, const std::string& name, bool isOfEveryDay) {
    const std::string id = identifier(key);
    entity.text("name", name).text("uniq_id", m_device.guid + "_" + id);
    if (!isOfEveryDay) entity.member("en", "false");
    m_text += (m_text.empty() ? "" : ",\n") + jsonString(id) + ": " + entity.str();
  }

  const Device& m_device;
  const std::function<bool(const std::string&)>& m_isPublished;
  std::string m_text;
};

}  // namespace

std::string discovery(const std::string& descriptionFile, const Device& device,
                      const std::function<bool(const std::string& path)>& isPublished) {
  Components components(device, isPublished);
  // A parameter of the document is at depth 2, and not kept once it was looked at.
  const auto look = [&](int depth, Parameter::parse_event_t event, const Parameter& parsed) {
    const bool isParameter = depth == 2 && event == Parameter::parse_event_t::object_end && parsed.contains("path");
    if (isParameter) components.add(parsed);
    return !isParameter;
  };
  std::ifstream stream(descriptionFile, std::ios::binary);
  if (!stream || Parameter::parse(stream, look, false).is_discarded()) return {};
  const std::string base = "tmx/1/" + device.guid;
  const std::string about = JsonObject()
                                .member("ids", "[" + jsonString(device.guid) + "]")
                                .text("name", device.model + " " + device.guid.substr(0, 8))
                                .text("mdl", device.model)
                                .text("sw", device.version)
                                .text("sn", device.guid)
                                .text("cu", "https://" + device.address + "/console/")
                                .str();
  return JsonObject()
      .member("dev", about)
      .member("o", JsonObject().text("name", "tmx-mqtt").text("sw", TMX_VERSION).str())
      .text("avty_t", base + "/online")
      .text("pl_avail", "true")
      .text("pl_not_avail", "false")
      .text("cmd_t", base + "/request")
      .member("qos", "1")
      .member("cmps", "{" + components.take() + "}")
      .str();
}

}  // namespace mqtt
