#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sim {

/** A text as a JSON string, in quotes. Bytes that are no valid UTF-8 stand as \u00XX, so the result is valid JSON. */
[[nodiscard]] std::string jsonString(std::string_view text);

/** A flat JSON object of texts, numbers and lists of texts, which keeps the order in which its members were added. */
class JsonObject {
 public:
  JsonObject& text(std::string_view key, std::string_view value);
  /** A number that is already in its text form. */
  JsonObject& literal(std::string_view key, std::string_view value);
  JsonObject& number(std::string_view key, std::int64_t value);
  JsonObject& list(std::string_view key, const std::vector<std::string>& values);

  [[nodiscard]] std::string toString() const { return "{" + m_members + "}"; }

 private:
  std::string m_members;
};

/** The members of a flat object in their order: texts without quotes and escapes, numbers as they stand. */
using JsonMembers = std::vector<std::pair<std::string, std::string>>;

/**
 * Takes apart one line that a JsonObject made. The texts of a list are joined by blanks, one that holds a blank stands
 * in single quotes. Nothing when the line is not such an object, as the last line of a journal that is being written.
 */
[[nodiscard]] std::optional<JsonMembers> parseJsonObject(std::string_view line);

}  // namespace sim
