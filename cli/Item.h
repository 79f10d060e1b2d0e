#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tmx {

/**
 * A value as it travels: `"`, "%" and "&" as "%22", "%25" and "%26", the empty value as "%00", for nothing behind the
 * "=" would be a read.
 */
[[nodiscard]] std::string escapeValue(std::string_view plain);

/** The reverse; any other "%" stays as it is, since values that nobody escaped are stored as they were sent. */
[[nodiscard]] std::string unescapeValue(std::string_view wire);

/** One item of a request: a read of the path, or a write of the value in its form on the wire. */
struct Item {
  std::string path;
  std::string value;
  bool isWrite = false;

  [[nodiscard]] static Item read(std::string_view path) { return {std::string(path), {}, false}; }
  [[nodiscard]] static Item write(std::string_view path, std::string wireValue) {
    return {std::string(path), std::move(wireValue), true};
  }
  [[nodiscard]] std::string text() const { return isWrite ? path + "=" + value : path; }
};

/** What the daemon answered to one item. */
struct Answer {
  std::string path;        ///< as it was asked
  std::string lines;       ///< the daemon's own lines, parted by "\n" and without the last line end
  std::string value;       ///< in its form on the wire; empty for a write and for a refusal
  int status = 0;          ///< 0 when no status can be found
  std::string statusText;  ///< "OK", "Invalid Range" …
  std::string hint;        ///< the item that commits what a 202 has staged; often empty
  bool hasValue = false;

  [[nodiscard]] bool accepted() const { return status == 200 || status == 202; }
};

/** Why the daemon cannot be sent the item, in words; a null pointer when it can. */
[[nodiscard]] const char* faultOf(const Item& item);

/**
 * Cuts items into requests, in their order, so that none holds more than kMaxItems items or kMaxText bytes. An item
 * that is too long by itself is a request of its own, which the caller has to refuse; so is one whose answer lists
 * others.
 */
[[nodiscard]] std::vector<std::vector<Item>> splitRequests(const std::vector<Item>& items);

/** The items joined to the text of one request. */
[[nodiscard]] std::string requestText(const std::vector<Item>& items);

/** Takes apart the answer to one request with plain line ends: one answer for each item, in the order of the items. */
[[nodiscard]] std::vector<Answer> parseAnswers(const std::vector<Item>& items, std::string_view text);

}  // namespace tmx
