#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace console {

/** What the gateway has to know of a parameter; the page has the whole description. */
struct Parameter {
  std::vector<std::string> commands = {};  ///< words that start something and are not kept
};

/** The parameters by their paths without selectors, taken from the description that tmx-describe made. */
class Catalogue {
 public:
  /** Reads the file without ever holding all of it; false where it is no description of a version that is known. */
  [[nodiscard]] bool load(const std::string& file);

  /** The parameter of a path with or without selectors; a null pointer when there is none. */
  [[nodiscard]] const Parameter* find(std::string_view path) const;

  /** Whether the value is a word that starts something, as "restart". */
  [[nodiscard]] bool isCommand(std::string_view path, std::string_view value) const;

 private:
  friend class DescriptionReader;
  std::map<std::string, Parameter, std::less<>> m_parameters;
};

}  // namespace console
