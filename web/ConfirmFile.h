#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "access/Account.h"

namespace console {

/** A change that goes back unless somebody confirms it. The texts are plain. */
struct Applied {
  struct Item {
    std::string path;
    std::string before;
    std::string after;
  };
  tmx::Account account;
  std::string commit;  ///< "PATH=WORD"
  std::vector<Item> items;
};

/** How long a change waits to be confirmed. */
inline constexpr std::chrono::seconds kConfirmTime{90};

/**
 * The change on flash, in a folder of the console's own. The gateway writes it before anything is sent, whoever
 * confirms removes it, and the guard puts back what is still there: each is one change of a name, so only one of them
 * can win.
 */
class ConfirmFile {
 public:
  explicit ConfirmFile(std::string folder) : m_folder(std::move(folder)) {}

  /** Whether a change waits. */
  [[nodiscard]] bool exists() const;
  /** The change that waits; nothing without one that can be understood. */
  [[nodiscard]] std::optional<Applied> read() const;
  /** Has it on flash when it returns; false when that failed, and then there is none. */
  [[nodiscard]] bool write(const Applied& change) const;
  /** Confirms; false when there is none any more. */
  [[nodiscard]] bool remove() const;

  /** The guard's: takes it away from those who could confirm; false when there is none. */
  [[nodiscard]] bool claim() const;
  /** What was claimed, also before a restart. */
  [[nodiscard]] std::optional<Applied> claimed() const;
  void removeClaimed() const;

  [[nodiscard]] const std::string& folder() const { return m_folder; }

 private:
  [[nodiscard]] std::string path(const char* name) const { return m_folder + "/" + name; }
  [[nodiscard]] static std::optional<Applied> parse(const std::string& file);
  void syncFolder() const;

  std::string m_folder;
};

}  // namespace console
