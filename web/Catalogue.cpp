#include "web/Catalogue.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "cli/Description.h"

namespace console {

/** Hears of one value after the other, with the keys that lead to it: ".parameters.commands.word". */
class DescriptionReader : public nlohmann::json_sax<nlohmann::json> {
 public:
  explicit DescriptionReader(Catalogue& catalogue) : m_catalogue(catalogue) {}

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
    return true;
  }
  bool string(string_t& text) override {
    if (m_place == ".parameters.path") m_parameter = &m_catalogue.m_parameters[text];
    if (m_parameter == nullptr) return true;
    if (m_place == ".parameters.commands.word") m_parameter->commands.push_back(text);
    return true;
  }
  bool number_unsigned(number_unsigned_t number) override {
    return m_place != ".version" || number == tmx::kDescriptionVersion;
  }
  bool number_integer(number_integer_t /*number*/) override { return true; }
  bool number_float(number_float_t /*number*/, const string_t& /*text*/) override { return true; }
  bool boolean(bool /*value*/) override { return true; }
  bool binary(binary_t& /*value*/) override { return true; }
  bool null() override { return true; }
  bool start_array(std::size_t /*elements*/) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const nlohmann::detail::exception& /*error*/) override {
    return false;
  }

 private:
  Catalogue& m_catalogue;
  Parameter* m_parameter = nullptr;
  std::string m_place;
  std::vector<std::size_t> m_objects;  ///< the lengths of m_place where they begin
};

bool Catalogue::load(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  DescriptionReader reader(*this);
  return stream && nlohmann::json::sax_parse(stream, &reader);
}

const Parameter* Catalogue::find(std::string_view path) const {
  const auto found = m_parameters.find(tmx::withoutSelectors(path));
  return found == m_parameters.end() ? nullptr : &found->second;
}

bool Catalogue::isCommand(std::string_view path, std::string_view value) const {
  const Parameter* parameter = find(path);
  return parameter != nullptr && std::ranges::find(parameter->commands, value) != parameter->commands.end();
}

}  // namespace console
