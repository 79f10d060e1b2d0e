#pragma once

#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tmx {

/** A word that starts something and is not kept. */
struct Command {
  std::string word;
  std::string stops = {};  ///< what it interrupts, in words; often empty
};

/** What has to be known of a parameter here; the description has the rest. */
struct Traits {
  std::vector<Command> commands = {};
  std::string commit = {};              ///< the request that an accepted value waits for, without the path's selectors
  bool isForceful = false;              ///< in force before that
  std::array<bool, 3> isReadable = {};  ///< by the classes administrator, operator and user
  bool showsStored = false;             ///< a read shows the text of the row
};

/** A row of a configuration file. */
struct Row {
  const std::string* file = nullptr;  ///< of the catalogue's
  std::string key = {};
};

/** The parameters by their paths without selectors, taken from the description that tmx-describe made. */
class Catalogue {
 public:
  /** Hears of a parameter and of its paths with all selectors written out. */
  using Heard = std::function<void(const Traits& parameter, const std::vector<std::string>& paths)>;

  /** Reads the file without ever holding all of it; false where it is no description of a version that is known. */
  [[nodiscard]] bool load(const std::string& file, Heard heard = {});

  /** The parameter of a path with or without selectors; a null pointer when there is none. */
  [[nodiscard]] const Traits* find(std::string_view path) const;

  /** The command of a write, such as "restart"; a null pointer for a value. */
  [[nodiscard]] const Command* findCommand(std::string_view path, std::string_view value) const;

  /** The row that the commit of a path writes; a null pointer where it is none, or unknown. */
  [[nodiscard]] const Row* findRow(std::string_view path) const;

  /** The commit for this path, "application.event(3).status=restart", with the selectors of the layers they share. */
  [[nodiscard]] std::string commitOf(std::string_view path) const;

  /** What a request "PATH=WORD" interrupts, in words; empty for nothing. */
  [[nodiscard]] std::string stops(std::string_view request) const;

  /** The configuration files that hold rows. */
  [[nodiscard]] const std::set<std::string>& files() const { return m_files; }

  /** Calls with each path whose value a read shows as it is stored: until then the two differ. */
  template <class Visit>
  void forEachComparable(const Visit& visit) const {
    for (const auto& [path, row] : m_rows) {
      const Traits* parameter = find(path);
      if (parameter->showsStored) visit(path);
    }
  }

 private:
  friend class DescriptionReader;
  std::map<std::string, Traits, std::less<>> m_parameters;
  std::map<std::string, Row, std::less<>> m_rows;  ///< by paths with their selectors
  std::set<std::string> m_files;
};

}  // namespace tmx
