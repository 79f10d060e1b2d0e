#include "describe/Describe.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <ranges>
#include <stdexcept>

#include "describe/Rows.h"
#include "describe/Texts.h"
#include "managers/Roots.h"
#include "tree/CApiBase.h"

namespace describe {
namespace {

using Json = nlohmann::ordered_json;

/** One layer of a path: "camera.scene", and what it takes between its brackets. */
struct Layer {
  std::string path;
  const Selector* selector;
};
using Layers = std::vector<Layer>;

/** A leaf on its way into the document. */
struct Leaf {
  std::string path;
  const CApiBase* node;
  Layers layers;
  Choices choices;
};

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  for (const auto word : std::views::split(text, ' '))
    if (!word.empty()) words.emplace_back(word.begin(), word.end());
  return words;
}

std::vector<std::string> wordsOf(const Words& words) {
  std::vector<std::string> texts;
  for (const Word& word : words)
    texts.emplace_back(word.text);
  return texts;
}

// ---- What a write takes --------------------------------------------------------------------------------------------

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    text += (text.empty() ? "" : ", ") + word;
  return text;
}

/** A number without needless zeros. */
std::string plain(float number) {
  std::string text = std::to_string(number);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

std::string orSteps(bool hasSteps) { return hasSteps ? ", + or -" : ""; }

Json takes(const Leaf& /*leaf*/, std::monostate /*nothing*/) { return nullptr; }

Json takes(const Leaf& /*leaf*/, const Words& words) {
  return {{"kind", "words"}, {"text", joined(wordsOf(words))}, {"words", wordsOf(words)}};
}

Json takes(const Leaf& /*leaf*/, const Number& number) {
  const std::string range = std::to_string(number.low) + " to " + std::to_string(number.high);
  return {{"kind", "number"},          {"text", range + orSteps(number.steps)},
          {"low", number.low},         {"high", number.high},
          {"steps", number.steps},     {"grid", number.snap != nullptr},
          {"outside", number.outside}, {"other", number.noNumber}};
}

Json takes(const Leaf& /*leaf*/, const OneOf& list) {
  const std::vector<int32_t> numbers(list.numbers.begin(), list.numbers.begin() + static_cast<long>(list.count));
  std::vector<std::string> texts;
  for (const int32_t number : numbers)
    texts.push_back(std::to_string(number));
  return {{"kind", "list"}, {"text", joined(texts) + orSteps(list.steps)}, {"numbers", numbers}, {"steps", list.steps}};
}

Json takes(const Leaf& /*leaf*/, const Decimal& decimal) {
  return {{"kind", "decimal"},
          {"text", plain(decimal.low) + " to " + plain(decimal.high) + ", with a fraction or without"},
          {"low", decimal.low},
          {"high", decimal.high}};
}

Json takes(const Leaf& /*leaf*/, const Hex& hex) {
  return {{"kind", "hexadecimal"},
          {"text", "up to " + std::to_string(hex.digits) + " hexadecimal digits"},
          {"digits", hex.digits}};
}

void addForm(Json& json, const Form& form) {
  if (form.words.empty()) return;
  json["text"] = form.words;
  json["taken"] = wordsOf(form.taken);
  json["refused"] = wordsOf(form.refused);
  json["other"] = form.code;
}

Json takes(const Leaf& leaf, const ::Text& text) {
  const size_t longest = longestKept(leaf.node->getRule()->place, leaf.choices, text.most);
  std::string words = text.least == text.most ? std::to_string(longest) + " bytes"
                                              : "a text of up to " + std::to_string(longest) + " bytes";
  if (!text.forbidden.empty()) words += " without " + std::string(text.forbidden);
  if (text.escapes != Escapes::AsSent) words += "; %xx stands for a byte";
  if (text.escapes == Escapes::DecodedPlus) words += ", + for a blank";
  Json json{{"kind", "text"},
            {"text", words},
            {"shortest", text.least},
            {"longest", longest},
            {"longer", longest < text.most ? status::kInvalidRange : text.wrongLength},
            {"forbidden", text.forbidden}};
  addForm(json, text.form);
  return json;
}

Json takes(const Leaf& /*leaf*/, const Test& test) {
  Json json{{"kind", "form"}};
  addForm(json, test.form);
  return json;
}

// ---- When it comes into force, and how long it stays ---------------------------------------------------------------

/** What a command interrupts, in words. */
std::string_view stops(const Command& command) {
  switch (command.afterwards) {
    case PostAction::RestartWebServer:
      return "the web server";
    case PostAction::RestartAddressClient:
      return "the network";
    case PostAction::Reboot:
      return "the camera";
    case PostAction::None:
      return command.stops;
  }
  return {};
}

/** Whether the value is in force at once, or with the request of the hint. */
bool isForceful(const Rule& rule) { return !rule_check::hasHint(rule) || rule.answers.brings == Brings::ToFlash; }

/** "at once", "commit" or "never": when an accepted value is where a restart finds it. */
std::string_view kept(const Rule& rule) {
  if (rule.place.variable != nullptr || !rule.shows.fixed.empty()) return "never";
  if (rule_check::hasHint(rule)) return rule.answers.brings == Brings::IntoForce ? "at once" : "commit";
  const bool isWritten =
      rule.keeps == Keeps::WriteThrough || rule.keeps == Keeps::ConfigOnly || rule.keeps == Keeps::ByAct;
  return isWritten ? "at once" : "never";
}

/** Whether a read shows the text of the row that a commit writes, as it stands there or escaped. */
bool showsRow(const Rule& rule) {
  const Shows& shows = rule.shows;
  return rule.fetch == nullptr && rule.peer.ask == nullptr && shows.fixed.empty() && shows.number == nullptr &&
         shows.words == nullptr && shows.prefix.empty() && shows.suffix.empty();
}

/** The selectors of the paths as a client goes through them: a layer that means the moment's stays without. */
Choices pathsOf(const Leaf& leaf) {
  Choices paths = leaf.choices;
  for (size_t i = 0; i < leaf.layers.size(); ++i) {
    const Selector* selector = leaf.layers[i].selector;
    if (selector == nullptr || selector->without.empty()) continue;
    if (std::ranges::find(paths[i], selector->without) == paths[i].end()) paths[i] = {""};
  }
  return paths;
}

/** Both in one line. */
std::string when(const Rule& rule, const std::string& commit) {
  const std::string_view stays = kept(rule);
  if (!isForceful(rule)) return (stays == "commit" ? "with " : "stored at once, in force with ") + commit;
  if (stays == "commit") return "at once, stored by " + commit;
  return stays == "at once" ? "at once, and stored" : "at once; nothing is stored";
}

/** The image of one camera's lens and sensor, which is no setting of another one. */
bool isAdjustment(const Place& place) {
  return place.row.family == Family::Camdsp || place.row.family == Family::CamFocus;
}

/** Whether writing back what was read, once the camera's other settings stand, restores what it was. */
bool isSetting(const CApiBase& node, const Rule& rule) {
  const std::string_view rights = node.getPermission();
  return rule_check::takesValues(rule) && rule.place.row.exists() && kept(rule) != "never" &&
         !isAdjustment(rule.place) && rights.find('R') != std::string_view::npos &&
         rights.find('W') != std::string_view::npos;
}

// ---- One parameter -------------------------------------------------------------------------------------------------

Json describeSelector(const Layer& layer) {
  const Selector& selector = *layer.selector;
  Json json{{"layer", layer.path}};
  std::string text = "any";
  if (const auto* number = std::get_if<SelectorNumber>(&selector.takes)) {
    text = std::to_string(number->low) + " to " + std::to_string(number->high);
    if (number->low == number->high) text = std::to_string(number->low);
    if (number->digitsOnly) text += ", digits only";
  } else if (const auto* word = std::get_if<SelectorWord>(&selector.takes)) {
    text = joined(wordsOf(word->words));
    if (word->anyCase) text += ", in any case";
    if (word->firstPartOnly) text += "; a frame size may follow behind a comma";
  }
  json["text"] = text;
  json["values"] = choices(layer.selector);
  if (selector.empty != 0) json["refusedWithout"] = selector.empty;
  if (!selector.without.empty()) json["without"] = selector.without;
  if (!selector.available.what.empty()) json["needs"] = selector.available.what;
  return json;
}

Json conditions(const Guard& guard) {
  Json json = Json::array();
  if (guard.access.check != nullptr) json.push_back({{"of", "reads and writes"}, {"text", guard.access.text}});
  for (const Condition& condition : guard.write) {
    if (condition.check != nullptr) json.push_back({{"of", "writes"}, {"text", condition.text}});
  }
  return json;
}

Json commands(const Rule& rule) {
  Json json = Json::array();
  for (const Command& command : rule.commands) {
    if (command.word.empty()) continue;
    json.push_back({{"word", command.word}});
    if (!stops(command).empty()) json.back()["stops"] = stops(command);
  }
  return json;
}

std::string withoutSelectors(std::string_view path) {
  std::string bare;
  int depth = 0;
  for (const char c : path) {
    depth += c == '(' ? 1 : 0;
    if (depth == 0) bare += c;
    depth -= c == ')' ? 1 : 0;
  }
  return bare;
}

/** All leaves by their paths, and the texts that no rule has. */
class Document {
 public:
  Document() {
    std::vector<const CManBase*> seen;
    for (const auto& [manager, name] : m_roots.names()) {
      if (std::ranges::find(seen, manager) != seen.end()) {
        const auto first = std::ranges::find(m_roots.names(), manager, &Roots::Names::value_type::first);
        m_shortNames[std::string(name)] = first->second;
        continue;
      }
      seen.push_back(manager);
      const std::string root(name);
      collect(manager->getNextLayers(), root, {{root, manager->getSelector()}});
    }
    for (const Text& text : texts())
      m_texts.emplace(text.path, &text);
  }

  [[nodiscard]] Json print() {
    Json parameters = Json::array();
    for (const Leaf& leaf : m_leaves)
      parameters.push_back(describe(leaf));
    complain();
    return {{"version", kVersion},
            {"shortNames", m_shortNames},
            {"parameters", parameters},
            {"hiddenRows", hiddenRows(parameters)}};
  }

 private:
  void collect(const std::list<CApiBase*>& nodes, const std::string& parent, const Layers& above) {
    for (const CApiBase* node : nodes) {
      const std::string path = parent + "." + std::string(node->getLayerName());
      Layers layers = above;
      layers.push_back({path, node->getSelector()});
      if (!node->getPermission().empty()) {
        Choices all;
        for (const Layer& layer : layers)
          all.push_back(choices(layer.selector));
        m_leaves.push_back({path, node, layers, all});
      }
      collect(node->getNextLayers(), path, layers);
    }
  }

  [[nodiscard]] Json describe(const Leaf& leaf) {
    Json json{{"path", leaf.path}};
    const auto text = m_texts.find(leaf.path);
    if (text == m_texts.end()) {
      m_missing += "\n" + leaf.path + " has no text";
      return json;
    }
    json["summary"] = text->second->sentence;
    if (!text->second->unit.empty()) json["unit"] = text->second->unit;
    const std::string_view rights = leaf.node->getPermission();
    json["rights"] = {
        {"administrator", rights.substr(0, 2)}, {"operator", rights.substr(2, 2)}, {"user", rights.substr(4, 2)}};
    json["selectors"] = Json::array();
    for (const Layer& layer : leaf.layers)
      if (layer.selector != nullptr) json["selectors"].push_back(describeSelector(layer));
    if (leaf.node->getRule() != nullptr) addRule(json, leaf, *leaf.node->getRule());
    if (!text->second->takes.empty()) json["takes"] = {{"kind", "form"}, {"text", text->second->takes}};
    m_texts.erase(text);
    return json;
  }

  void addRule(Json& json, const Leaf& leaf, const Rule& rule) const {
    if (!rule.forward.empty()) json["servedBy"] = rule.forward;
    if (Json all = conditions(rule.guard); !all.empty()) json["conditions"] = all;
    if (Json all = commands(rule); !all.empty()) json["commands"] = all;
    if (rule.place.row.exists()) {
      json["default"] = shownDefault(rule, leaf.choices);
      json["rows"] = rows(rule.place, leaf.choices);
    }
    if (!rule_check::takesValues(rule)) return;
    json["takes"] = std::visit([&](const auto& accepts) { return takes(leaf, accepts); }, rule.accepts);
    if (!rule_check::hasHint(rule)) {
      json["when"] = when(rule, {});
    } else {
      const std::string commit = std::string(rule.answers.layer) + std::string(rule.answers.command);
      json["when"] = when(rule, commit);
      json["commit"] = commit;
      if (const std::string_view what = commitStops(commit); !what.empty()) json["commitStops"] = what;
      json["force"] = isForceful(rule) ? "at once" : "commit";
      if (const auto stored = rowOfEach(rule.place, pathsOf(leaf)); !stored.empty()) {
        json["stored"] = stored;
        json["showsStored"] = showsRow(rule);
      }
    }
    json["kept"] = kept(rule);
    json["setting"] = isSetting(*leaf.node, rule);
  }

  /** What the request interrupts, as its own leaf says. */
  [[nodiscard]] std::string_view commitStops(const std::string& commit) const {
    const std::string request = withoutSelectors(commit);
    const size_t equals = request.find('=');
    const auto leaf = std::ranges::find(m_leaves, request.substr(0, equals), &Leaf::path);
    if (leaf == m_leaves.end()) throw std::runtime_error(commit + " is named by a hint, and there is no such leaf");
    for (const Command& command : leaf->node->getRule()->commands) {
      if (command.word == request.substr(equals + 1)) return stops(command);
    }
    throw std::runtime_error(commit + " is named by a hint, and its leaf has no such word");
  }

  [[nodiscard]] static Json hiddenRows(const Json& parameters) {
    std::vector<std::string> hidden = allRows();
    for (const Json& parameter : parameters) {
      if (!parameter.contains("rows")) continue;
      for (const Json& row : parameter["rows"])
        std::erase(hidden, row.get<std::string>());
    }
    return hidden;
  }

  void complain() {
    for (const auto& [path, text] : m_texts)
      m_missing += "\n" + std::string(path) + " has a text but is no parameter";
    if (!m_missing.empty()) throw std::runtime_error(m_missing);
  }

  Roots m_roots{[](CManBase& manager) { manager.build(); }};
  std::vector<Leaf> m_leaves;
  std::map<std::string_view, const Text*> m_texts;
  std::map<std::string, std::string_view> m_shortNames;
  std::string m_missing;
};

}  // namespace

Json tree() { return Document().print(); }

}  // namespace describe
