#pragma once

#include <map>
#include <optional>
#include <string>

#include "access/Catalogue.h"

namespace tmx {

/** The rows on flash as they stand at one moment; each file is read at most once. */
class Rows {
 public:
  /** The row's text; nothing where the file or the row is missing, as while the daemon writes it. */
  [[nodiscard]] std::optional<std::string> text(const Row& row);

 private:
  using File = std::map<std::string, std::string>;
  [[nodiscard]] static File read(const std::string& path);

  std::map<std::string, File> m_files;
};

/** Whether an answer's value on the wire shows the row's text, as it stands there or escaped. */
[[nodiscard]] bool shows(const std::string& wire, const std::string& row);

}  // namespace tmx
