#include "cli/Description.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace tmx {
namespace {

constexpr const char* kInstalled = "/usr/share/tmxd/parameters.json";

const std::string& textOf(const Parameter& json, const char* key) { return json.at(key).get_ref<const std::string&>(); }

bool isPrefix(std::string_view layers, std::string_view path) {
  return path.starts_with(layers) && (path.size() == layers.size() || path[layers.size()] == '.');
}

std::string fileName() {
  const char* given = std::getenv("TMX_DESCRIPTION");
  return given != nullptr && *given != '\0' ? given : kInstalled;
}

/** Who of the three classes has the right at a place of its pair. */
std::string holders(const Parameter& parameter, std::size_t place) {
  std::array<bool, 3> has{};
  std::size_t i = 0;
  for (const auto& [name, pair] : parameter.at("rights").items())
    has.at(i++) = pair.get_ref<const std::string&>()[place] != '-';
  if (has[0] && has[1] && has[2]) return "by all";
  if (has[0] && has[1]) return "by administrators and operators";
  if (has[0]) return "by administrators only";
  return std::none_of(has.begin(), has.end(), [](bool one) { return one; }) ? "by nobody" : "by some";
}

bool may(const Parameter& parameter, UserClass user, std::size_t place) {
  std::size_t i = 0;
  bool any = false;
  for (const auto& [name, pair] : parameter.at("rights").items()) {
    const bool has = pair.get_ref<const std::string&>()[place] != '-';
    if (i++ == static_cast<std::size_t>(user)) return has;
    any = any || has;
  }
  return any;
}

std::string joined(const std::vector<std::string>& texts, const char* between) {
  std::string line;
  for (const std::string& text : texts)
    line += (line.empty() ? "" : between) + text;
  return line;
}

/** "network.destination(1 to 5)". */
std::string withTaken(const Parameter& selector) {
  return textOf(selector, "layer") + "(" + textOf(selector, "text") + ")";
}

template <class Number>
bool isBetween(std::string_view value, Number low, Number high) {
  Number number{};
  const char* begin = value.data() + (value.starts_with('+') ? 1 : 0);
  const auto [end, error] = std::from_chars(begin, value.data() + value.size(), number);
  return error == std::errc() && end == value.data() + value.size() && number >= low && number <= high;
}

bool isListed(const Parameter& list, std::string_view value) {
  return std::any_of(list.begin(), list.end(), [&](const Parameter& entry) {
    return entry.is_string() ? entry.get_ref<const std::string&>() == value
                             : isBetween<long>(value, entry.get<long>(), entry.get<long>());
  });
}

Verdict verdict(bool isTaken) { return isTaken ? Verdict::kTaken : Verdict::kRefused; }

/** Escapes may shorten a text, so that one of them leaves the length open. */
Verdict judgeText(const Parameter& takes, std::string_view value) {
  if (takes.contains("taken") || value.find('%') != std::string_view::npos) return Verdict::kOpen;
  const bool fits = value.size() >= takes.at("shortest") && value.size() <= takes.at("longest");
  return verdict(fits && value.find_first_of(textOf(takes, "forbidden")) == std::string_view::npos);
}

/** Without brackets the layer means what only the moment knows: the scene that was named last. */
bool meansTheMoment(const Parameter& selector) {
  return selector.contains("without") && !isListed(selector.at("values"), textOf(selector, "without"));
}

}  // namespace

std::string withoutSelectors(std::string_view path) {
  std::string bare;
  std::size_t depth = 0;
  for (const char c : path) {
    if (c == '(') ++depth;
    if (depth == 0) bare += c;
    if (c == ')' && depth > 0) --depth;
  }
  return bare;
}

std::string_view Node::name() const { return std::string_view(path).substr(path.rfind('.') + 1); }

std::optional<Description> Description::find() {
  std::ifstream file(fileName(), std::ios::binary);
  if (!file) return std::nullopt;
  try {
    return parse(std::string(std::istreambuf_iterator<char>(file), {}));
  } catch (const nlohmann::json::exception&) {
    return std::nullopt;
  }
}

std::optional<Description> Description::load() {
  std::optional<Description> description = find();
  if (!description) {
    std::fprintf(stderr, "tmxctl: %s: no description of the parameters, version %d\n", fileName().c_str(),
                 kDescriptionVersion);
  }
  return description;
}

Description Description::parse(std::string_view text) {
  Description description;
  description.m_document = nlohmann::ordered_json::parse(text);
  if (description.m_document.at("version") != kDescriptionVersion) {
    throw nlohmann::json::other_error::create(kDescriptionVersion, "another version", &description.m_document);
  }
  return description;
}

std::string Description::longPath(std::string_view path) const {
  const std::string bare = withoutSelectors(path);
  const std::size_t end = std::min(bare.find('.'), bare.size());
  const auto name = m_document.at("shortNames").find(bare.substr(0, end));
  return name == m_document.at("shortNames").end() ? bare : name->get<std::string>() + bare.substr(end);
}

const Parameter* Description::find(std::string_view path) const {
  const std::string bare = longPath(path);
  const Parameter& all = m_document.at("parameters");
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const Parameter& p) { return textOf(p, "path") == bare; });
  return found == all.end() ? nullptr : &*found;
}

std::string Description::stops(std::string_view request) const {
  const std::size_t equals = std::min(request.find('='), request.size());
  const Parameter* parameter = find(request.substr(0, equals));
  if (parameter == nullptr || equals == request.size()) return {};
  for (const Parameter& command : parameter->value("commands", Parameter::array())) {
    if (textOf(command, "word") == request.substr(equals + 1)) return command.value("stops", "");
  }
  return {};
}

std::vector<Node> Description::below(std::string_view path) const {
  const std::string top = longPath(path);
  std::vector<Node> nodes;
  for (const Parameter& parameter : m_document.at("parameters")) {
    const std::string& leaf = textOf(parameter, "path");
    if (!top.empty() && !isPrefix(top, leaf)) continue;
    std::size_t depth = 0;
    for (std::size_t end = 0; end < leaf.size(); ++depth) {
      end = std::min(leaf.find('.', end + 1), leaf.size());
      if (end < top.size()) continue;
      const std::string layer = leaf.substr(0, end);
      // Nodes come parents first, so that a layer was seen where the last node lies below it.
      const bool isNew = nodes.empty() || !isPrefix(layer, nodes.back().path);
      if (isNew || end == leaf.size()) nodes.push_back({layer, depth, end == leaf.size() ? &parameter : nullptr});
    }
  }
  return nodes;
}

std::vector<std::string> expandPath(const std::string& path, const std::vector<Selectable>& layers) {
  std::vector<std::string> paths = {path};
  // From behind, so that the places in front stay where they are.
  for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
    std::vector<std::string> longer;
    for (const std::string& value : layer->values) {
      for (const std::string& shorter : paths) {
        longer.push_back(
            value.empty() ? shorter : shorter.substr(0, layer->end) + "(" + value + ")" + shorter.substr(layer->end));
      }
    }
    paths = std::move(longer);
  }
  return paths;
}

std::vector<std::string> expandSelectors(const Parameter& parameter) {
  std::vector<Selectable> layers;
  for (const Parameter& selector : parameter.at("selectors")) {
    if (meansTheMoment(selector)) continue;
    layers.push_back({textOf(selector, "layer").size(), selector.at("values").get<std::vector<std::string>>()});
  }
  return expandPath(textOf(parameter, "path"), layers);
}

bool mayRead(const Parameter& parameter, UserClass user) { return may(parameter, user, 0); }
bool mayWrite(const Parameter& parameter, UserClass user) { return may(parameter, user, 1); }

std::string rightsInWords(const Parameter& parameter) {
  const std::string readers = holders(parameter, 0);
  const std::string writers = holders(parameter, 1);
  if (readers == writers) return "readable and writable " + readers;
  return "readable " + readers + ", writable " + writers;
}

std::string takenInWords(const Parameter& parameter) {
  std::string text = parameter.contains("takes") ? textOf(parameter.at("takes"), "text") : "";
  if (!text.empty() && parameter.contains("unit")) text += " (" + textOf(parameter, "unit") + ")";
  std::vector<std::string> words;
  for (const Parameter& command : parameter.value("commands", Parameter::array()))
    words.push_back(textOf(command, "word"));
  if (!words.empty()) text += (text.empty() ? "does: " : "; does: ") + joined(words, ", ");
  return text;
}

std::string reason(const Parameter& parameter, int status) {
  std::vector<std::string> texts;
  switch (status) {
    case 401:
    case 458:
      return rightsInWords(parameter);
    case 451:
    case 457:
      return takenInWords(parameter);
    case 405:
    case 412:
      for (const Parameter& condition : parameter.value("conditions", Parameter::array()))
        texts.push_back("only " + textOf(condition, "text"));
      return joined(texts, ", ");
    case 456:
      for (const Parameter& selector : parameter.at("selectors"))
        texts.push_back(withTaken(selector));
      return joined(texts, ", ");
    case 461:
      for (const Parameter& selector : parameter.at("selectors")) {
        if (selector.contains("needs")) texts.push_back("only with " + textOf(selector, "needs"));
        if (selector.value("refusedWithout", 0) == status) texts.push_back("only as " + withTaken(selector));
      }
      return joined(texts, ", ");
    default:
      return {};
  }
}

Verdict judge(const Parameter& parameter, std::string_view value) {
  for (const Parameter& command : parameter.value("commands", Parameter::array()))
    if (textOf(command, "word") == value) return Verdict::kTaken;
  if (!parameter.contains("takes")) return Verdict::kRefused;
  const Parameter& takes = parameter.at("takes");
  const std::string& kind = textOf(takes, "kind");
  if (takes.value("steps", false) && (value == "+" || value == "-")) return Verdict::kTaken;
  if (kind == "words") return verdict(isListed(takes.at("words"), value));
  if (kind == "list") return verdict(isListed(takes.at("numbers"), value));
  if (kind == "number") return verdict(isBetween<long>(value, takes.at("low"), takes.at("high")));
  if (kind == "decimal") return verdict(isBetween<double>(value, takes.at("low"), takes.at("high")));
  if (kind == "hexadecimal") {
    const bool isHex = value.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
    return verdict(!value.empty() && isHex && value.size() <= takes.at("digits"));
  }
  return kind == "text" ? judgeText(takes, value) : Verdict::kOpen;
}

}  // namespace tmx
