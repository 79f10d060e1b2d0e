#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tmx {

/** A text as a JSON string, in quotes. Bytes that are no valid UTF-8 stand as \u00XX. */
[[nodiscard]] std::string jsonString(std::string_view text);

/** One object of JSON on one line, its members in the order in which they were added. */
class JsonObject {
 public:
  JsonObject& text(std::string_view key, std::string_view value) { return member(key, jsonString(value)); }
  JsonObject& number(std::string_view key, std::int64_t value) { return member(key, std::to_string(value)); }
  /** A member whose value is JSON already. */
  JsonObject& member(std::string_view key, std::string_view json);

  [[nodiscard]] std::string str() const { return "{" + m_members + "}"; }

 private:
  std::string m_members;
};

/** Prints an array, an element to a line; the destructor closes it. */
class JsonArray {
 public:
  JsonArray();
  JsonArray(const JsonArray&) = delete;
  JsonArray& operator=(const JsonArray&) = delete;
  ~JsonArray();

  void add(const JsonObject& object);

 private:
  bool m_isEmpty = true;
};

}  // namespace tmx
