#pragma once

#include <string>
#include <string_view>

namespace console {

/** An answer to the browser. */
struct Response {
  int status = 200;
  std::string type = "application/json";
  std::string body = {};
  std::string headers = {};  ///< further lines, each with its line end
};

/** {"error": TEXT}. */
[[nodiscard]] Response refusal(int status, std::string_view text);
[[nodiscard]] Response json(std::string text);
[[nodiscard]] Response nothing();  ///< 204

/** The whole answer as the web server takes it. */
[[nodiscard]] std::string wire(const Response& response);

/** The head of an answer that has no end, of the type "text/event-stream". */
[[nodiscard]] std::string eventStreamHead();

}  // namespace console
