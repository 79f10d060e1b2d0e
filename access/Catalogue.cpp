#include "access/Catalogue.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/Description.h"

namespace tmx {

/** Hears of one value after the other, with the keys that lead to it: ".parameters.commands.word". */
class DescriptionReader : public nlohmann::json_sax<nlohmann::json> {
 public:
  DescriptionReader(Catalogue& catalogue, Catalogue::Heard heard) : m_catalogue(catalogue), m_heard(std::move(heard)) {}

  bool key(string_t& name) override {
    m_place.resize(m_objects.back());
    m_place += "." + name;
    return true;
  }
  bool start_object(std::size_t /*elements*/) override {
    m_objects.push_back(m_place.size());
    return true;
  }
  bool end_object() override {
    m_place.resize(m_objects.back());
    m_objects.pop_back();
    if (m_place == ".parameters") endParameter();
    return true;
  }
  bool string(string_t& text) override {
    if (m_place == ".parameters.path") {
      m_path = text;
      m_parameter = &m_catalogue.m_parameters[text];
      m_layers.clear();
      m_stored.clear();
    }
    return m_parameter == nullptr || take(text);
  }
  bool boolean(bool value) override {
    if (m_place == ".parameters.showsStored") m_parameter->showsStored = value;
    return true;
  }
  bool number_unsigned(number_unsigned_t number) override {
    return m_place != ".version" || number == kDescriptionVersion;
  }
  bool number_integer(number_integer_t /*number*/) override { return true; }
  bool number_float(number_float_t /*number*/, const string_t& /*text*/) override { return true; }
  bool binary(binary_t& /*value*/) override { return true; }
  bool null() override { return true; }
  bool start_array(std::size_t /*elements*/) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const nlohmann::detail::exception& /*error*/) override {
    return false;
  }

 private:
  [[nodiscard]] bool take(const std::string& text) {
    if (m_place == ".parameters.commands.word") {
      m_parameter->commands.push_back({text});
    } else if (m_place == ".parameters.commands.stops") {
      m_parameter->commands.back().stops = text;
    } else if (m_place == ".parameters.commit") {
      m_parameter->commit = text;
    } else if (m_place == ".parameters.force") {
      m_parameter->isForceful = text == "at once";
    } else if (m_place.starts_with(".parameters.rights.")) {
      const auto name = std::ranges::find(kClassNames, m_place.substr(m_place.rfind('.') + 1));
      if (name == kClassNames.end()) return false;
      m_parameter->isReadable.at(static_cast<std::size_t>(name - kClassNames.begin())) = text.starts_with('R');
    } else if (m_place == ".parameters.selectors.layer") {
      m_layers.push_back({text.size(), {}});
    } else if (m_place == ".parameters.selectors.values") {
      m_layers.back().values.push_back(text);
    } else if (m_place == ".parameters.selectors.without") {
      std::vector<std::string>& values = m_layers.back().values;
      if (std::ranges::find(values, text) == values.end()) values = {""};
    } else if (m_place == ".parameters.stored") {
      m_stored.push_back(text);
    }
    return true;
  }

  void endParameter() {
    if (m_stored.empty() && !m_heard) return;
    const std::vector<std::string> paths = expandPath(m_path, m_layers);
    if (m_heard) m_heard(*m_parameter, paths);
    addRows(paths);
  }

  /** One row for each path. */
  void addRows(const std::vector<std::string>& paths) {
    if (paths.size() != m_stored.size()) return;
    for (std::size_t i = 0; i < paths.size(); ++i) {
      const std::size_t colon = m_stored[i].find(':');
      const std::string& file = *m_catalogue.m_files.insert(m_stored[i].substr(0, colon)).first;
      m_catalogue.m_rows[paths[i]] = {&file, m_stored[i].substr(colon + 1)};
    }
  }

  static constexpr std::array<std::string_view, 3> kClassNames{"administrator", "operator", "user"};

  Catalogue& m_catalogue;
  Catalogue::Heard m_heard;
  std::string m_place;
  std::vector<std::size_t> m_objects;  ///< the lengths of m_place where they begin
  Traits* m_parameter = nullptr;
  std::string m_path;
  std::vector<Selectable> m_layers;
  std::vector<std::string> m_stored;
};

bool Catalogue::load(const std::string& file, Heard heard) {
  std::ifstream stream(file, std::ios::binary);
  DescriptionReader reader(*this, std::move(heard));
  return stream && nlohmann::json::sax_parse(stream, &reader);
}

const Traits* Catalogue::find(std::string_view path) const {
  const auto found = m_parameters.find(withoutSelectors(path));
  return found == m_parameters.end() ? nullptr : &found->second;
}

const Command* Catalogue::findCommand(std::string_view path, std::string_view value) const {
  const Traits* parameter = find(path);
  if (parameter == nullptr) return nullptr;
  const auto command = std::ranges::find(parameter->commands, value, &Command::word);
  return command == parameter->commands.end() ? nullptr : &*command;
}

const Row* Catalogue::findRow(std::string_view path) const {
  const auto found = m_rows.find(path);
  return found == m_rows.end() ? nullptr : &found->second;
}

std::string Catalogue::commitOf(std::string_view path) const {
  const Traits* parameter = find(path);
  if (parameter == nullptr) return {};
  std::string commit = parameter->commit;
  // The part in front of the first difference is shared, but for the selectors that only the path has.
  std::size_t at = 0;
  while (!path.empty() && at < commit.size()) {
    if (path.front() == '(' && commit[at] != '(') {
      const std::string_view selector = path.substr(0, path.find(')') + 1);
      commit.insert(at, selector);
      at += selector.size();
      path.remove_prefix(selector.size());
    } else if (path.front() == commit[at]) {
      ++at;
      path.remove_prefix(1);
    } else {
      break;
    }
  }
  return commit;
}

std::string Catalogue::stops(std::string_view request) const {
  const std::size_t equals = std::min(request.find('='), request.size());
  const Command* command = findCommand(request.substr(0, equals), request.substr(std::min(equals + 1, request.size())));
  return command == nullptr ? std::string() : command->stops;
}

}  // namespace tmx
