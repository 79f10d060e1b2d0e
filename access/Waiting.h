#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "access/Account.h"
#include "access/Catalogue.h"
#include "access/Reactor.h"
#include "access/Rows.h"
#include "access/Upstream.h"
#include "cli/Item.h"
#include "cli/Json.h"

namespace tmx {

/**
 * The changes that wait for their commit: what was written through this program, and what differs between the daemon
 * and flash whoever wrote it.
 */
class Waiting {
 public:
  explicit Waiting(const Catalogue& catalogue) : m_catalogue(catalogue) {}

  /** What a read shows in front of a write and behind it, on the wire; nothing where it cannot be read. */
  struct Reads {
    std::optional<std::string> before;
    std::optional<std::string> now;
  };
  /** A write that was accepted. */
  void note(const Account& account, const Item& item, const Answer& answer, const Reads& reads);
  /** The daemon was gone: what was staged is lost. */
  void noteRestart();

  /** Reads all that can differ from flash, as far as the class may, and compares it. */
  void compare(Upstream& upstream, UserClass user, std::function<void()> done);

  /** What the class, no higher than administrator, may read of it, as JSON. */
  [[nodiscard]] std::string list(UserClass user) const;
  [[nodiscard]] std::size_t count() const;

 private:
  /** A value that was written through this program. */
  struct Written {
    std::string typed;
    std::string by;
    std::string live;                   ///< what a read shows
    std::optional<std::string> before;  ///< what a read showed in front of the first of the writes, on the wire
    std::optional<std::string> row;     ///< the row's text when it was written
    std::string commit;
    const char* kind;
    Clock::time_point at;
  };
  /** A value that a read shows and that is not the stored one. */
  struct Difference {
    std::string live;
    std::string stored;
    int rounds = 1;  ///< comparisons that have found it
  };

  void take(const std::vector<Answer>& answers, Clock::time_point begin);
  void takeWritten(const Answer& answer, Clock::time_point begin);
  [[nodiscard]] std::string entry(const std::string& path, const Written& written, const Difference* difference) const;
  [[nodiscard]] std::string entry(const std::string& path, const Difference& difference) const;
  [[nodiscard]] std::string withCommit(JsonObject& object, const char* kind, const std::string& commit) const;
  [[nodiscard]] static bool isShown(const Difference& difference);

  const Catalogue& m_catalogue;
  std::map<std::string, Written> m_written;         ///< by path
  std::map<std::string, Difference> m_differences;  ///< by path
};

}  // namespace tmx
