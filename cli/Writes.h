#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/Json.h"
#include "cli/Session.h"

namespace tmx {

/**
 * The items of one command and what they lead to: prints the answers, collects the commits that accepted writes wait
 * for, and counts. The results are exit statuses.
 */
class Writes {
 public:
  explicit Writes(const Session& session);

  /** Sends the items in their order. */
  [[nodiscard]] int send(const std::vector<Item>& items);
  /**
   * Sends what is refused again behind the rest, as long as that lets more of it through: two limits that must not
   * cross are moved one after the other.
   */
  [[nodiscard]] int sendAgain(std::vector<Item> items);

  /**
   * Runs the commits that wait, each once; what restarts the web server comes behind the others, the camera last.
   * Behind a refusal the later ones go on waiting.
   */
  [[nodiscard]] int commit();

  // For people, on standard error.
  /** The commits that wait, as the next command to type. */
  void showCommits() const;
  /** What became of a file of so many lines. */
  void showCount(std::size_t lines) const;

 private:
  struct Count {
    std::size_t accepted = 0;
    std::size_t refused = 0;
  };

  void take(const Answer& answer);
  void print(const Answer& answer) const;

  const Session& m_session;
  std::optional<JsonArray> m_json;
  std::vector<std::string> m_waiting;
  Count m_items;
  Count m_commits;
  Count* m_count = &m_items;  ///< of what is under way
};

}  // namespace tmx
