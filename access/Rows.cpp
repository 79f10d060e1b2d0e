#include "access/Rows.h"

#include <fstream>

#include "cli/Item.h"

namespace tmx {

std::optional<std::string> Rows::text(const Row& row) {
  auto file = m_files.find(*row.file);
  if (file == m_files.end()) file = m_files.emplace(*row.file, read(*row.file)).first;
  const auto found = file->second.find(row.key);
  return found == file->second.end() ? std::nullopt : std::optional(found->second);
}

/** A last line without an end is one that is being written. */
Rows::File Rows::read(const std::string& path) {
  std::ifstream stream(path);
  File rows;
  std::string line;
  while (std::getline(stream, line) && !stream.eof()) {
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) rows.emplace(line.substr(0, equals), line.substr(equals + 1));
  }
  return rows;
}

bool shows(const std::string& wire, const std::string& row) { return wire == row || unescapeValue(wire) == row; }

}  // namespace tmx
